#pragma once

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

class QImage;
class QLineEdit;
class QPushButton;

/// What the dialogs have in common that turn files into another file: browsing
/// from the remembered directory, an OK button that comes alive once every file
/// is named, boxes for failures, and the output.
///
/// A derived dialog inherits its form as well, and its constructor ends with
///
///     setupUi(this);
///     setUpFiles(pushButtonOK, pushButtonBrowseToFile, lineEditToFile,
///                { lineEditFromFile });
///     connect(pushButtonBrowseFromFile, &QPushButton::clicked, this,
///             &XDialog::pushButtonBrowseFromFileClicked);
///
/// A slot that browses for an input is, in the plain case, one line:
///
///     browseToOpen(lineEditFromFile, imageFileFilter());
///
/// and otherwise its own steps, from askToOpen(), takeFile(), validateOKButton().
/// accept() is the dialog's own; the form connects OK and Cancel.
class ConverterDialog : public QDialog {
    Q_OBJECT

protected:
    /// `messageTitle` stands above the dialog's error boxes.
    explicit ConverterDialog(const QString &messageTitle, QWidget *parent);

    /// Names the widgets of the form that every such dialog has and all fields
    /// besides `toFile` that have to be filled; disables OK, and completes the help.
    void setUpFiles(QPushButton *ok, QPushButton *browseToFile, QLineEdit *toFile,
                    const QList<QLineEdit *> &inputs);

    /// Asks for the output file with imageFileFilter(). Connected by setUpFiles().
    virtual void pushButtonBrowseToFileClicked();
    /// Enables OK when every file is named; does not disable it.
    virtual void validateOKButton();

    /// Asks, takes the file and validates. Gives the name; empty when cancelled.
    QString browseToOpen(QLineEdit *field, const QString &filter,
                         const QString &caption = tr("Open File"));
    /// The same for a file to be written.
    QString browseToSave(QLineEdit *field, const QString &filter,
                         const QString &caption = tr("Save File"));

    /// The single steps of browsing. These ask, starting in the remembered
    /// directory, and change nothing; empty when cancelled.
    [[nodiscard]] QString askToOpen(const QString &filter,
                                    const QString &caption = tr("Open File"));
    [[nodiscard]] QStringList askToOpenSeveral(const QString &filter,
                                               const QString &caption);
    [[nodiscard]] QString askToSave(const QString &filter,
                                    const QString &caption = tr("Save File"));
    /// Remembers the file's directory, for all dialogs, and shows the name.
    static void takeFile(QLineEdit *field, const QString &fileName);
    /// Remembers the file's directory only.
    static void rememberDirectoryOf(const QString &fileName);

    /// Shows a critical box with an OK button under the dialog's message title.
    void showError(const QString &text);
    /// showError() with "Could not open file "..."." / "Could not save file "...".".
    void showCouldNotOpen(const QString &fileName);
    void showCouldNotSave(const QString &fileName);
    /// Writes the image to the output file; shows the box when that fails.
    [[nodiscard]] bool saveOutput(const QImage &image);

    /// The pictures that hold elevations, as a file dialog's filter.
    [[nodiscard]] static QString imageFileFilter();
    [[nodiscard]] QString messageTitle() const { return m_messageTitle; }
    [[nodiscard]] bool allFilesNamed() const;

private:
    QString m_messageTitle;
    QPushButton *m_ok = nullptr;
    QLineEdit *m_toFile = nullptr;
    QList<QLineEdit *> m_files; // all that have to be filled, the output too
};

#pragma once

#include "views/operationoutcome.h"

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QImage;
class QLineEdit;
class QPushButton;

/// What the dialogs have in common that turn files into another file: browsing
/// from the remembered directory, an OK button that comes alive once every file
/// is named, boxes for failures, and the output.
///
/// A dialog derives from FormDialog, which finds in its form pushButtonOK,
/// pushButtonBrowseToFile and lineEditToFile. Its constructor names the inputs:
///
///     addInput(lineEditFromFile);
///     addInput(lineEditMaskFile, {.caption = tr("Save File")});
///
/// A field lineEditX is browsed by the button pushButtonBrowseX. accept() is the
/// dialog's own; the form connects OK and Cancel.
class ConverterDialog : public QDialog {
    Q_OBJECT

public:
    /// What the operation has come to up to now; complete when the dialog has closed.
    [[nodiscard]] OperationOutcome outcome() const;

protected:
    /// `messageTitle` stands above the dialog's error boxes.
    explicit ConverterDialog(const QString &messageTitle, QWidget *parent);

    /// Finds the widgets that every such dialog has and completes the help; OK is off.
    void setUpForm();

    /// For the form of two files that several dialogs share, filesdialog.ui: the title
    /// above the dialog, and what it does. Names the dialog after its class.
    void describe(const QString &title, const QString &whatsThis);

    /// How an input file is chosen.
    struct Browsing {
        QString filter = imageFileFilter();
        QString caption = tr("Open File");
        /// Looks at a chosen file; false, after a box, leaves the field as it is.
        std::function<bool(const QString &name)> mayTake = {};
        /// Told once the field shows the name, before OK comes alive.
        std::function<void(const QString &name)> taken = {};
    };
    /// A field that has to be filled, and its browse button.
    void addInput(QLineEdit *field, const Browsing &browsing);
    /// The same for a picture.
    void addInput(QLineEdit *field);
    /// Fields that have to be filled and that the dialog itself fills.
    void requireFiles(const QList<QLineEdit *> &fields) { m_files << fields; }
    /// What the chooser of the output offers; imageFileFilter() if nobody says.
    void setOutputFilter(const QString &filter) { m_outputFilter = filter; }

    /// Enables OK when every file is named; does not disable it.
    virtual void validateOKButton();

    /// Asks for files, starting in the remembered directory; empty when cancelled.
    [[nodiscard]] QStringList askToOpenSeveral(const QString &filter,
                                               const QString &caption);
    /// Remembers the file's directory only.
    static void rememberDirectoryOf(const QString &fileName);

    /// Shows a critical box with an OK button under the dialog's message title.
    void showError(const QString &text);
    /// showError() with "Could not open file "..."." / "Could not save file "...".".
    void showCouldNotOpen(const QString &fileName);
    void showCouldNotSave(const QString &fileName);
    /// Writes the image to the output file; shows the box when that fails.
    [[nodiscard]] bool saveOutput(const QImage &image);

    /// Remembers for the report that the picture was written to the output file.
    /// saveOutput() does so.
    void noteOutput(const QImage &image);
    /// Of an operation that always writes the one or the other.
    void setHolds(OperationOutcome::Holds holds) { m_outcome.holds = holds; }
    /// Adds something that only the operation knows to the report on it, in place of what
    /// an earlier try has noted under the name.
    void noteFact(const QString &name, const QString &value);
    /// Samples without a height, and heights that no elevation file holds; of the latter
    /// only where there are some.
    void noteVoids(qint64 voids);
    void noteCut(qint64 cut);
    void notePoints(qint64 used, qint64 read);
    /// Boxes over the dialog go into the report.
    void childEvent(QChildEvent *event) override;

    /// The pictures that hold elevations, as a file dialog's filter.
    [[nodiscard]] static QString imageFileFilter();
    [[nodiscard]] QString messageTitle() const { return m_messageTitle; }
    [[nodiscard]] bool allFilesNamed() const;
    /// The name of the output file.
    [[nodiscard]] QString outputFile() const;
    /// The button that browses for a field.
    [[nodiscard]] QPushButton *browseButtonOf(const QLineEdit *field) const;

private:
    void browseToOpen(QLineEdit *field, const Browsing &browsing);
    void browseToSave();
    /// Remembers the file's directory, for all dialogs, and shows the name.
    static void takeFile(QLineEdit *field, const QString &fileName);

    QString m_messageTitle;
    QString m_outputFilter = imageFileFilter();
    QPushButton *m_ok = nullptr;
    QLineEdit *m_toFile = nullptr;
    QList<QLineEdit *> m_files; // all that have to be filled, the output too
    OperationOutcome m_outcome;
    bool m_failureTold = false;
};

/// A converter dialog, or another of its kind, on its form.
template <class Form, class Base = ConverterDialog>
class FormDialog : public Base, protected Form {
protected:
    explicit FormDialog(QWidget *parent) : Base(parent) { setUp(); }
    FormDialog(const QString &messageTitle, QWidget *parent) : Base(messageTitle, parent)
    {
        setUp();
    }

private:
    void setUp()
    {
        this->setupUi(this);
        this->setUpForm();
    }
};

#pragma once

#include <QDialog>
#include <QString>

/// Base of the document views.
class MdiChild : public QDialog {
    Q_OBJECT

public:
    explicit MdiChild(QWidget *parent = nullptr);

    virtual void newFile();
    /// Shows its own message box and returns false if the file cannot be read.
    virtual bool loadFile(const QString &fileName) = 0;
    virtual bool save();
    virtual bool saveAs() = 0;
    /// Shows its own message box and returns false if the file cannot be written.
    virtual bool saveFile(const QString &fileName) = 0;
    virtual bool copy() = 0;
    virtual bool paste() = 0;
    /// File name without its folder, for titles and menus.
    [[nodiscard]] virtual QString userFriendlyCurrentFile() const;
    /// Canonical path, the absolute one where no such file is on disk, or the made-up
    /// name while untitled.
    [[nodiscard]] virtual QString currentFile() const;
    [[nodiscard]] virtual bool isModified() const = 0;
    virtual void setCurrentFile(const QString &fileName);
    [[nodiscard]] virtual QString strippedName(const QString &fullFileName) const;

protected:
    /// How a view that is to be closed leaves its document.
    enum class Closing {
        Refused, ///< the view stays: cancelled, or not saved
        Saved,
        AsItIs, ///< nothing was changed, or the changes are given up
    };
    /// Asks what becomes of changes, if there are any, and saves them if told to.
    [[nodiscard]] Closing askToClose();

    void keyPressEvent(QKeyEvent *event) override;

    QString curFile;
    bool isUntitled = true;
};

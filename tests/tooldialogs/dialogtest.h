#pragma once

#include "support/modalanswer.h"
#include "tools/images.h"

#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

/// What the tests of the tools' dialogs have in common: a folder of their own, and
/// a user who chooses files and presses buttons.
class DialogTest {
protected:
    [[nodiscard]] QString path(const QString &name) const { return m_dir.filePath(name); }

    /// Writes an image into the folder; gives its path.
    [[nodiscard]] QString file(const QString &name, const QImage &image) const
    {
        return image.save(path(name)) ? path(name) : QString();
    }
    /// Writes a file that is no image.
    [[nodiscard]] QString junk(const QString &name) const
    {
        QFile f(path(name));
        const bool written =
            f.open(QIODevice::WriteOnly) && f.write("no image at all") > 0;
        return written ? path(name) : QString();
    }

    template <class Widget>
    [[nodiscard]] static Widget *find(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<Widget *>(QString::fromLatin1(name));
    }
    static void click(const QDialog &dialog, const char *button)
    {
        auto *const widget = find<QAbstractButton>(dialog, button);
        // A check box takes clicks on its mark and text only, not all over.
        QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
    }
    static QString text(const QDialog &dialog, const char *lineEdit)
    {
        return find<QLineEdit>(dialog, lineEdit)->text();
    }
    static bool okEnabled(const QDialog &dialog)
    {
        return find<QPushButton>(dialog, "pushButtonOK")->isEnabled();
    }

    /// Presses a browse button and picks a file in the window of that caption.
    void choose(const QDialog &dialog, const char *button, const QString &caption,
                const QString &name)
    {
        answers.chooseFile(caption, name);
        click(dialog, button);
    }
    void chooseInput(const QDialog &dialog, const QString &name)
    {
        choose(dialog, "pushButtonBrowseFromFile", QStringLiteral("Open File"), name);
    }
    void chooseOutput(const QDialog &dialog, const QString &name)
    {
        QFile::remove(name); // or the user would be asked whether to replace it
        choose(dialog, "pushButtonBrowseToFile", QStringLiteral("Save File"), name);
    }
    /// Expects the box of a failure.
    void expectError(const QString &text, const QString &title = QStringLiteral("Error"))
    {
        answers.pressButton(title, text, QMessageBox::Ok);
    }
    static QString couldNotOpen(const QString &name)
    {
        return QStringLiteral("Could not open file \"%1\".").arg(name);
    }
    static QString couldNotSave(const QString &name)
    {
        return QStringLiteral("Could not save file \"%1\".").arg(name);
    }
    static QSettings settings()
    {
        return QSettings(QStringLiteral("Kolvenar"), QStringLiteral("Zephrant"));
    }

    ModalAnswers answers;

private:
    QTemporaryDir m_dir;
};

/// Fails the test if a window opened that was not announced, or the reverse.
#define VERIFY_ANSWERS() QCOMPARE(answers.complaints(), QStringList())

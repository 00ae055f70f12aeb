#pragma once

#include "app/windowfixture.h"
#include "support/modalanswer.h"
#include "views/mdichild.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QStatusBar>
#include <QTimer>

#include <functional>

/// A main window with a scenery that can be rendered.
class RunFixture : protected WindowFixture {
protected:
    // Acts once, as soon as the run pumps events.
    void duringTheRun(const std::function<void()> &act)
    {
        QTimer::singleShot(0, m_window.get(), act);
    }
    bool openScenery(int frameCount = 1,
                     const QString &texture = QStringLiteral("picture.png"))
    {
        for (const QString &old : frames())
            QFile::remove(path(old));
        const QString name = smallScenery(
            QStringLiteral("TDateiname=%1\nTDateiVerwenden=1\nBildanzahl=%2\n"
                           "EndbildNr=%3\nAusDateiname=%4\n")
                .arg(texture, QString::number(frameCount),
                     QString::number(frameCount - 1), path("f%d")));
        if (name.isEmpty())
            return false;
        m_window->open(name);
        return windows().size() == 1 && m_window->activeMdiChild();
    }
    void discardOnClose()
    {
        ModalAnswers answers;
        answers.pressButton("Close File", closeQuestion(m_window->activeMdiChild()),
                            QMessageBox::No);
        action("action_Close")->trigger();
        QCOMPARE(answers.complaints().join("; "), QString());
        QVERIFY(windows().isEmpty());
    }
    static QString closeQuestion(const MdiChild *view)
    {
        return QString("The file has been modified:\n\"%1\"\nSave the changes?")
            .arg(view->currentFile());
    }
    void expectEnabled(std::initializer_list<const char *> names) const
    {
        for (const char *name : names)
            QVERIFY2(action(name)->isEnabled(), name);
    }
    void expectDisabled(std::initializer_list<const char *> names) const
    {
        for (const char *name : names)
            QVERIFY2(!action(name)->isEnabled(), name);
    }
    [[nodiscard]] QStringList frames() const
    {
        return QDir(m_dir->path()).entryList({"f*.png"}, QDir::Files, QDir::Name);
    }
    [[nodiscard]] QDoubleSpinBox *spin(const QString &name) const
    {
        return m_window->activeMdiChild()->findChild<QDoubleSpinBox *>(name);
    }
};

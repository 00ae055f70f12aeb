#pragma once

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "support/modalanswer.h"
#include "views/mdichild.h"

#include <QAction>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

/// A main window with a scenery that can be rendered.
class RunFixture {
protected:
    void openWindow()
    {
        AppSettings().clear();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    // Acts once, as soon as the run pumps events.
    void duringTheRun(const std::function<void()> &act)
    {
        QTimer::singleShot(0, m_window.get(), act);
    }
    bool openScenery(int frameCount = 1,
                     const QString &texture = QStringLiteral("texture.png"))
    {
        for (const QString &old : frames())
            QFile::remove(m_dir.filePath(old));
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(qRgb(0, 0, 200));
        if (!saveImageFile(image, m_dir.filePath("texture.png")) ||
            !saveImageFile(image, m_dir.filePath("elevation.png")))
            return false;
        const QString path = m_dir.filePath("run.zph");
        QFile file(path);
        if (!file.open(QFile::WriteOnly))
            return false;
        QTextStream(&file)
            << "[Param]\nBeobXA=32\nBeobYA=-60\nBeobZA=60\nRichtungA=0\nNeigungA=-40\n"
               "BeobXE=32\nBeobYE=-50\nBeobZE=60\nRichtungE=0\nNeigungE=-40\n"
               "BrennA=60\nBrennE=60\nAusBreite=64\nAusHoehe=48\nAusAuflX=16\n"
               "AusAuflY=16\nAusgabePNG=1\nHDateiname=elevation.png\nTDateiname="
            << texture << "\nTDateiVerwenden=1\nBildanzahl=" << frameCount
            << "\nEndbildNr=" << frameCount - 1
            << "\nAusDateiname=" << m_dir.filePath("f%d") << "\n";
        file.close();
        m_window->open(path);
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
        return QDir(m_dir.path()).entryList({"f*.png"}, QDir::Files, QDir::Name);
    }
    [[nodiscard]] QDoubleSpinBox *spin(const QString &name) const
    {
        return m_window->activeMdiChild()->findChild<QDoubleSpinBox *>(name);
    }
    [[nodiscard]] QList<QMdiSubWindow *> windows() const
    {
        return m_window->findChild<QMdiArea *>()->subWindowList();
    }
    [[nodiscard]] QAction *action(const QString &name) const
    {
        // The picture of a run has actions of the same names.
        return m_window->findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
    }

    QTemporaryDir m_dir;
    std::unique_ptr<MainWindow> m_window;
};

#pragma once

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "support/textfile.h"
#include "views/noticelabel.h"

#include <QAction>
#include <QImage>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A main window with settings as of a first start, and a folder for each test.
class WindowFixture {
protected:
    void openWindow()
    {
        AppSettings().clear();
        m_dir = std::make_unique<QTemporaryDir>();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void closeWindow()
    {
        m_window.reset();
        m_dir.reset();
    }

    /// Writes a blue picture and a scenery of it, each run of which takes a moment; gives
    /// the scenery's name, or nothing. `more` are further lines of it.
    [[nodiscard]] QString smallScenery(const QString &more) const
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(qRgb(0, 0, 200));
        const QString name = path("run.zph");
        const QByteArray lines =
            "[Param]\nBeobXA=32\nBeobYA=-60\nBeobZA=60\nRichtungA=0\nNeigungA=-40\n"
            "BeobXE=32\nBeobYE=-50\nBeobZE=60\nRichtungE=0\nNeigungE=-40\n"
            "BrennA=60\nBrennE=60\nAusBreite=64\nAusHoehe=48\nAusAuflX=16\n"
            "AusAuflY=16\nAusgabePNG=1\nHDateiname=picture.png\n";
        return saveImageFile(image, path("picture.png")) &&
                       writeBytes(name, lines + more.toUtf8())
                   ? name
                   : QString();
    }

    [[nodiscard]] QString path(const QString &name) const
    {
        return m_dir->filePath(name);
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
    /// What the right side of the status bar tells, and the button beside it.
    [[nodiscard]] NoticeLabel *noticeLabel() const
    {
        return m_window->findChild<NoticeLabel *>();
    }
    [[nodiscard]] QPushButton *hintButton() const
    {
        return m_window->findChild<QPushButton *>("pushButtonHint");
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<MainWindow> m_window;
};

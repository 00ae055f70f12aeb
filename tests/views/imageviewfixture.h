#pragma once

#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "support/settle.h"
#include "views/imagemdichild.h"
#include "views/workspacewindow.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMainWindow>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A main window that shows one view.
class Workspace : public QMainWindow, public WorkspaceWindow {
public:
    Workspace() { fit->setCheckable(true); }
    [[nodiscard]] MdiChild *activeMdiChild() const override { return active; }
    void showMessage(const QString &text, int) override { message = text; }
    [[nodiscard]] QAction *getAction_FitToWindow() const override { return fit; }

    MdiChild *active = nullptr;
    QString message;
    QAction *fit = new QAction(this);
};

/// An empty picture view, shown in a workspace of its own.
class ImageViewFixture {
protected:
    void openView()
    {
        AppSettings().clear();
        QApplication::clipboard()->clear();
        m_workspace = std::make_unique<Workspace>();
        m_view = new ImageMdiChild(m_workspace.get());
        m_view->setWindowFlags(Qt::Widget);
        m_workspace->setCentralWidget(m_view);
        m_workspace->active = m_view;
        m_workspace->resize(500, 400);
        m_workspace->show();
        m_workspace->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_workspace.get()));
    }
    void closeView() { m_workspace.reset(); }

    [[nodiscard]] QLabel *label() const
    {
        return qobject_cast<QLabel *>(scrollArea()->widget());
    }
    [[nodiscard]] QScrollArea *scrollArea() const
    {
        return m_view->findChild<QScrollArea *>();
    }
    // A move of the pointer over the view, which lands on its innermost widget.
    void moveMouse(QPoint place)
    {
        m_workspace->message.clear();
        QTest::mouseMove(m_workspace->windowHandle(),
                         m_view->mapTo(m_workspace.get(), place));
        settle();
    }
    [[nodiscard]] QString picture(int width, int height) const
    {
        const QString path =
            m_dir.filePath(QStringLiteral("%1x%2.png").arg(width).arg(height));
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(qRgb(10, 20, 200));
        image.setPixel(width - 1, 0, qRgb(1, 2, 3));
        return saveImageFile(image, path) ? path : QString();
    }

    QTemporaryDir m_dir;
    std::unique_ptr<Workspace> m_workspace;
    ImageMdiChild *m_view = nullptr;
};

#include "document/runwindow.h"

#include "document/scenerydelegate.h"
#include "run/framefiles.h"
#include "views/imagemdichild.h"

#include <QCoreApplication>

RunWindow::RunWindow(SceneryDelegate &delegate, ImageMdiChild *window)
    : m_delegate(delegate), m_window(window)
{
    if (!m_window)
        return;
    m_window->setMayBeClosed(false);
    m_window->show();
}

RunWindow::~RunWindow()
{
    if (m_window)
        m_window->setMayBeClosed(true);
}

void RunWindow::targetMade(const QImage &target)
{
    if (m_window)
        m_window->setPixmap(&target, true);
}

void RunWindow::flightRefused(const QString &reason)
{
    m_delegate.tellRefusedFlight(reason);
    m_toldFailure = true;
}

bool RunWindow::wants(int frame) { return m_delegate.frameIsWanted(frame); }

void RunWindow::frameStarted(int frame, int number, const QImage &target)
{
    const bool first = frame == m_delegate.document().parameters.StartbildNr;
    emit m_delegate.frameStarted(frame);
    if (m_window) {
        m_window->setWindowTitle(frameTitle(m_delegate.document().parameters, number));
        m_window->setPixmap(&target, false);
        if (first)
            m_window->resizeWhereFeasible();
    }
    QCoreApplication::processEvents();
}

// Rows are the grain in which menus, zooming and the stop request stay alive.
bool RunWindow::step(qint64, qint64)
{
    QCoreApplication::processEvents();
    return true;
}

void RunWindow::frameDrawn(int, const QImage &target)
{
    show(target);
    QCoreApplication::processEvents();
}

void RunWindow::frameSaved(int frame, const QStringList &complaints)
{
    emit m_delegate.frameSaved(frame, complaints);
}

void RunWindow::waiting() { QCoreApplication::processEvents(); }

void RunWindow::show(const QImage &picture)
{
    if (m_window)
        m_window->setPixmap(&picture, false);
}

// Mouse, keys and the window's own events of the plan editor.
#include "patheditors/setflightpathdialog.h"

#include "base/pi.h"
#include "flight/flightplan.h"
#include "patheditors/pathcursor.h"
#include "patheditors/setflightpathprofiledialog.h"
#include "views/label.h"

#include <QCloseEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>

#include "ui_setflightpathdialog.h"

namespace {

} // namespace

QPoint SetFlightPathDialog::toPlan(int ex, int ey) const
{
    const int left = ui->pushButtonOK->width() + 2 * ui->pushButtonOK->x();
    return {ex - left + scrollArea->horizontalScrollBar()->value(),
            texturePixmap.height() - 1 - ey - scrollArea->verticalScrollBar()->value()};
}

bool SetFlightPathDialog::isInside(const QPoint &plan) const
{
    return QRect(QPoint(0, 0), texturePixmap.size()).contains(plan);
}

int SetFlightPathDialog::checkForControlPoint(int x, int y) const
{
    return controlPointAt(*controlPoints, x, y);
}

int SetFlightPathDialog::checkForDirectionPoint(int x, int y) const
{
    return directionHandleAt(*waypoints, x, y);
}

void SetFlightPathDialog::movePoint(ControlPoint &point, const QPoint &plan)
{
    point.x = plan.x();
    point.y = plan.y();
}

bool SetFlightPathDialog::turnHandle(Waypoint &waypoint, const QPoint &plan)
{
    return turnTowards(waypoint, plan.x(), plan.y());
}

QString SetFlightPathDialog::placeText(const QPoint &plan) const
{
    return QStringLiteral("%1/%2").arg(plan.x()).arg(texturePixmap.height() - 1 -
                                                     plan.y());
}

QString SetFlightPathDialog::handleText(const Waypoint &waypoint) const
{
    return QStringLiteral("%1\u00b0").arg(waypoint.a * 180 / Pi, 0, 'f', 1);
}

QCursor SetFlightPathDialog::pointCursor() const
{
    return plusPressed ? plusCursor : PathEditor::pointCursor();
}

QCursor SetFlightPathDialog::handleCursor() const { return directionCursor; }

void SetFlightPathDialog::showText(const QString &text)
{
    ui->labelCoordinates->setText(text);
}

void SetFlightPathDialog::updatePicture() { imageWidget->update(); }

bool SetFlightPathDialog::event(QEvent *event)
{
    if (event->type() == QEvent::WindowDeactivate ||
        event->type() == QEvent::WindowBlocked)
        letKeysGo();
    return QDialog::event(event);
}

// Moves and releases over the picture. On their way up through the parents they would
// be rounded to the next pixel, which half way over the last one lies outside. And the
// focus of any widget: an open menu takes the keys, while the window stays active.
bool SetFlightPathDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent *>(event)->reason() == Qt::PopupFocusReason)
        letKeysGo();
    const bool isMove = event->type() == QEvent::MouseMove;
    if (watched != imageWidget ||
        (!isMove && event->type() != QEvent::MouseButtonRelease))
        return QDialog::eventFilter(watched, event);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    const QPointF at = imageWidget->mapTo(this, QPointF(pixelUnder(mouse)));
    QMouseEvent here(mouse->type(), at, mouse->scenePosition(), mouse->globalPosition(),
                     mouse->button(), mouse->buttons(), mouse->modifiers());
    if (isMove)
        mouseMoveEvent(&here);
    else
        mouseReleaseEvent(&here);
    return here.isAccepted();
}

void SetFlightPathDialog::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint at = pixelUnder(event);
    const QPoint plan = toPlan(at.x(), at.y());
    focusX = plan.x();
    focusY = plan.y();
    pointerMoved(plan, event->buttons().testFlag(Qt::LeftButton));
}

void SetFlightPathDialog::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPoint at = pixelUnder(event);
    if (!pointerReleased(toPlan(at.x(), at.y())))
        return;
    updateActionsAndWaypoints();
    if (profileDialog)
        profileDialog->updateWaypointList();
}

void SetFlightPathDialog::dropPoint(const QPoint &plan)
{
    if (plusPressed)
        controlPoints->insert(dragIndex, {plan.x(), plan.y(), NewPointHeight, 0.0});
    else
        PathEditor::dropPoint(plan);
}

void SetFlightPathDialog::click(const QPoint &plan)
{
    const ControlPoint added(plan.x(), plan.y(), NewPointHeight, 0.0);
    const int hit = checkForControlPoint(plan.x(), plan.y());
    if (hit < 0) {
        controlPoints->append(added);
        setCursor(Qt::CrossCursor);
    } else if (plusPressed) {
        controlPoints->insert(hit, added);
    } else {
        controlPoints->removeAt(hit);
        setCursor(Qt::ArrowCursor);
    }
}

void SetFlightPathDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        // Does not reach the base class, which would close the window.
        event->ignore();
        return;
    }
    plusPressed.press(*event);
    minusPressed.press(*event);
    if (event->key() == Qt::Key_Plus) {
        minusPressed.letGo();
        if (checkForControlPoint(focusX, focusY) >= 0)
            setCursor(plusCursor);
    } else if (event->key() == Qt::Key_Minus) {
        plusPressed.letGo();
    } else {
        event->ignore();
    }
    QDialog::keyPressEvent(event);
}

void SetFlightPathDialog::keyReleaseEvent(QKeyEvent *event)
{
    if (plusPressed.release(*event))
        endPlus();
    minusPressed.release(*event);
    QDialog::keyReleaseEvent(event);
}

void SetFlightPathDialog::endPlus()
{
    const bool onPoint = dragIndex >= 0 || checkForControlPoint(focusX, focusY) >= 0;
    setCursor(onPoint ? Qt::CrossCursor : Qt::ArrowCursor);
}

void SetFlightPathDialog::letKeysGo()
{
    const bool wasPlus = bool(plusPressed);
    plusPressed.letGo();
    minusPressed.letGo();
    if (wasPlus)
        endPlus();
}

void SetFlightPathDialog::contextMenuEvent(QContextMenuEvent *event)
{
    letKeysGo();
    menuX = event->x();
    menuY = event->y();
    // Not executed in a loop of its own, which the end of the editor would outlive.
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(ui->actionAddWaypoints);
    menu->addAction(ui->actionRemoveWaypoints);
    menu->addSeparator();
    menu->addAction(ui->actionEyesFront);
    menu->addSeparator();
    menu->addAction(ui->actionFocus);
    menu->popup(event->globalPos());
}

void SetFlightPathDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (!scrollArea)
        return;
    const int left = ui->pushButtonOK->width() + 2 * ui->pushButtonOK->x();
    scrollArea->setGeometry(left, 0, qMax(0, width() - left), height());
}

void SetFlightPathDialog::closeEvent(QCloseEvent *event)
{
    writeSettings();
    leave();
    QDialog::closeEvent(event);
}

// Mouse, keys and the window's own events of the plan editor.
#include "patheditors/setflightpathdialog.h"

#include "flight/flightplan.h"
#include "patheditors/pathcursor.h"
#include "patheditors/setflightpathprofiledialog.h"
#include "views/label.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>

#include "ui_setflightpathdialog.h"

QPoint SetFlightPathDialog::placeAt(const QPoint &pixel) const
{
    const int left = ui->pushButtonOK->width() + 2 * ui->pushButtonOK->x();
    const int fromTop = pixel.y() + scrollArea->verticalScrollBar()->value();
    return {pixel.x() - left + scrollArea->horizontalScrollBar()->value(),
            texturePixmap.height() - 1 - fromTop};
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

// Told is the row of the picture.
int SetFlightPathDialog::toldHeight(const QPoint &plan) const
{
    return texturePixmap.height() - 1 - plan.y();
}

double SetFlightPathDialog::handleAngle(const Waypoint &waypoint) const
{
    return waypoint.a;
}

QCursor SetFlightPathDialog::pointCursor() const
{
    return plusPressed ? plusCursor : PathEditor::pointCursor();
}

QCursor SetFlightPathDialog::handleCursor() const { return directionCursor; }

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
    const QPoint plan = placeAt(pixelUnder(event));
    focusX = plan.x();
    focusY = plan.y();
    PathEditor::mouseMoveEvent(event);
}

void SetFlightPathDialog::released()
{
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
    popUp(*event, {ui->actionAddWaypoints, ui->actionRemoveWaypoints, nullptr,
                   ui->actionEyesFront, nullptr, ui->actionFocus});
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

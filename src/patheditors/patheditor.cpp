#include "patheditors/patheditor.h"

#include "base/pi.h"
#include "patheditors/pathcursor.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>

PathEditor::PathEditor(QWidget *parent, QList<ControlPoint> &points,
                       QList<Waypoint> &ways, int &level)
    : QDialog(parent), controlPoints(&points), waypoints(&ways), waypointLevel(&level)
{
}

void PathEditor::popUp(const QContextMenuEvent &event, const QList<QAction *> &actions)
{
    menuX = event.x();
    menuY = event.y();
    // Not executed in a loop of its own, which the end of the editor would outlive.
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction *action : actions) {
        if (action)
            menu->addAction(action);
        else
            menu->addSeparator();
    }
    menu->popup(event.globalPos());
}

void PathEditor::mouseMoveEvent(QMouseEvent *event)
{
    pointerMoved(placeAt(pixelUnder(event)), event->buttons().testFlag(Qt::LeftButton));
}

void PathEditor::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (pointerReleased(placeAt(pixelUnder(event))))
        released();
}

void PathEditor::showText(const QString &text) { labelPlace->setText(text); }

QString PathEditor::placeText(const QPoint &place) const
{
    return QStringLiteral("%1/%2").arg(place.x()).arg(toldHeight(place));
}

QString PathEditor::handleText(const Waypoint &waypoint) const
{
    return QStringLiteral("%1\u00b0").arg(handleAngle(waypoint) * 180 / Pi, 0, 'f', 1);
}

void PathEditor::forgetLostDrags()
{
    if (dragIndex >= controlPoints->size())
        dragIndex = -1;
    if (directionIndex >= waypoints->size())
        directionIndex = -1;
}

void PathEditor::pointerMoved(const QPoint &place, bool leftHeld)
{
    forgetLostDrags();
    if (!isInside(place)) {
        showText({});
    } else if (dragIndex >= 0) {
        showText(placeText(place));
        movePoint((*controlPoints)[dragIndex], place);
        updatePicture();
    } else if (directionIndex >= 0) {
        turnHandle((*waypoints)[directionIndex], place);
        showText(handleText(waypoints->at(directionIndex)));
        updatePicture();
    } else {
        showText(placeText(place));
        hover(place, leftHeld);
    }
}

// Nothing is in hand: shows by the cursor what could be, and takes it with the left
// button held.
void PathEditor::hover(const QPoint &place, bool leftHeld)
{
    if (const int point = checkForControlPoint(place.x(), place.y()); point >= 0) {
        if (leftHeld) {
            movePoint((*controlPoints)[point], place);
            dragIndex = point;
            dragBegun(place);
            updatePicture();
        }
        setCursor(pointCursor());
        return;
    }
    const int direction = checkForDirectionPoint(place.x(), place.y());
    if (direction < 0) {
        setCursor(Qt::ArrowCursor);
        return;
    }
    setCursor(handleCursor());
    if (leftHeld && turnHandle((*waypoints)[direction], place)) {
        directionIndex = direction;
        dragBegun(place);
        updatePicture();
    }
}

bool PathEditor::pointerReleased(const QPoint &place)
{
    if (!isInside(place)) {
        showText({});
        return false;
    }
    forgetLostDrags();
    if (directionIndex >= 0) {
        if (turnHandle((*waypoints)[directionIndex], place)) {
            directionIndex = -1;
            setCursor(Qt::ArrowCursor);
        }
    } else if (dragIndex >= 0) {
        dropPoint(place);
    } else {
        click(place);
    }
    updatePicture();
    showText(placeText(place));
    return true;
}

void PathEditor::dropPoint(const QPoint &place)
{
    movePoint((*controlPoints)[dragIndex], place);
    dragIndex = -1;
}

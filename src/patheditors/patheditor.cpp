#include "patheditors/patheditor.h"

PathEditor::PathEditor(QWidget *parent, QList<ControlPoint> &points,
                       QList<Waypoint> &ways, int &level)
    : QDialog(parent), controlPoints(&points), waypoints(&ways), waypointLevel(&level)
{
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

#pragma once

#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QCursor>
#include <QDialog>
#include <QList>
#include <QPoint>
#include <QString>

/// What the two editors of a path do alike with the pointer: the first motion with the
/// left button held takes the control point or the waypoint's handle under it, further
/// ones lead it, a release lets it go.
///
/// Places are an editor's own: in the plan, or station and height. The lists are lent.
class PathEditor : public QDialog {
public:
    PathEditor(QWidget *parent, QList<ControlPoint> &points, QList<Waypoint> &ways,
               int &level);

protected:
    [[nodiscard]] bool isDragging() const
    {
        return dragIndex >= 0 || directionIndex >= 0;
    }
    void pointerMoved(const QPoint &place, bool leftHeld);
    /// The left button's release; false outside of the picture, where it does nothing.
    bool pointerReleased(const QPoint &place);

    [[nodiscard]] virtual bool isInside(const QPoint &place) const = 0;
    /// The first control point, and the first waypoint whose handle is there, or -1.
    [[nodiscard]] virtual int checkForControlPoint(int x, int y) const = 0;
    [[nodiscard]] virtual int checkForDirectionPoint(int x, int y) const = 0;
    virtual void movePoint(ControlPoint &point, const QPoint &place) = 0;
    /// False, and no change, where the waypoint stands on the place.
    virtual bool turnHandle(Waypoint &waypoint, const QPoint &place) = 0;
    /// A point or a handle has just been taken.
    virtual void dragBegun(const QPoint &) {}
    /// The button was released with a point in hand, or with nothing.
    virtual void dropPoint(const QPoint &place);
    virtual void click(const QPoint &) {}

    [[nodiscard]] virtual QString placeText(const QPoint &place) const = 0;
    [[nodiscard]] virtual QString handleText(const Waypoint &waypoint) const = 0;
    [[nodiscard]] virtual QCursor pointCursor() const { return Qt::CrossCursor; }
    [[nodiscard]] virtual QCursor handleCursor() const = 0;
    virtual void showText(const QString &text) = 0;
    virtual void updatePicture() = 0;

    QList<ControlPoint> *controlPoints;
    QList<Waypoint> *waypoints;
    int *waypointLevel;
    int dragIndex = -1;      // control point in hand
    int directionIndex = -1; // waypoint whose handle is in hand

private:
    void hover(const QPoint &place, bool leftHeld);
    /// Drops a drag whose point or waypoint the lists have lost meanwhile.
    void forgetLostDrags();
};

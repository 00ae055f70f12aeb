#pragma once

#include "scene/controlpoint.h"
#include "scene/waypoint.h"

#include <QCursor>
#include <QDialog>
#include <QList>
#include <QPoint>
#include <QString>

class QLabel;

/// What the two editors of a path do alike with the pointer: the first motion with the
/// left button held takes the control point or the waypoint's handle under it, further
/// ones lead it, a release lets it go. A text tells the place, or the angle of a handle.
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
    /// Where the places and angles are told.
    void tellPlacesIn(QLabel *label) { labelPlace = label; }
    /// A menu of these actions where the event says; null stands for a separator.
    void popUp(const QContextMenuEvent &event, const QList<QAction *> &actions);

    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

    /// The place of a pixel of the dialog.
    [[nodiscard]] virtual QPoint placeAt(const QPoint &pixel) const = 0;
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
    /// The left button was released in the picture, and everything is done.
    virtual void released() {}

    /// The second number of a place, as it is told.
    [[nodiscard]] virtual int toldHeight(const QPoint &place) const { return place.y(); }
    /// The angle that the handle of a waypoint stands for.
    [[nodiscard]] virtual double handleAngle(const Waypoint &waypoint) const = 0;
    [[nodiscard]] virtual QCursor pointCursor() const { return Qt::CrossCursor; }
    [[nodiscard]] virtual QCursor handleCursor() const = 0;
    virtual void updatePicture() = 0;

    QList<ControlPoint> *controlPoints;
    QList<Waypoint> *waypoints;
    int *waypointLevel;
    int dragIndex = -1;      // control point in hand
    int directionIndex = -1; // waypoint whose handle is in hand
    int menuX = 0;           // where the last context menu opened, in the dialog
    int menuY = 0;

private:
    void pointerMoved(const QPoint &place, bool leftHeld);
    /// The left button's release; false outside of the picture, where it does nothing.
    bool pointerReleased(const QPoint &place);
    void hover(const QPoint &place, bool leftHeld);
    /// Drops a drag whose point or waypoint the lists have lost meanwhile.
    void forgetLostDrags();
    void showText(const QString &text);
    [[nodiscard]] QString placeText(const QPoint &place) const;
    [[nodiscard]] QString handleText(const Waypoint &waypoint) const;

    QLabel *labelPlace = nullptr;
};

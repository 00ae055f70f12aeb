#pragma once

#include "flight/flightprofile.h"
#include "patheditors/patheditor.h"
#include "patheditors/pathpainter.h"

#include <QBitmap>

#include <memory>

class ElevationImage;
class QScrollBar;
class QTimer;
class Ui_SetFlightPathProfileDialog;

/// The profile editor of a curved flight: the path unrolled over the terrain, where
/// the user sets heights and pitches.
///
/// It belongs to the plan editor and shares its lists. It repaints once a second, so
/// that what happens in the plan shows here. The user cannot close it.
class SetFlightPathProfileDialog : public PathEditor {
    Q_OBJECT

public:
    SetFlightPathProfileDialog(QWidget *parent, const ElevationImage *elevationImage,
                               QList<ControlPoint> &controlPoints,
                               QList<Waypoint> &waypoints, int &waypointLevel,
                               double zScaleA, double zScaleE);
    ~SetFlightPathProfileDialog() override;

    /// Pitches along the curve.
    void eyesFront();
    /// Stations of the waypoints from the plan, until the next repaint.
    void updateWaypointList();
    /// Does to the lists what the next repaint would.
    void followCurve();

private slots:
    void horizontalScrollBarChanged(int value);
    void verticalScrollBarChanged(int value);
    void focus();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

    /// Station and height, as x and y.
    [[nodiscard]] QPoint placeAt(const QPoint &pixel) const override;
    [[nodiscard]] bool isInside(const QPoint &place) const override;
    [[nodiscard]] int checkForControlPoint(int station, int height) const override;
    [[nodiscard]] int checkForDirectionPoint(int station, int height) const override;
    void movePoint(ControlPoint &point, const QPoint &place) override;
    bool turnHandle(Waypoint &waypoint, const QPoint &place) override;
    void dragBegun(const QPoint &place) override;
    [[nodiscard]] double handleAngle(const Waypoint &waypoint) const override;
    [[nodiscard]] QCursor handleCursor() const override;
    void updatePicture() override;

private:
    void loadCursor();
    void placeScrollBars();
    void setScrollRanges();
    [[nodiscard]] std::vector<TerrainPoint> terrain() const;

    [[nodiscard]] qint64 offsetX() const;
    /// Screen y of height 0, which stands still during a drag.
    [[nodiscard]] qint64 baseline() const;
    /// The same as extent and scroll bars have it.
    [[nodiscard]] qint64 movingBaseline() const;
    void paintControlPointNumbers(PathPainter &paint) const;
    void paintTerrain(PathPainter &paint, const std::vector<TerrainPoint> &line) const;
    void paintCurve(PathPainter &paint, const QList<QPoint> &curve) const;
    void paintWaypoints(PathPainter &paint) const;
    void paintDirections(PathPainter &paint) const;

    std::unique_ptr<Ui_SetFlightPathProfileDialog> ui;
    int verticalBarWidth;
    int horizontalBarHeight;
    int profileLeft = 200;  // screen x of station 0 at scroll value 0
    int profileWidth = 800; // length of all stations
    int zMax = 100;
    int zMin = 0;
    qint64 heldBaseline = 0; // while something is in hand
    int handleLength = 40;
    int marginX = 100;
    int marginY = 100;
    const ElevationImage *elevationImage;
    double zScaleA; // of terrain heights
    double zScaleE; // kept beside it
    QCursor pitchCursor;
    QBitmap pitchBitmap, pitchMask;
    QTimer *refreshTimer;
    PathIcons icons;
};

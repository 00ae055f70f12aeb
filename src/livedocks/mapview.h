#pragma once

#include "live/livepicture.h"

#include <QImage>
#include <QPolygonF>
#include <QWidget>

/// The terrain from above, north up, with the way of the flight and the camera on it,
/// which can be dragged, and turned by the end of its line.
class MapView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QPoint cameraAt READ cameraAt)

public:
    explicit MapView(QWidget *parent = nullptr);

    /// What is shown: places in world units, x to the east and y to the north.
    struct Content {
        QSizeF world;     ///< empty where there is no terrain
        QPolygonF path;   ///< from the first frame to the last
        QPolygonF points; ///< control points
        ViewCamera camera;
        double halfAngle = 0; ///< degrees that the picture reaches to the left and right
        double nearest = 0;   ///< where the ground in the picture begins and ends
        double farthest = 0;
    };
    void setContent(const Content &content);
    /// The ground, stretched over the world; null for none.
    void setGround(const QImage &ground);
    [[nodiscard]] const QImage &ground() const { return m_ground; }

    /// Where the camera stands, in the coordinates of this widget.
    [[nodiscard]] QPoint cameraAt() const;
    /// Where the end of its line stands.
    [[nodiscard]] QPoint directionAt() const;

    [[nodiscard]] QSize sizeHint() const override { return {320, 320}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 120}; }

signals:
    /// The camera was dragged; `moving` until it is let go.
    void cameraDragged(const ViewCamera &camera, bool moving);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Held { Nothing, Camera, Direction };

    [[nodiscard]] QRectF place() const;
    [[nodiscard]] QPointF toWidget(const QPointF &world) const;
    [[nodiscard]] QPointF toWorld(const QPointF &pixel) const;
    [[nodiscard]] QPointF ahead(double degrees, double distance) const;
    void paintPath(QPainter &painter) const;
    void paintCamera(QPainter &painter) const;
    void drag(const QPointF &pixel, bool moving);

    Content m_content;
    QImage m_ground;
    Held m_held = Held::Nothing;
};

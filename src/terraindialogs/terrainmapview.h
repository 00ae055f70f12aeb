#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

#include <optional>

/// A terrain from above, on which a part can be selected.
///
/// Everything but drawing is in cells of the terrain, counted from its upper left corner.
class TerrainMapView : public QWidget {
    Q_OBJECT

public:
    explicit TerrainMapView(QWidget *parent = nullptr);

    /// Shows another terrain: its cells, and the width of a cell over its height on the
    /// ground. The picture comes by setMap(). An empty size shows none.
    void setTerrain(const QSize &cells, double shape);
    /// A picture of the whole; transparent where nothing is known.
    void setMap(const QImage &map);
    /// Text in place of a map.
    void setMessage(const QString &message);

    /// The selected part; nothing: the whole.
    [[nodiscard]] std::optional<QRect> part() const { return m_part; }
    /// Selects without partChanged(); what lies outside is cut off.
    void setPart(const std::optional<QRect> &part);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The user has selected another part; nothing: the whole.
    void partChanged(const std::optional<QRect> &part);
    /// The cell under the mouse; nothing when it is not over the terrain.
    void pointed(const std::optional<QPointF> &cell);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// What a drag changes: edges of the part, or all of them.
    struct Grip {
        bool left = false, top = false, right = false, bottom = false;
        [[nodiscard]] bool isInside() const { return left && top && right && bottom; }
        [[nodiscard]] bool isNone() const { return !left && !top && !right && !bottom; }
    };

    /// Where the map lies in the widget.
    [[nodiscard]] QRectF place() const;
    [[nodiscard]] QPointF cellAt(const QPointF &position) const;
    [[nodiscard]] QRectF placeOf(const QRect &cells) const;
    [[nodiscard]] Grip gripAt(const QPointF &position) const;
    [[nodiscard]] QRect dragged(const QPointF &cell) const;
    void showCursor(const Grip &grip);
    void select(const std::optional<QRect> &part);
    void paintPart(QPainter &painter) const;

    QSize m_cells;
    double m_shape = 1.0;
    QImage m_map;
    QString m_message;
    std::optional<QRect> m_part;

    bool m_drags = false;
    Grip m_grip;        // none while a new part is dragged
    QPointF m_dragFrom; // cell
    QRect m_partBefore;
};

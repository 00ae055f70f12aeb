#include "patheditors/outlineedges.h"

#include <QPainterPath>

#include <cmath>
#include <utility>

namespace {

constexpr int NoEdge = -1;
constexpr int MostHalvings = 9;
// Distance from its curve, in pixels, at which an edge is good enough.
constexpr double Flatness = 0.25;
// The painter rounds corners to 64ths of a pixel.
constexpr int CornerSteps = 64;
// Pixels beyond which there are no corners, so that whole numbers hold the grid.
constexpr double Farthest = 1 << 20;

int gridPlace(double pixels)
{
    return qRound(std::clamp(pixels, -Farthest, Farthest) * CornerSteps) *
           (GridSteps / CornerSteps);
}

} // namespace

OutlineEdges::OutlineEdges(const QRect &pixels, const QTransform &toPixels)
    : m_pixels(pixels), m_toPixels(toPixels), m_flatness(Flatness / toPixels.m11()),
      m_first(static_cast<std::size_t>((pixels.height() + CoverageBand::Height - 1) /
                                       CoverageBand::Height),
              NoEdge)
{
}

OutlineEdges::Place OutlineEdges::placeOf(const QPointF &corner) const
{
    return {gridPlace(corner.x() * m_toPixels.m11() + m_toPixels.dx()),
            gridPlace(corner.y() * m_toPixels.m22() + m_toPixels.dy())};
}

int OutlineEdges::bandOf(int y) const
{
    return std::max(0, pixelOf(y) - m_pixels.top()) / CoverageBand::Height;
}

// Edges above, below and right of the pixels tell nothing about them, level ones neither.
void OutlineEdges::lineTo(const Place &to)
{
    const Place from = std::exchange(m_at, to);
    const auto [upper, lower] = std::minmax(from.y, to.y);
    if (upper == lower || pixelOf(lower) < m_pixels.top() ||
        pixelOf(upper) > m_pixels.bottom() ||
        pixelOf(std::min(from.x, to.x)) > m_pixels.right())
        return;
    int &first = m_first[static_cast<std::size_t>(bandOf(upper))];
    m_edges.push_back({{from.x, from.y, to.x, to.y}, first});
    first = static_cast<int>(m_edges.size()) - 1;
}

// Halves the curve until each part is hardly longer than the way to its end.
void OutlineEdges::curveTo(const Curve &curve, int halvings)
{
    const QPointF way = curve[3] - curve[0];
    const QPointF pull1 = curve[0] - curve[1];
    const QPointF pull2 = curve[0] - curve[2];
    double length = way.manhattanLength();
    double distance = 0.0;
    if (length > 1.0) {
        distance = std::abs(way.x() * pull1.y() - way.y() * pull1.x()) +
                   std::abs(way.x() * pull2.y() - way.y() * pull2.x());
    } else {
        distance = pull1.manhattanLength() + pull2.manhattanLength();
        length = 1.0;
    }
    if (halvings == 0 || distance < m_flatness * length) {
        lineTo(placeOf(curve[3]));
        return;
    }
    const auto middle = [](const QPointF &a, const QPointF &b) { return (a + b) * 0.5; };
    const QPointF m01 = middle(curve[0], curve[1]);
    const QPointF m12 = middle(curve[1], curve[2]);
    const QPointF m23 = middle(curve[2], curve[3]);
    const QPointF m012 = middle(m01, m12);
    const QPointF m123 = middle(m12, m23);
    const QPointF half = middle(m012, m123);
    curveTo({curve[0], m01, m012, half}, halvings - 1);
    curveTo({half, m123, m23, curve[3]}, halvings - 1);
}

void OutlineEdges::add(const QPainterPath &outline)
{
    const auto corner = [&](int i) { return QPointF(outline.elementAt(i)); };
    Place start;
    for (int i = 0; i < outline.elementCount(); ++i) {
        const QPainterPath::Element element = outline.elementAt(i);
        if (element.isMoveTo()) {
            lineTo(start);
            start = placeOf(element);
            m_at = start;
        } else if (element.isLineTo()) {
            lineTo(placeOf(element));
        } else {
            curveTo({corner(i - 1), corner(i), corner(i + 1), corner(i + 2)},
                    MostHalvings);
            i += 2;
        }
    }
    lineTo(start);
}

bool OutlineEdges::countInto(CoverageBand &pixels, int band)
{
    int at = m_first[static_cast<std::size_t>(band)];
    if (at == NoEdge)
        return false;
    while (at != NoEdge) {
        Edge &edge = m_edges[static_cast<std::size_t>(at)];
        pixels.add(edge.line);
        const int next = edge.next;
        // Longer edges go on with the next band.
        if (band + 1 < bandCount() && bandOf(std::max(edge.line.y0, edge.line.y1)) > band)
            edge.next = std::exchange(m_first[static_cast<std::size_t>(band) + 1], at);
        at = next;
    }
    return true;
}

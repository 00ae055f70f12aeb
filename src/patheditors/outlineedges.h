#pragma once

#include "patheditors/coverageband.h"

#include <QPointF>
#include <QRect>
#include <QTransform>

#include <array>
#include <vector>

class QPainterPath;

/// The edges of outlines that matter to the pixels of a rectangle, sorted by
/// bands of rows.
///
/// Curves become edges by the painter's own rule, corners lie on its grid.
class OutlineEdges {
public:
    /// The transformation leads to pixels; it may scale and shift.
    OutlineEdges(const QRect &pixels, const QTransform &toPixels);

    void add(const QPainterPath &outline);

    [[nodiscard]] int bandCount() const { return static_cast<int>(m_first.size()); }
    /// Adds the edges of a band to its pixels; false where there are none. The bands
    /// come once each, from top to bottom.
    bool countInto(CoverageBand &pixels, int band);

private:
    using Curve = std::array<QPointF, 4>; // start, two that pull, end
    /// A corner on the grid.
    struct Place {
        int x = 0, y = 0; // steps of the grid
    };
    /// An edge in the list of its band.
    struct Edge {
        OutlineEdge line;
        int next; // of the same list
    };

    [[nodiscard]] Place placeOf(const QPointF &corner) const;
    [[nodiscard]] int bandOf(int y) const;
    void lineTo(const Place &to);
    void curveTo(const Curve &curve, int halvings);

    QRect m_pixels;
    QTransform m_toPixels;
    double m_flatness;
    Place m_at;
    std::vector<Edge> m_edges;
    std::vector<int> m_first; // of the edges that come into play in a band
};

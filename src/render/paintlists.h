#pragma once

#include "render/neartrigon.h"
#include "render/screentrigon.h"

#include <cstdint>
#include <vector>

/// Triangles that wait to be painted, dealt out to the threads that paint them. Where one
/// thread does everything nothing waits: a painter gets each triangle as it comes.
///
/// There is a list for each RowShare of the picture. A triangle stands in those whose
/// rows it may touch, and in none if it lies outside the picture. Each list keeps the
/// order in which the triangles came.
class alignas(64) PaintLists { // apart in the cache: threads fill some side by side
public:
    /// A triangle that waits: its corners and its number.
    struct Entry {
        std::int16_t x[3], row[3]; // of the corners
        std::uint32_t number;
    };

    /// Empties the lists for a picture of this size, to be painted in so many shares,
    /// 256 at most.
    void begin(int width, int height, int shares);
    /// The same for one thread, of which `painter` is borrowed.
    void begin(int width, int height, ScreenTrigon &painter);
    /// The same near ones first; `source` knows the triangles by then.
    void begin(int width, int height, NearTrigon &painter, const TriangleSource &source);
    /// Near ones first: begins a picture, in which lists follow each other.
    void beginPicture(int width, int height) { m_listed.begin({width, height}); }
    /// Near ones first: drops what these pixels cover, and what the triangles that were
    /// listed since the picture began will cover. To be called after begin(); borrowed.
    void passOver(const CoveredPixels &covered) { m_covered = &covered; }

    /// Whether nothing of what has its corners in this box will be seen.
    [[nodiscard]] bool hides(const ScreenBox &box) const;
    /// Corners are within Transformation::ScreenLimit.
    void add(ScreenCorner a, ScreenCorner b, ScreenCorner c, unsigned int number);
    [[nodiscard]] const std::vector<Entry> &of(int share) const
    {
        return m_lists[share].entries;
    }
    /// The rows of the picture that the triangles touch.
    [[nodiscard]] RowRange rows() const { return m_rows; }

private:
    // The ends of a row can lie a rounding beyond the corners, never a column.
    [[nodiscard]] bool isOutside(const ScreenBox &box) const
    {
        return box.top > m_yMax || box.bottom < 0 || box.left > m_xMax + 1 ||
               box.right < -1;
    }
    [[nodiscard]] bool isCovered(int row, int left, int right) const
    {
        return m_covered->surelyCovers(row, left, right) ||
               (!m_nearPainter && m_listed.surelyCovers(row, left, right));
    }
    [[nodiscard]] bool isListedOver(const ScreenCorner (&corners)[3],
                                    const ScreenBox &box);
    void wait(const ScreenCorner (&corners)[3], RowRange rows, unsigned int number);

    /// What waits for one thread.
    struct alignas(64) List {
        std::vector<Entry> entries;
    };

    int m_xMax = -1, m_yMax = -1; // last column and row of the picture
    int m_shares = 0;
    // Of what does not wait.
    ScreenTrigon *m_painter = nullptr;
    NearTrigon *m_nearPainter = nullptr;
    const TriangleSource *m_source = nullptr;
    const CoveredPixels *m_covered = nullptr;
    CoveredPixels m_listed; // by what is painted before all that follows
    RowRange m_rows;
    std::vector<std::uint8_t> m_listOf; // for each strip of the picture
    std::vector<List> m_lists;          // at least as many as shares
};

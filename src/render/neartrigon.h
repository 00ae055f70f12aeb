#pragma once

#include "render/colourbatch.h"
#include "render/coveredpixels.h"
#include "render/rowshare.h"
#include "render/screentrigon.h"

class TextureImage;
class Transformation;

/// Fills the triangles of one frame, near ones first.
///
/// What comes first on a pixel is what is seen, so it gets its colour at once and for
/// good. The picture is the one that ScreenTrigon makes of the same triangles in the
/// reverse order.
class NearTrigon {
public:
    /// Borrows all of it; `covered` is shared by those that paint the same frame.
    NearTrigon(TextureImage *target, const TextureImage *texture, C4Vector light,
               const Transformation *camera, int quality, CoveredPixels *covered);

    /// The rows that are painted; all of them at first.
    void setShare(RowShare rows) { m_share = rows; }

    /// Takes the pixels of a triangle that nothing covers yet; what it looks like is
    /// asked of the source where there are some.
    /// `box` is what the corners lie in.
    void paint(ScreenCorner a, ScreenCorner b, ScreenCorner c, const ScreenBox &box,
               unsigned int number, const TriangleSource &source);
    /// Writes the colours of all pixels taken so far.
    void flush() { m_colours.flush(); }

private:
    void paintLow(const ScreenCorner (&corners)[3], const ScreenBox &box,
                  unsigned int number, const TriangleSource &source);

    int m_xMax, m_yMax; // last column and row of the target
    RowShare m_share;
    CoveredPixels *m_covered;
    ColourBatch m_colours;
};

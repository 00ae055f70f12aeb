#pragma once

#include "raster/pixelreader.h"

#include <vector>

class ElevationImage;

/// Reads elevations at the same world columns in many rows.
///
/// Gives what ElevationImage::elevation(double, double) gives; what depends on the
/// column alone is worked out once. Borrows the image, which must outlive the reader
/// and not change meanwhile.
class ElevationColumns {
public:
    ElevationColumns(const ElevationImage &image, const std::vector<double> &x);

    /// The elevations at world row y of `count` columns, beginning with `first`.
    void read(double y, int first, int count, double *z) const;

private:
    struct Column {
        int index;       // left pixel, or -1 outside
        double fraction; // of the way to the next
    };

    const ElevationImage *m_image;
    PixelReader m_read;
    std::vector<Column> m_columns;
};

#pragma once

#include <optional>

class QIODevice;
class QString;

/// What the first directory of a TIFF file tells of its samples and its place.
struct TiffHead {
    int bits = 1;               ///< of a sample; where they differ, the most
    bool floating = false;      ///< the samples are floating-point numbers
    bool georeferenced = false; ///< it tells where on the earth the picture lies

    bool operator==(const TiffHead &) const = default;
};

/// Reads the head of a TIFF or BigTIFF of either byte order; no value where the bytes are
/// no such head. Tags as in TIFF 6.0 and OGC GeoTIFF 1.1.
[[nodiscard]] std::optional<TiffHead> readTiffHead(QIODevice &file);
[[nodiscard]] std::optional<TiffHead> readTiffHead(const QString &name);

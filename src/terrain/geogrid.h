#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include <array>
#include <optional>

/// From cells of a raster, counted from its upper left corner, to its reference system:
/// x = t[0] + column * t[1] + row * t[2], y = t[3] + column * t[4] + row * t[5].
using GeoTransform = std::array<double, 6>;

/// A stretch of the earth in some reference system, east before north.
struct Extent {
    double west = 0.0;
    double south = 0.0;
    double east = 0.0;
    double north = 0.0;

    [[nodiscard]] double width() const { return east - west; }
    [[nodiscard]] double height() const { return north - south; }
    bool operator==(const Extent &) const = default;
};

/// How heights between cells are found. Auto: nearest where cells fall on cells, average
/// where the new cells are larger, cubic else.
enum class Resampling { Auto, Nearest, Bilinear, Cubic, Average };

/// Which part of a terrain is wanted, and how.
struct GridRequest {
    std::optional<Extent> rect; ///< in the reference system of the output
    std::optional<QRect> cells; ///< of the mosaic, instead of `rect`
    std::optional<QSize> size; ///< of the output; as many as gdalwarp proposes by default
    QString crs;               ///< "utm", "keep", a code such as "EPSG:25833"; empty: utm
                               ///< for geographic data, keep else
    Resampling resampling = Resampling::Auto;

    bool operator==(const GridRequest &) const = default;
};

/// The cells that are made of a terrain. Rows run southward.
struct OutputGrid {
    QString crs; ///< well-known text; empty where the terrain has none
    GeoTransform transform{};
    QSize size;
    Resampling resampling = Resampling::Nearest; ///< never Auto
    std::optional<QRect> cells; ///< of the mosaic, where they are taken as they are
    double metresX = 1.0;       ///< of a cell, eastward
    double metresY = 1.0;       ///< of a cell, northward

    [[nodiscard]] Extent extent() const
    {
        return {transform[0], transform[3] + size.height() * transform[5],
                transform[0] + size.width() * transform[1], transform[3]};
    }
};

/// The most cells of a side, unless the request has its own size.
constexpr int MostProposedCells = 4096;

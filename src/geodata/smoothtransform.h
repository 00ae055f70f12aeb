#pragma once

#include "geodata/gdalruntime.h"
#include "terrain/geogrid.h"

#include <gdal_alg.h>

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

struct TransformerDeleter {
    void operator()(void *transformer) const;
};

/// From cells of an output grid to cells of a raster, as GDAL's own transformer tells
/// exactly, at a small part of its time.
///
/// The way from one reference system to another is smooth, so that in a patch of cells a
/// polynomial of the fifth degree follows it to a hundred-thousandth of a cell. Patches
/// in which it does not, at an edge of a projection, are asked for exactly.
class SmoothTransform {
public:
    /// Null, with GDAL's message, where there is no way between the systems.
    [[nodiscard]] static std::unique_ptr<SmoothTransform> between(GDALDatasetH source,
                                                                  const OutputGrid &grid);
    /// GDAL's kind of transformer, and what it is to be called with.
    [[nodiscard]] GDALTransformerFunc function() const;
    [[nodiscard]] void *data();
    /// Cells of the raster on a side of a cell of the grid, the most of some places.
    [[nodiscard]] double cellsPerCell(const QSize &grid, const QSize &raster);

private:
    static constexpr int Nodes = 6;
    using Matrix = std::array<double, std::size_t(Nodes) * Nodes>;
    struct Patch {
        bool isSmooth = false;
        Matrix x{}; // factors of the powers of the place in the patch
        Matrix y{};
    };

    SmoothTransform() = default;
    static int transform(void *self, int toSource, int count, double *x, double *y,
                         double *z, int *ok);
    [[nodiscard]] const Patch &patchAt(int column, int row);
    [[nodiscard]] Patch fitPatch(int column, int row);
    [[nodiscard]] bool exactly(std::vector<double> &x, std::vector<double> &y);
    int toSource(int count, double *x, double *y, double *z, int *ok);

    std::unique_ptr<void, TransformerDeleter> m_exact;
    bool m_isAffine = false; // nothing to save
    std::unordered_map<std::uint64_t, Patch> m_patches;
};

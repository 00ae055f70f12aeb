#pragma once

#include "geodata/mosaic.h"

#include <QRect>
#include <QRectF>

#include <cstdint>
#include <memory>
#include <vector>

/// Size of windows that are read between two looks at the progress, in some milliseconds.
/// They hold whole blocks of the file, so that none is read twice.
[[nodiscard]] QSize windowOf(const Sheet &sheet);

/// Reads windows of a sheet as heights in metres; for the thread that opened it.
class SheetReader {
public:
    [[nodiscard]] static Result<std::unique_ptr<SheetReader>> open(const Sheet &sheet);

    /// Cells as they are: `pitch` values lie between the beginnings of two rows.
    [[nodiscard]] Result<bool> read(const QRect &cells, float *to, std::size_t pitch);
    /// A part of the sheet at another size, from overviews where there are some; each
    /// cell is the one in its middle.
    [[nodiscard]] Result<bool> readShrunk(const QSize &size, const QRect &part, float *to,
                                          std::size_t pitch);
    /// The rows of the sheet, or of the overview that serves a size, and those that the
    /// file keeps together.
    [[nodiscard]] std::pair<int, int> rowsFor(const QSize &size) const;

private:
    SheetReader() = default;
    struct Window;
    [[nodiscard]] bool isPlain() const;
    [[nodiscard]] Result<bool> readWindow(GDALRasterBandH band, const Window &window,
                                          float *to, std::size_t pitch);
    [[nodiscard]] bool readNumbers(GDALRasterBandH band, const Window &window, float *to,
                                   std::size_t pitch);
    [[nodiscard]] bool dropMasked(GDALRasterBandH band, const Window &window, float *to,
                                  std::size_t pitch);

    Dataset m_file;
    const RasterFile *m_raster = nullptr; // null: metres already, voids are NaN
    QString m_name;
    QSize m_size;
    std::vector<double> m_wide; // of numbers that a float would round
    std::vector<std::uint8_t> m_mask;
};

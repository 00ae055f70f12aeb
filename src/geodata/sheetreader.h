#pragma once

#include "geodata/mosaic.h"

#include <QRect>

#include <cstdint>
#include <memory>
#include <vector>

/// Reads windows of a sheet as heights in metres; for the thread that opened it.
class SheetReader {
public:
    [[nodiscard]] static Result<std::unique_ptr<SheetReader>> open(const Sheet &sheet);

    /// Cells as they are: `pitch` values lie between the beginnings of two rows.
    [[nodiscard]] Result<bool> read(const QRect &cells, float *to, std::size_t pitch);
    /// Rows `from` to `until` of the sheet at another size, from overviews where there
    /// are some; each cell is the one in its middle.
    [[nodiscard]] Result<bool> readRows(const QSize &size, int from, int until,
                                        float *to);
    /// Cells that the file keeps together.
    [[nodiscard]] const QSize &block() const { return m_block; }

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
    QSize m_block;
    std::vector<double> m_wide; // of numbers that a float would round
    std::vector<std::uint8_t> m_mask;
};

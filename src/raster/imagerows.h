#pragma once

#include <QImage>

#include <type_traits>
#include <vector>

/// Brings an image to a format whose pixels hold any opaque colour exactly:
/// 32 bits or RGB888. Indexed, gray, 16-bit and premultiplied images change
/// their format, others stay as they are and keep their buffer.
void makeEditable(QImage &image);

/// The same, but always 4 bytes a pixel, so that rows are arrays of QRgb.
[[nodiscard]] QImage as32Bit(QImage image);

/// Row y of an image of 4 bytes a pixel.
[[nodiscard]] inline const QRgb *rowOf(const QImage &image, int y)
{
    return reinterpret_cast<const QRgb *>(image.constScanLine(y));
}

/// Writes the colours of a row into a row of an RGB888 image.
void storeRgb888(const QRgb *colours, int width, uchar *row);

/// Runs edit(QRgb *row) over all rows from the top, in place. The image has to
/// be editable; alpha of an RGB32 image is whatever its file left there. An edit that
/// gives a bool ends the work with false, which is then given back.
template <class Edit> bool editRows(QImage &image, Edit &&edit)
{
    const auto goesOn = [&edit](QRgb *row) {
        if constexpr (std::is_same_v<decltype(edit(row)), bool>) {
            return edit(row);
        } else {
            edit(row);
            return true;
        }
    };
    const int width = image.width();
    if (image.depth() == 32) {
        for (int y = 0; y < image.height(); ++y)
            if (!goesOn(reinterpret_cast<QRgb *>(image.scanLine(y))))
                return false;
        return true;
    }
    std::vector<QRgb> buffer(static_cast<size_t>(width));
    for (int y = 0; y < image.height(); ++y) {
        uchar *const row = image.scanLine(y);
        const uchar *pixel = row;
        for (int x = 0; x < width; ++x, pixel += 3)
            buffer[x] = qRgb(pixel[0], pixel[1], pixel[2]);
        if (!goesOn(buffer.data()))
            return false;
        storeRgb888(buffer.data(), width, row);
    }
    return true;
}

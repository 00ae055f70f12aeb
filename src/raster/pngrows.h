#pragma once

#include <QImage>

#include <array>
#include <cstddef>
#include <vector>

/// How the pixels of a picture stand in the rows of a PNG: bytes of 8 bits a channel.
struct PngPixels {
    /// As in the head of the file.
    enum class Colour : unsigned char { Gray = 0, Rgb = 2, Palette = 3, Rgba = 6 };

    Colour colour = Colour::Rgb;

    /// That of a picture, by its format and whether its colours are those of their
    /// numbers; false if this writer has no rows for it.
    [[nodiscard]] static bool of(const QImage &image, PngPixels *pixels);
    /// Bytes of a pixel.
    [[nodiscard]] int channels() const;
};

/// Filters rows of a picture, from any of them downward. A filter foretells each byte
/// from those of the pixels to the left, above, and above to the left, and keeps the
/// difference; each row takes the filter that leaves the least. Numbers of a palette are
/// kept as they are, for they foretell nothing.
class PngRowFilter {
public:
    PngRowFilter(PngPixels pixels, int width);

    [[nodiscard]] std::size_t bytesOfRow() const { return std::size_t(m_count) + 1; }
    /// Writes rows `from` to `end` - 1 of the picture to `out`, each behind the kind of
    /// its filter. Throws std::bad_alloc.
    void filter(const QImage &image, int from, int end, unsigned char *out);

private:
    void take(const QImage &rows, int y);
    void filterRow(unsigned char *out);
    [[nodiscard]] int tryAll();

    PngPixels m_pixels;
    int m_channels;
    int m_count;                               // bytes of a row
    std::vector<unsigned char> m_row, m_above; // with a black pixel before the first
    std::array<std::vector<unsigned char>, 5> m_tried; // by kind
};

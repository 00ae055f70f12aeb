#pragma once

#include "base/vectors.h"

#include <QImage>

#include <array>

/// The colour source of the renderer and the class of its target.
///
/// World x and y are texture pixels, y counted from the bottom. All reads give
/// QRgb values; positions outside give the background colour. Not to be shared
/// between threads: the smooth read keeps its last block of texels.
class TextureImage : public QImage {
public:
    TextureImage();
    /// Loads a file; the image is null if that fails. Kept at 4 bytes a pixel.
    explicit TextureImage(const QString &fileName, const char *format = nullptr);
    explicit TextureImage(const char *fileName, const char *format = nullptr);
    TextureImage(uchar *data, int width, int height, Format format);
    TextureImage(const uchar *data, int width, int height, Format format);
    TextureImage(uchar *data, int width, int height, qsizetype bytesPerLine,
                 Format format);
    TextureImage(const uchar *data, int width, int height, qsizetype bytesPerLine,
                 Format format);
    TextureImage(int width, int height, Format format);
    TextureImage(const QSize &size, Format format);
    /// Copies the picture alone: block cache and background start afresh.
    TextureImage(const TextureImage &other);
    TextureImage &operator=(const TextureImage &) = delete;
    ~TextureImage() override = default;

    void setBackgroundColor(unsigned int colour) { backgroundColor = colour; }
    /// The answer for positions outside the texture.
    [[nodiscard]] unsigned int background() const { return backgroundColor; }
    /// Fills the weights from the setting Settings/Antialiasing.
    void SetWeight();
    /// exp(-i / S), i from 0 to 80.
    [[nodiscard]] const std::array<double, 81> &weights() const { return weightTable; }

    /// Nearest texel.
    void GetColorInt(const C4Vector &p, unsigned int *colour) const;
    /// Average of the nearest texels of five points.
    void GetColorArray(const C4Vector *p, unsigned int *colour) const;
    /// Smooth 4-by-4 read with exponential weights.
    void GetColor(const C4Vector &p, unsigned int *colour);
    /// Nearest texel at a whole position, y from the bottom.
    void GetColor(int x, int y, unsigned int *colour) const;
    /// Bilinear read, its weights the reverse of the usual.
    void GetColor(const C2Vector &p, unsigned int *colour) const;

private:
    void readBlock(int column, int row);

    unsigned int backgroundColor = 0xFFFFFFFFu;
    std::array<unsigned int, 16> cacheBlock{}; // texels, row after row
    int cacheColumn = -1; // upper left texel of the block; -1 matches none
    int cacheRow = -1;
    std::array<double, 81> weightTable{};
};

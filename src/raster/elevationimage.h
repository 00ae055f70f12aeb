#pragma once

#include <QImage>

#include <utility>

class C4Vector;

/// A height field: each pixel holds a signed 24-bit integer, red the high byte;
/// elevation = integer * zScale. Rows run downward, world y runs upward.
class ElevationImage : public QImage {
public:
    /// Lowest and highest integer that a pixel holds.
    static constexpr int LowestStep = -8388608;
    static constexpr int HighestStep = 8388607;

    ElevationImage() = default;
    /// Loads a file; the image is null if that fails.
    explicit ElevationImage(const QString &fileName, const char *format = nullptr);
    explicit ElevationImage(const char *fileName, const char *format = nullptr);
    /// Loads a file that is stretched by x and y world units per pixel.
    ElevationImage(const QString &fileName, double x, double y, const char *format);
    ElevationImage(uchar *data, int width, int height, Format format);
    ElevationImage(const uchar *data, int width, int height, Format format);
    ElevationImage(uchar *data, int width, int height, qsizetype bytesPerLine,
                   Format format);
    ElevationImage(const uchar *data, int width, int height, qsizetype bytesPerLine,
                   Format format);
    ElevationImage(int width, int height, Format format);
    ElevationImage(const QSize &size, Format format);

    /// Stretches the image by x and y world units per pixel.
    void setScales(double x, double y)
    {
        m_xScale = 1.0 / x;
        m_yScale = 1.0 / y;
    }
    void setZScale(double scale) { m_zScale = scale; }
    [[nodiscard]] double zScale() const { return m_zScale; }
    /// Pixels per world unit.
    [[nodiscard]] double xScale() const { return m_xScale; }
    [[nodiscard]] double yScale() const { return m_yScale; }

    /// Nearest pixel, y counted from the bottom row; 0 outside the image.
    [[nodiscard]] double elevation(int x, int y) const;
    /// Bilinear read at a world position; 0 outside, where the last column and
    /// the bottom row count as outside.
    [[nodiscard]] double elevation(double x, double y) const;
    /// Nearest pixel, y counted from the top row, unlike elevation(). Rounds
    /// halves away from zero and wraps modulo 2^24; writes outside are dropped.
    /// What is infinite or no number is stored as 0.
    void setElevation(int x, int y, double e);
    /// Lowest and highest of all that elevation(int, int) gives for x below the width
    /// and y below the height. A null image has its lowest above its highest.
    [[nodiscard]] std::pair<double, double> elevationRange() const;
    /// Lowest and highest integer of all pixels; both 0 where there are none.
    [[nodiscard]] std::pair<int, int> stepsRange() const;
    /// Sets p.z to the elevation at p.x, p.y.
    void Z(C4Vector &p) const;
    /// Sets every pixel to the raw value, which is a pixel, not an elevation.
    void clear(const unsigned int &value);

    /// The signed integer that a pixel's three colour bytes hold.
    [[nodiscard]] static constexpr int stepsOf(QRgb pixel)
    {
        const int n = static_cast<int>(pixel & 0x00FFFFFFu);
        return n >= 0x800000 ? n - 0x1000000 : n;
    }

    /// The opaque pixel that stands for an elevation under a z scale.
    [[nodiscard]] static QRgb pixelOf(double e, double zScale);

private:
    double m_xScale = 1.0; // pixels per world unit
    double m_yScale = 1.0;
    double m_zScale = 1.0; // world units per stored step
};

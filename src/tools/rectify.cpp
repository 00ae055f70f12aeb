#include "tools/rectify.h"

#include "raster/bilinear.h"
#include "raster/imagerows.h"

#include <QObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

double Ax, Ay, Bx, By, Cx, Cy, Dx, Dy;
double Ax_, Ay_, Bx_, By_, Cx_, Cy_, Dx_, Dy_;
double Px_, Py_;

namespace {

struct Position {
    double x = 0.0;
    double y = 0.0;
};

struct PointPair {
    Position corrected;
    Position distorted;
};

using PointPairs = std::array<PointPair, 4>;

PointPairs pointPairs()
{
    return {PointPair{{Ax, Ay}, {Ax_, Ay_}}, PointPair{{Bx, By}, {Bx_, By_}},
            PointPair{{Cx, Cy}, {Cx_, Cy_}}, PointPair{{Dx, Dy}, {Dx_, Dy_}}};
}

// Image::pixel(double, double) with rows at hand: the same bytes.
class Sampler {
public:
    explicit Sampler(const QImage &image)
        : m_bits(image.constBits()), m_bytesPerLine(image.bytesPerLine()),
          m_lastColumn(image.width() - 1), m_lastRow(image.height() - 1),
          m_limitX(std::max(image.width() - 2.0, 0.0)),
          m_limitY(std::max(image.height() - 2.0, 0.0))
    {
    }

    [[nodiscard]] QRgb operator()(Position p) const
    {
        const double x = p.x > 0.0 ? std::min(p.x, m_limitX) : 0.0;
        const double y = p.y > 0.0 ? std::min(p.y, m_limitY) : 0.0;
        const int ix = static_cast<int>(x);
        const int iy = static_cast<int>(y);
        const double fx = x - ix;
        const double fy = y - iy;
        const QRgb *const upper = row(iy);
        const QRgb *const lower = row(std::min(iy + 1, m_lastRow));
        const int right = std::min(ix + 1, m_lastColumn);
        return bilinearColour(upper[ix], upper[right], lower[ix], lower[right], fx, fy);
    }

private:
    [[nodiscard]] const QRgb *row(int y) const
    {
        return reinterpret_cast<const QRgb *>(m_bits + y * m_bytesPerLine);
    }

    const uchar *m_bits;
    qsizetype m_bytesPerLine;
    int m_lastColumn;
    int m_lastRow;
    double m_limitX;
    double m_limitY;
};

// Where the pixels of one output row are read.
class ReadPositions {
public:
    ReadPositions(const PointPairs &pairs, int width)
        : m_pairs(pairs), m_x(static_cast<size_t>(width)), m_y(static_cast<size_t>(width))
    {
        for (size_t i = 0; i < pairs.size(); ++i)
            m_displacement[i] = {pairs[i].distorted.x - pairs[i].corrected.x,
                                 pairs[i].distorted.y - pairs[i].corrected.y};
    }

    void computeRow(double py)
    {
        weighDisplacements(py);
        // Where a distance is 0 the weights are no numbers. Exactly on a distorted
        // point its corrected one is read; the first pair counts.
        for (size_t i = m_pairs.size(); i-- > 0;) {
            const PointPair &pair = m_pairs[i];
            const double x = pair.distorted.x;
            if (pair.distorted.y == py && x >= 0.0 && x < double(m_x.size()) &&
                x == std::floor(x)) {
                m_x[static_cast<size_t>(x)] = pair.corrected.x;
                m_y[static_cast<size_t>(x)] = pair.corrected.y;
            }
        }
    }

    [[nodiscard]] Position at(int column) const { return {m_x[column], m_y[column]}; }

private:
    void weighDisplacements(double py)
    {
        const auto [a, b, c, d] = m_pairs;
        const auto [dA, dB, dC, dD] = m_displacement;
        const auto squared = [](double v) { return v * v; };
        const double yA = squared(py - a.distorted.y);
        const double yB = squared(py - b.distorted.y);
        const double yC = squared(py - c.distorted.y);
        const double yD = squared(py - d.distorted.y);
        const int width = static_cast<int>(m_x.size());
        double *const outX = m_x.data();
        double *const outY = m_y.data();
        for (int column = 0; column < width; ++column) {
            const double px = column;
            const double invA = 1 / (squared(px - a.distorted.x) + yA);
            const double invB = 1 / (squared(px - b.distorted.x) + yB);
            const double invC = 1 / (squared(px - c.distorted.x) + yC);
            const double invD = 1 / (squared(px - d.distorted.x) + yD);
            const double s = invA + invB + invC + invD;
            const double wA = invA / s;
            const double wB = invB / s;
            const double wC = invC / s;
            const double wD = invD / s;
            outX[column] = px + wA * dA.x + wB * dB.x + wC * dC.x + wD * dD.x;
            outY[column] = py + wA * dA.y + wB * dB.y + wC * dC.y + wD * dD.y;
        }
    }

    PointPairs m_pairs;
    std::array<Position, 4> m_displacement;
    std::vector<double> m_x;
    std::vector<double> m_y;
};

} // namespace

void setRectifyCorners(const RectifyCorners &corners)
{
    const auto set = [](const RectifyCorner &corner, double &x, double &y, double &x_,
                        double &y_) {
        x = corner.x;
        y = corner.y;
        x_ = corner.x_;
        y_ = corner.y_;
    };
    set(corners[0], Ax, Ay, Ax_, Ay_);
    set(corners[1], Bx, By, Bx_, By_);
    set(corners[2], Cx, Cy, Cx_, Cy_);
    set(corners[3], Dx, Dy, Dx_, Dy_);
}

Result<QImage> rectify(const QImage &image, Progress &progress)
{
    const QImage source = as32Bit(image);
    QImage corrected(source.size(), source.format());
    if (source.isNull() || corrected.isNull())
        return failed(QObject::tr("There is not enough memory for the picture."));

    const int width = source.width();
    const int height = source.height();
    const Sampler sample(source);
    ReadPositions positions(pointPairs(), width);
    for (int y = 0; y < height; ++y) {
        Py_ = y;
        if (!progress.step(y, height))
            return stopped();
        positions.computeRow(y);
        auto *const out = reinterpret_cast<QRgb *>(corrected.scanLine(y));
        for (int x = 0; x < width; ++x)
            out[x] = sample(positions.at(x));
        Px_ = width;
    }
    return corrected;
}

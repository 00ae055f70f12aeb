#include "base/pi.h"
#include "base/workerpool.h"
#include "terrain/directions.h"
#include "terrain/madeterrain.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr double Nothing = -std::numeric_limits<double>::infinity();

// Horizons as they are defined, each cell by itself and in the time that it takes.
class PlainHorizon {
public:
    PlainHorizon(const Heights &heights, const Direction &direction)
        : m_heights(heights), m_direction(direction),
          m_size(direction.isExchanged ? heights.size.transposed() : heights.size)
    {
        // As exact as places are known, so that lines meet the same cells.
        m_direction.slant = std::ldexp(std::round(std::ldexp(direction.slant, 32)), -32);
    }
    [[nodiscard]] QSize size() const { return m_size; }
    [[nodiscard]] double at(int x, int y) const
    {
        const double line = x - m_direction.slant * y;
        const double west = std::floor(line);
        const double share = line - west;
        const double left = ofLine(west, y);
        if (share == 0.0)
            return left;
        const double right = ofLine(west + 1.0, y);
        if (left == Nothing || right == Nothing)
            return std::max(left, right);
        return left + share * (right - left);
    }

private:
    [[nodiscard]] double height(int x, int y) const
    {
        const int inside = std::clamp(x, 0, m_size.width() - 1);
        return double(m_direction.isExchanged ? m_heights.row(inside)[y]
                                              : m_heights.row(y)[inside]);
    }
    [[nodiscard]] double onLine(double line, int y) const
    {
        const double place = line + m_direction.slant * y;
        const double west = std::floor(place);
        if (west < -1.0 || west >= m_size.width())
            return std::numeric_limits<double>::quiet_NaN();
        const int x = static_cast<int>(west);
        return height(x, y) + (place - west) * (height(x + 1, y) - height(x, y));
    }
    [[nodiscard]] double ofLine(double line, int y) const
    {
        const double here = onLine(line, y);
        double horizon = Nothing;
        for (int other = 0; other < m_size.height(); ++other) {
            if (other == y || (other > y) != m_direction.towardHigher)
                continue;
            const double there = onLine(line, other);
            if (!std::isnan(there))
                horizon = std::max(horizon, (there - here) /
                                                (m_direction.step * std::abs(other - y)));
        }
        return horizon;
    }

    const Heights &m_heights;
    Direction m_direction;
    const QSize m_size;
};

} // namespace

/// The horizon of every cell, beside the same found plainly.
class TestHorizonLines : public QObject {
    Q_OBJECT

private slots:
    void horizonsAreThoseFoundPlainly_data();
    void horizonsAreThoseFoundPlainly();
    void stripsGiveBackWhatWasPut_data();
    void stripsGiveBackWhatWasPut();
};

void TestHorizonLines::horizonsAreThoseFoundPlainly_data()
{
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<QSize>("size");
    for (const QSize &size :
         {QSize(150, 70), QSize(40, 131), QSize(1, 9), QSize(9, 1), QSize(1, 1)})
        for (const double azimuth : {0.0, 17.0, 45.0, 73.5, 90.0, 101.0, 200.0, 299.0})
            QTest::addRow("%d x %d, %g degrees", size.width(), size.height(), azimuth)
                << azimuth << size;
}

void TestHorizonLines::horizonsAreThoseFoundPlainly()
{
    QFETCH(double, azimuth);
    QFETCH(QSize, size);
    const Heights ground = madeHeights(size, [](int x, int y) {
        const bool isLevel = x % 50 > 40; // many points of a line at one height
        return isLevel ? 12.0
                       : 40.0 * std::sin(x * 0.31) * std::cos(y * 0.23) +
                             (x * 7 + y * 13) % 11;
    });
    const Direction direction = directionTo(azimuth * (Pi / 180.0), 10.0, 12.0);
    const PlainHorizon plain(ground, direction);
    CellStrips strips(size, direction.isExchanged);
    CellStrips found(size, direction.isExchanged), times(size, direction.isExchanged);
    const std::vector<float> none(ground.metres.size());
    times.put(0, int(size.height()), none.data());
    WorkerPool pool(2);
    NoProgress progress;
    QVERIFY(putHeights(ground, strips, pool, Stretch{progress}));
    QVERIFY(sweepHorizon(strips, direction, pool, Stretch{progress},
                         [&](const HorizonLines::Walk &walk) {
                             found.forParts(walk.column(), walk.row(), walk.count(),
                                            [&](float *cells, int i, int n) {
                                                std::copy_n(walk.horizon() + i, n, cells);
                                            });
                             times.forParts(walk.column(), walk.row(), walk.count(),
                                            [](float *cells, int, int n) {
                                                for (int k = 0; k < n; ++k)
                                                    cells[k] += 1.0f;
                                            });
                         }));
    for (int y = 0; y < plain.size().height(); ++y)
        for (int x = 0; x < plain.size().width(); ++x) {
            float horizon = 0.0f, count = 0.0f;
            found.copy(x, y, 1, &horizon);
            times.copy(x, y, 1, &count);
            QCOMPARE(count, 1.0f);
            const double expected = std::max(plain.at(x, y), -1e9);
            const double told = std::max(double(horizon), -1e9);
            QVERIFY2(std::abs(told - expected) <= 2e-5 * std::abs(expected) + 2e-5,
                     qPrintable(QStringLiteral("%1, %2: %3 instead of %4")
                                    .arg(x)
                                    .arg(y)
                                    .arg(told)
                                    .arg(expected)));
        }
}

void TestHorizonLines::stripsGiveBackWhatWasPut_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("isExchanged");
    for (const QSize &size : {QSize(200, 130), QSize(64, 64), QSize(1, 70), QSize(70, 1)})
        for (const bool isExchanged : {false, true})
            QTest::addRow("%d x %d %d", size.width(), size.height(), isExchanged)
                << size << isExchanged;
}

void TestHorizonLines::stripsGiveBackWhatWasPut()
{
    QFETCH(QSize, size);
    QFETCH(bool, isExchanged);
    const Heights given =
        madeHeights(size, [](int x, int y) { return double(x * 1000 + y); });
    CellStrips strips(size, isExchanged);
    for (int y = 0; y < size.height(); y += 9) // across the edges of strips
        strips.put(y, std::min(y + 9, size.height()), given.row(y));
    std::vector<float> back(given.metres.size());
    strips.take(0, size.height(), back.data());
    QVERIFY(back == given.metres);
    const QPoint cell(size.width() - 1, size.height() / 2);
    float number = 0.0f;
    if (isExchanged)
        strips.copy(cell.y(), cell.x(), 1, &number);
    else
        strips.copy(cell.x(), cell.y(), 1, &number);
    QCOMPARE(number, given.row(cell.y())[cell.x()]);
}

QTEST_APPLESS_MAIN(TestHorizonLines)
#include "test_horizonlines.moc"

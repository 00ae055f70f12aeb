// What the reach of a row leaves out paints nothing, and it leaves out most of what lies
// beside the picture.

#include "render/meshloops.h"
#include "render/paintlists.h"
#include "render/rowreach.h"
#include "render/transformation.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr std::int16_t Off = std::numeric_limits<std::int16_t>::min();

// A row of cells between two rows of points, over a terrain of random heights.
struct Strip {
    Strip(QRandomGenerator &random, int cells, double cell, double y, double highest)
        : south(y), north(y + cell)
    {
        for (int k = 0; k <= cells; ++k) {
            x.push_back(k * cell);
            low.push_back(random.generateDouble() * highest);
            high.push_back(random.generateDouble() * highest);
        }
    }
    std::vector<double> x, low, high;
    double south, north;
};

struct Camera {
    explicit Camera(QRandomGenerator &random)
        : size(random.bounded(1, 1500), random.bounded(1, 1200)),
          view(nullptr, {0, 0, -1, 0}, size.width(), size.height())
    {
        const auto between = [&](double from, double to) {
            return from + random.generateDouble() * (to - from);
        };
        const double roll = random.bounded(2) ? 0.0 : between(-3.2, 3.2);
        view.SetView({between(-500, 1500), between(-500, 1500), between(-20, 300), 1.0},
                     between(-3.2, 3.2), between(-1.6, 1.0), between(20, 3000), roll);
    }
    QSize size;
    Transformation view;
};

// For each cell whether one of its triangles may touch the picture.
std::vector<bool> touching(const Strip &strip, const Camera &camera)
{
    const auto points = strip.x.size();
    std::vector<std::int16_t> column[2], row[2];
    for (const int side : {0, 1}) {
        column[side].resize(points);
        row[side].resize(points);
        rowOnScreen(strip.x.data(), side == 0 ? strip.south : strip.north,
                    side == 0 ? strip.low.data() : strip.high.data(), int(points),
                    camera.view.projection(), Off, column[side].data(), row[side].data());
    }
    std::vector<bool> found(points - 1);
    PaintLists lists;
    for (std::size_t k = 0; k + 1 < points; ++k) {
        lists.begin(camera.size.width(), camera.size.height(), 1);
        const auto corner = [&](int side, std::size_t at) {
            return ScreenCorner{column[side][at], row[side][at]};
        };
        const auto add = [&](ScreenCorner a, ScreenCorner b, ScreenCorner c) {
            if (a.x != Off && b.x != Off && c.x != Off)
                lists.add(a, b, c, 1);
        };
        add(corner(0, k), corner(1, k), corner(1, k + 1));
        add(corner(0, k), corner(1, k + 1), corner(0, k + 1));
        found[k] = !lists.of(0).empty();
    }
    return found;
}

bool contains(PointSpan span, int cell)
{
    return cell >= span.first && cell + 1 <= span.last;
}

} // namespace

class TestRowReach : public QObject {
    Q_OBJECT

private slots:
    void allOfARowWhereNothingIsKnown()
    {
        const double x[] = {0, 1, 2, 3};
        const PointSpan span = RowReach().of(x, 4, 5, 6);
        QCOMPARE(span.first, 0);
        QCOMPARE(span.last, 3);
    }

    void nothingThatIsSeenIsLeftOut()
    {
        qint64 outside = 0;
        qint64 leftOut = 0;
        for (quint32 seed = 1; seed <= 4000; ++seed) {
            QRandomGenerator random(seed);
            const Camera camera(random);
            const double cell =
                random.bounded(2) ? 1.0 : 0.1 + random.generateDouble() * 20;
            const double highest = random.bounded(2) ? 80.0 : -15.0;
            const Strip strip(random, random.bounded(1, 200), cell,
                              random.generateDouble() * 1000, highest);
            const RowReach reach(camera.view, camera.size, {0.0, highest});
            const PointSpan span =
                reach.of(strip.x.data(), int(strip.x.size()), strip.south, strip.north);
            const std::vector<bool> touches = touching(strip, camera);
            for (std::size_t k = 0; k < touches.size(); ++k) {
                if (touches[k])
                    QVERIFY2(contains(span, int(k)), qPrintable(QString::number(seed)));
                else
                    ++outside;
                leftOut += !touches[k] && !contains(span, int(k));
            }
        }
        // What is left in stands before or behind what is seen, or high above it.
        QVERIFY(outside > 100000);
        QVERIFY(leftOut > outside / 2);
    }

    void aGreaterStretchHasNoFewerPoints()
    {
        QRandomGenerator random(5);
        for (int i = 0; i < 2000; ++i) {
            const Camera camera(random);
            const RowReach reach(camera.view, camera.size, {-20.0, 60.0});
            const Strip strip(random, 150, 7.0, random.generateDouble() * 1000, 1.0);
            const int points = int(strip.x.size());
            const PointSpan small =
                reach.of(strip.x.data(), points, strip.south, strip.north);
            const double more = random.generateDouble() * 50;
            const PointSpan large =
                reach.of(strip.x.data(), points, strip.south - more, strip.north + more);
            QVERIFY(large.holds(small));
        }
    }

    void aCameraThatIsNoNumberLeavesNothingOut()
    {
        const double x[] = {0, 1, 2, 3};
        Transformation view(nullptr, {0, 0, -1, 0}, 100, 80);
        view.SetView({std::nan(""), 0, 0, 1}, 0, 0, 50, 0);
        QCOMPARE(RowReach(view, {100, 80}, {0, 1}).of(x, 4, 5, 6).count(), 4);
        view.SetView({0, 0, 5, 1}, 0, 0, 50, 0);
        const double none = std::nan("");
        QCOMPARE(RowReach(view, {100, 80}, {none, none}).of(x, 4, 5, 6).count(), 4);
    }
};

QTEST_GUILESS_MAIN(TestRowReach)
#include "test_rowreach.moc"

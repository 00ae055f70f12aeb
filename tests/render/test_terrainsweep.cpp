#include "render/terrainsweep.h"

#include "base/pi.h"
#include "render/fastrun.h"
#include "render/plain/terrainsweep.h"
#include "render/plain/transformation.h"
#include "render/transformation.h"

#include <QSet>
#include <QTest>
#include <QtNumeric>

namespace {

using Run = FastRun;
using PlainRun = TestRun<plain::TerrainSweep, plain::Transformation>;

bool isOf(const QImage &picture, QRgb colour)
{
    QImage plainOne(picture.size(), QImage::Format_RGB32);
    plainOne.fill(colour);
    return picture == plainOne;
}

// The frame after so many rows of the mesh; -1 for all of them.
QImage frameAfter(Run &run, int rows, int *asked = nullptr)
{
    int count = 0;
    run.rowStarts = [&] { return count++ < rows || rows < 0; };
    const QImage frame = run.frame();
    if (asked)
        *asked = count;
    return frame;
}

} // namespace

class TestTerrainSweep : public QObject {
    Q_OBJECT

private slots:
    void limitsLeaveOutTheCellUnderTheObserver()
    {
        SweepLimits limits;
        limits.footMaxX = 64.0;
        limits.footMaxY = 48.0;
        limits.observer = {10.3, 20.6, 10.0, 1.0};
        limits.stepX = 1.0;
        limits.stepY = 1.0;
        limits.setLimits();
        limits.RoundTheLimits();
        QCOMPARE(limits.hiX[0], 9.0);
        QCOMPARE(limits.loX[1], 11.0);
        QCOMPARE(limits.hiX[3], 9.0);
        QCOMPARE(limits.loX[2], 11.0);
        QCOMPARE(limits.loY[0], 21.0);
        QCOMPARE(limits.hiY[3], 19.0);
        QCOMPARE(limits.loX[0], 0.0);
        QCOMPARE(limits.hiX[1], 64.0);
        QCOMPARE(limits.hiY[0], 48.0);
        QCOMPARE(limits.loY[2], 0.0);
    }

    void observerToTheWestLeavesTheEasternQuadrants()
    {
        TestScene scene;
        scene.position = {-30.0, 32.4, 20.0, 1.0};
        scene.direction = Pi / 2;
        scene.pitch = -0.3;
        Run run(scene);
        int rows = 0;
        frameAfter(run, -1, &rows);
        QCOMPARE(run.sweep.limits().footMinX, 0.0);
        QCOMPARE(run.sweep.limits().loX[0], 0.0);
        QCOMPARE(run.sweep.limits().loX[1], 0.0);
        // Rows of quadrants 1 and 2 and the one between them, and no other walk.
        const int expected =
            int(run.sweep.limits().hiY[1] - run.sweep.limits().loY[1]) + 1 +
            int(run.sweep.limits().hiY[2] - run.sweep.limits().loY[2]) + 1 + 1;
        QCOMPARE(rows, expected);
        QVERIFY(!isOf(run.target, scene.background));
    }

    // All corner rays go away from the terrain and upward: the box is the observer's
    // point, held within the terrain.
    void viewThatMissesEverythingKeepsTheObserversPoint()
    {
        TestScene scene;
        scene.position = {-20.0, 32.4, 30.0, 1.0};
        scene.direction = -Pi / 2 - 0.5; // west and a little south
        scene.pitch = 0.5;
        scene.focal = 5000.0;
        Run run(scene);
        (void)run.frame();
        QCOMPARE(run.sweep.limits().footMinX, 0.0);
        QCOMPARE(run.sweep.limits().footMaxX, 0.0);
        // The wall in the south is hit, far to the west.
        QCOMPARE(run.sweep.limits().footMinY, 0.0);
        QVERIFY(std::abs(run.sweep.limits().footMaxY - 32.4) < 1e-3);
        QVERIFY(isOf(run.frame(), scene.background));

        scene.position.y = -20.0;
        Run away(scene);
        (void)away.frame();
        QCOMPARE(away.sweep.limits().footMinY, 0.0);
        QCOMPARE(away.sweep.limits().footMaxY, 0.0);
    }

    void boxIsHeldWithinTheTerrain()
    {
        TestScene scene;
        scene.position = {1000.0, -500.0, 20.0, 1.0};
        Run run(scene);
        (void)run.frame();
        QCOMPARE(run.sweep.limits().footMaxX, 64.0);
        QCOMPARE(run.sweep.limits().footMinY, 0.0);
    }

    void thickDustLeavesTheBackground()
    {
        TestScene scene;
        scene.dustRange = 0.01;
        Run run(scene);
        QVERIFY(isOf(run.frame(), scene.background));
    }

    void backgroundIsTheColourOfFlatLand_data()
    {
        QTest::addColumn<C4Vector>("light");
        QTest::addColumn<QRgb>("colour");
        QTest::newRow("from above") << C4Vector{0, 0, -5, 0} << qRgb(255, 255, 255);
        QTest::newRow("slanting")
            << C4Vector{0, 3, -4, 0} << qRgb(204, 204, 204); // 204.8
        QTest::newRow("from below") << C4Vector{3, 0, 4, 0} << qRgb(204, 204, 204);
        QTest::newRow("none") << C4Vector{0, 0, 0, 0} << qRgb(0, 0, 0);
    }
    void backgroundIsTheColourOfFlatLand()
    {
        QFETCH(C4Vector, light);
        QFETCH(QRgb, colour);
        TestScene scene;
        scene.light = light;
        scene.useBackground = false;
        scene.dustRange = 0.01;
        Run run(scene);
        QVERIFY(isOf(run.frame(), colour));
    }

    // Seen from the south and low: a wall across the south, red as all land there, is
    // higher than what lies behind it, which is green, and than the sky.
    void nearHillHidesTheFarOne()
    {
        TestScene scene;
        scene.position = {32.3, -20.0, 6.0, 1.0};
        scene.pitch = 0.0;
        scene.background = 0xFF202020u;
        constexpr int Rows = 60; // below them is no land
        const auto frameOf = [&scene](bool walled) {
            Run run(scene);
            for (int y = 0; y < 64; ++y)
                for (int x = 0; x < 64; ++x)
                    run.texture.setPixel(x, y,
                                         y < 56 ? qRgb(0, 200, 0) : qRgb(200, 0, 0));
            for (int x = 0; walled && x < 64; ++x)
                run.elevation.setElevation(x, 60, 2000.0); // 20 units; others are below 8
            return run.frame();
        };
        const auto count = [](const QImage &frame, const auto &counts) {
            int pixels = 0;
            for (int y = 0; y < Rows; ++y)
                for (int x = 0; x < frame.width(); ++x)
                    pixels += counts(frame.pixel(x, y));
            return pixels;
        };
        const auto isGreen = [](QRgb p) { return qGreen(p) > qRed(p); };
        const auto isSky = [&](QRgb p) { return p == scene.background; };
        const QImage open = frameOf(false);
        QVERIFY(count(open, isGreen) > 400);
        QVERIFY(count(open, isSky) > 2000);
        // The ray of a pixel on an edge may pass its triangle and read a texel beyond.
        const QImage walled = frameOf(true);
        QVERIFY(count(walled, isGreen) < 5);
        QCOMPARE(count(walled, isSky), 0);
    }

    void outermostNormalsTilt()
    {
        // Flat land, but the stencil beyond the eastern edge reads 0.
        TestScene scene;
        scene.position = {32.3, 32.4, 90.0, 1.0};
        scene.pitch = -Pi / 2 + 0.01;
        scene.focal = 60.0;
        scene.light = {0.0, 0.0, -1.0, 0.0};
        Run run(scene);
        run.elevation.clear(0xFF000100u); // 256 steps, 2.56 units
        run.texture.fill(0xFFFFFFFFu);
        const QImage frame = run.frame();
        QCOMPARE(qRed(frame.pixel(48, 36)), qRed(frame.pixel(50, 30)));
        int darker = 0;
        for (int x = 48; x < frame.width(); ++x)
            darker += qRed(frame.pixel(x, 36)) < qRed(frame.pixel(48, 36)) - 20;
        QVERIFY(darker > 0);
    }

    void negativeHeightsGiveTheInvertedRelief()
    {
        TestScene scene;
        Run up(scene);
        up.frame();
        scene.zScale = -scene.zScale;
        Run down(scene);
        const QImage frame = down.frame();
        QVERIFY(!isOf(frame, scene.background));
        QCOMPARE(down.sweep.limits().loX, up.sweep.limits().loX);
        QCOMPARE(down.sweep.limits().hiY, up.sweep.limits().hiY);
    }

    void stopInTheSecondQuadrantLeavesTheFirstComplete()
    {
        TestScene scene;
        scene.position = {32.3, 20.4, 30.0, 1.0};
        Run measured(scene);
        measured.frame();
        const int rows0 =
            int(measured.sweep.limits().hiY[0] - measured.sweep.limits().loY[0]) + 1;
        QVERIFY(rows0 > 10);
        Run first(scene), partial(scene), whole(scene);
        const QImage quadrant0 = frameAfter(first, rows0);
        const QImage stopped = frameAfter(partial, rows0 + 5);
        const QImage complete = frameAfter(whole, -1);
        QVERIFY(!isOf(quadrant0, scene.background));
        QVERIFY(quadrant0 != stopped);
        QVERIFY(stopped != complete);
    }

    void stopAsksOncePerWalk()
    {
        TestScene scene;
        scene.position = {32.3, 20.4, 90.0, 1.0};
        scene.pitch = -Pi / 2 + 0.01; // straight down, so that all walks have rows
        Run run(scene);
        int asked = 0;
        const QImage frame = frameAfter(run, 0, &asked);
        QCOMPARE(asked, 8); // four quadrants, four strips
        QVERIFY(isOf(frame, scene.background));
    }

    void terrainWithoutExtentEndsAtOnce_data()
    {
        QTest::addColumn<double>("terrainX");
        QTest::addColumn<double>("cells");
        QTest::newRow("no extent") << 0.0 << 64.0;
        QTest::newRow("negative extent") << -64.0 << 64.0;
        QTest::newRow("infinite extent") << qInf() << 64.0;
        QTest::newRow("no number") << qQNaN() << 64.0;
        QTest::newRow("no cells") << 64.0 << 0.0;
    }
    void terrainWithoutExtentEndsAtOnce()
    {
        QFETCH(double, terrainX);
        QFETCH(double, cells);
        TestScene scene;
        scene.cellsX = cells;
        Run run(scene);
        run.setup.terrainX = terrainX;
        QVERIFY(isOf(run.frame(), scene.background));
    }

    void oddCamerasSeeWhatThePlainMethodSees_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<double>("focal");
        QTest::addColumn<double>("zScale");
        QTest::addColumn<bool>("nothing"); // but the background
        QTest::newRow("far away") << 1e300 << 100.0 << 0.01 << true;
        QTest::newRow("no number") << qQNaN() << 100.0 << 0.01 << true;
        QTest::newRow("no focal length") << 32.0 << 0.0 << 0.01 << false;
        QTest::newRow("negative focal length") << 32.0 << -100.0 << 0.01 << true;
        QTest::newRow("endless focal length") << 32.0 << 1e308 << 0.01 << true;
        QTest::newRow("endless heights") << 32.0 << 100.0 << 1e308 << false;
        QTest::newRow("heights of no number") << 32.0 << 100.0 << qQNaN() << false;
    }
    void oddCamerasSeeWhatThePlainMethodSees()
    {
        QFETCH(double, position);
        QFETCH(double, focal);
        QFETCH(double, zScale);
        TestScene scene;
        scene.position.x = position;
        scene.focal = focal;
        scene.zScale = zScale;
        for (scene.quality = 0; scene.quality < 2; ++scene.quality) {
            const QImage frame = Run(scene).frame();
            QVERIFY(frame == PlainRun(scene).frame());
            QTEST(isOf(frame, scene.background), "nothing");
        }
    }

    // Dust is told as a distance; the share of the land's own light falls with the
    // quotient of the two.
    void dustRangeOfNothingOrLess_data()
    {
        QTest::addColumn<double>("range");
        QTest::addColumn<bool>("hides");
        QTest::newRow("nothing") << 0.0 << true;
        QTest::newRow("next to nothing") << 1e-300 << true;
        QTest::newRow("below nothing") << -1.0 << false;
        QTest::newRow("a little below") << -1e-300 << false;
        QTest::newRow("no number") << qQNaN() << false;
        QTest::newRow("endless") << qInf() << false;
    }
    void dustRangeOfNothingOrLess()
    {
        QFETCH(double, range);
        QFETCH(bool, hides);
        TestScene scene;
        scene.dustRange = 1e300;
        const QImage clear = Run(scene).frame();
        QVERIFY(!isOf(clear, scene.background));
        scene.dustRange = range;
        const QImage frame = Run(scene).frame();
        QVERIFY(frame == PlainRun(scene).frame());
        QCOMPARE(isOf(frame, scene.background), hides);
        if (qIsInf(range))
            QVERIFY(frame == clear);
        // Whatever its colour, the land stands where it stands without dust.
        for (int y = 0; !hides && y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                QCOMPARE(frame.pixel(x, y) == scene.background,
                         clear.pixel(x, y) == scene.background);
    }

    // All corners of the only cell lie on the rim, where heights are 0: flat land, whose
    // light of (1, 1, -1) is 1 / sqrt(3), in dust of exp(-204.8 / 1000), 204.8 being the
    // way to its corner. So 0.47043 of a colour is left, and 27 are added.
    void oneCellIsEnough()
    {
        TestScene scene;
        scene.cellsX = 1.0;
        scene.cellsY = 1.0;
        scene.position = {32.3, 30.2, 200.0, 1.0};
        scene.pitch = -1.5;
        Run run(scene);
        run.texture.fill(qRgb(128, 192, 64));
        PlainRun judge(scene);
        judge.texture.fill(qRgb(128, 192, 64));
        const QImage frame = run.frame();
        QVERIFY(frame == judge.frame());
        QSet<QRgb> colours;
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                colours.insert(frame.pixel(x, y));
        // Beyond the texture land has its background colour, ff00ff.
        QCOMPARE(colours, (QSet<QRgb>{scene.background, qRgb(60 + 27, 90 + 27, 30 + 27),
                                      qRgb(119 + 27, 27, 119 + 27)}));
    }
};

QTEST_GUILESS_MAIN(TestTerrainSweep)
#include "test_terrainsweep.moc"

#include "render/terrainsweep.h"

#include "base/pi.h"
#include "render/testscene.h"
#include "render/transformation.h"

#include <QElapsedTimer>
#include <QTest>
#include <QtNumeric>

namespace {

using Run = TestRun<TerrainSweep, Transformation>;

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
    run.sweep.rowStarts = [&] { return count++ < rows || rows < 0; };
    const QImage frame = run.frame();
    if (asked)
        *asked = count;
    return frame;
}

void setLimits(TerrainSweep &sweep, double ox, double oy)
{
    sweep.sweepObserver = {ox, oy, 10.0, 1.0};
    sweep.stepX = 1.0;
    sweep.stepY = 1.0;
    sweep.setLimits();
    sweep.RoundTheLimits();
}

} // namespace

class TestTerrainSweep : public QObject {
    Q_OBJECT

private slots:
    void limitsLeaveOutTheCellUnderTheObserver()
    {
        TerrainSweep sweep;
        sweep.footMaxX = 64.0;
        sweep.footMaxY = 48.0;
        setLimits(sweep, 10.3, 20.6);
        QCOMPARE(sweep.hiX[0], 9.0);
        QCOMPARE(sweep.loX[1], 11.0);
        QCOMPARE(sweep.hiX[3], 9.0);
        QCOMPARE(sweep.loX[2], 11.0);
        QCOMPARE(sweep.loY[0], 21.0);
        QCOMPARE(sweep.hiY[3], 19.0);
        QCOMPARE(sweep.loX[0], 0.0);
        QCOMPARE(sweep.hiX[1], 64.0);
        QCOMPARE(sweep.hiY[0], 48.0);
        QCOMPARE(sweep.loY[2], 0.0);
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
        QCOMPARE(run.sweep.footMinX, 0.0);
        QCOMPARE(run.sweep.loX[0], 0.0);
        QCOMPARE(run.sweep.loX[1], 0.0);
        // Rows of quadrants 1 and 2 and the one between them, and no other walk.
        const int expected = int(run.sweep.hiY[1] - run.sweep.loY[1]) + 1 +
                             int(run.sweep.hiY[2] - run.sweep.loY[2]) + 1 + 1;
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
        run.sweep.sweepObserver = run.camera.Beobachter();
        run.sweep.ClipView();
        QCOMPARE(run.sweep.footMinX, 0.0);
        QCOMPARE(run.sweep.footMaxX, 0.0);
        // The wall in the south is hit, far to the west.
        QCOMPARE(run.sweep.footMinY, 0.0);
        QVERIFY(std::abs(run.sweep.footMaxY - 32.4) < 1e-3);
        QVERIFY(isOf(run.frame(), scene.background));

        scene.position.y = -20.0;
        Run away(scene);
        away.sweep.sweepObserver = away.camera.Beobachter();
        away.sweep.ClipView();
        QCOMPARE(away.sweep.footMinY, 0.0);
        QCOMPARE(away.sweep.footMaxY, 0.0);
    }

    void boxIsHeldWithinTheTerrain()
    {
        TestScene scene;
        scene.position = {1000.0, -500.0, 20.0, 1.0};
        Run run(scene);
        run.sweep.sweepObserver = run.camera.Beobachter();
        run.sweep.ClipView();
        QCOMPARE(run.sweep.footMaxX, 64.0);
        QCOMPARE(run.sweep.footMinY, 0.0);
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

    void nearHillHidesTheFarOne()
    {
        // Seen from the south and low, the first rows of the picture that show land
        // come from the far end; a wall in front covers all of it.
        TestScene scene;
        scene.position = {32.3, -20.0, 6.0, 1.0};
        scene.pitch = 0.0;
        Run open(scene);
        const QImage without = open.frame();
        Run walled(scene);
        for (int x = 0; x < 64; ++x)
            walled.elevation.setElevation(x, 60, 2000.0); // near the southern edge
        const QImage with = walled.frame();
        QVERIFY(without != with);
        const auto texel = [&](const QImage &image) { return image.pixel(48, 38); };
        QVERIFY(texel(without) != texel(with));
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
        QCOMPARE(down.sweep.loX, up.sweep.loX);
        QCOMPARE(down.sweep.hiY, up.sweep.hiY);
    }

    void stopInTheSecondQuadrantLeavesTheFirstComplete()
    {
        TestScene scene;
        scene.position = {32.3, 20.4, 30.0, 1.0};
        Run measured(scene);
        measured.frame();
        const int rows0 = int(measured.sweep.hiY[0] - measured.sweep.loY[0]) + 1;
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
        run.sweep.terrainX = terrainX;
        QVERIFY(isOf(run.frame(), scene.background));
    }

    void oddCamerasEndQuickly_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<double>("focal");
        QTest::addColumn<double>("zScale");
        QTest::newRow("far away") << 1e300 << 100.0 << 0.01;
        QTest::newRow("no number") << qQNaN() << 100.0 << 0.01;
        QTest::newRow("no focal length") << 32.0 << 0.0 << 0.01;
        QTest::newRow("negative focal length") << 32.0 << -100.0 << 0.01;
        QTest::newRow("endless focal length") << 32.0 << 1e308 << 0.01;
        QTest::newRow("endless heights") << 32.0 << 100.0 << 1e308;
        QTest::newRow("heights of no number") << 32.0 << 100.0 << qQNaN();
    }
    void oddCamerasEndQuickly()
    {
        QFETCH(double, position);
        QFETCH(double, focal);
        QFETCH(double, zScale);
        TestScene scene;
        scene.position.x = position;
        scene.focal = focal;
        scene.zScale = zScale;
        for (scene.quality = 0; scene.quality < 2; ++scene.quality) {
            Run run(scene);
            QElapsedTimer timer;
            timer.start();
            run.frame();
            QVERIFY(timer.elapsed() < 20000);
        }
    }

    void dustRangeOfNothingOrLessIsNoAccident()
    {
        for (const double range : {0.0, -1.0, -1e-300, qQNaN(), qInf()}) {
            TestScene scene;
            scene.dustRange = range;
            Run run(scene);
            run.frame();
        }
    }

    void oneCellIsEnough()
    {
        TestScene scene;
        scene.cellsX = 1.0;
        scene.cellsY = 1.0;
        scene.position = {32.3, 30.2, 200.0, 1.0};
        scene.pitch = -1.5;
        Run run(scene);
        run.frame();
    }
};

QTEST_GUILESS_MAIN(TestTerrainSweep)
#include "test_terrainsweep.moc"

// The renderer against the plain method: the same bytes, whatever the scene, the
// number of threads and the moment at which somebody looks.

#include "render/fastrun.h"
#include "render/plain/terrainsweep.h"
#include "render/plain/transformation.h"
#include "render/testscene.h"
#include "render/transformation.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

using PlainRun = TestRun<plain::TerrainSweep, plain::Transformation>;

TestScene randomScene(quint32 seed)
{
    QRandomGenerator random(seed);
    const auto between = [&](double low, double high) {
        return low + random.generateDouble() * (high - low);
    };
    TestScene scene;
    scene.terrainPixels = random.bounded(8, 90);
    scene.texturePixels = random.bounded(4, 90);
    scene.scaleX = random.bounded(2) ? 1.0 : between(0.3, 3.0);
    scene.scaleY = random.bounded(2) ? 1.0 : between(0.3, 3.0);
    scene.zScale = between(-0.02, 0.05);
    scene.cellsX = random.bounded(2) ? scene.terrainPixels : random.bounded(1, 120);
    scene.cellsY = random.bounded(2) ? scene.terrainPixels : random.bounded(1, 120);
    scene.width = random.bounded(1, 130);
    scene.height = random.bounded(1, 110);
    const double side = scene.terrainPixels;
    scene.position = {between(-0.5, 1.5) * side * scene.scaleX,
                      between(-0.5, 1.5) * side * scene.scaleY, between(2.0, 60.0), 1.0};
    scene.direction = between(-3.2, 3.2);
    scene.pitch = between(-1.5, 0.3);
    scene.focal = between(20.0, 300.0);
    scene.roll = random.bounded(2) ? 0.0 : between(-1.0, 1.0);
    scene.light = {between(-1.0, 1.0), between(-1.0, 1.0), between(-1.0, 0.2), 0.0};
    scene.dustRange = random.bounded(3) ? between(20.0, 500.0) : between(0.5, 20.0);
    scene.quality = random.bounded(2);
    scene.useBackground = random.bounded(2) == 0;
    return scene;
}

} // namespace

class TestSameBytes : public QObject {
    Q_OBJECT

private slots:
    void wholeFrames()
    {
        int withTerrain = 0;
        for (quint32 seed = 1; seed <= 160; ++seed) {
            const TestScene scene = randomScene(seed);
            PlainRun judge(scene);
            const QImage expected = judge.frame();
            QImage background(scene.width, scene.height, QImage::Format_RGB32);
            background.fill(expected.pixel(0, 0));
            withTerrain += expected != background;
            for (const int threads : {1, 2, 3}) {
                for (const bool seenWholeOnly : {false, true}) {
                    FastRun run(scene);
                    run.setup.threads = threads;
                    run.setup.seenWholeOnly = seenWholeOnly;
                    QVERIFY2(run.frame() == expected,
                             qPrintable(QStringLiteral("scene %1, %2 threads, %3")
                                            .arg(seed)
                                            .arg(threads)
                                            .arg(seenWholeOnly)));
                }
            }
        }
        // Scenes that show nothing but the background would prove little.
        QVERIFY2(withTerrain >= 30, qPrintable(QString::number(withTerrain)));
    }

    void stoppedFrames()
    {
        for (quint32 seed = 101; seed <= 130; ++seed) {
            const TestScene scene = randomScene(seed);
            for (const int rows : {0, 1, 5, 23, 60}) {
                int left = rows;
                const auto untilThen = [&] { return left-- > 0; };
                PlainRun judge(scene);
                judge.sweep.rowStarts = untilThen;
                const QImage expected = judge.frame();
                left = rows;
                FastRun run(scene);
                run.setup.threads = 1 + int(seed % 3);
                run.rowStarts = untilThen;
                QVERIFY2(
                    run.frame() == expected,
                    qPrintable(QStringLiteral("scene %1, %2 rows").arg(seed).arg(rows)));
            }
        }
    }

    void refreshesInMidFrame()
    {
        for (quint32 seed = 201; seed <= 220; ++seed) {
            const TestScene scene = randomScene(seed);
            QList<QImage> expected;
            PlainRun judge(scene);
            int row = 0;
            judge.sweep.rowStarts = [&] {
                if (row++ % 9 == 4)
                    expected.append(judge.target.copy());
                return true;
            };
            expected.append(judge.frame());

            QList<QImage> seen;
            FastRun run(scene);
            run.setup.threads = 1 + int(seed % 3);
            row = 0;
            run.rowStarts = [&] {
                if (row++ % 9 == 4) {
                    run.sweep.showable();
                    seen.append(run.target.copy());
                }
                return true;
            };
            seen.append(run.frame());
            QCOMPARE(seen.size(), expected.size());
            QVERIFY2(seen == expected, qPrintable(QString::number(seed)));
        }
    }

    // Each frame begins afresh, whatever stood in the target.
    void oneFrameAfterTheOther()
    {
        TestScene scene;
        FastRun run(scene);
        const QImage first = run.frame();
        run.look({10.0, 70.0, 20.0, 1.0}, 2.5, -0.4, 90.0, 0.1);
        const QImage second = run.frame();
        QVERIFY(first != second);
        run.look(scene.position, scene.direction, scene.pitch, scene.focal, scene.roll);
        QVERIFY(run.frame() == first);
    }

    // More mesh than is kept at a time: colours come in between.
    void meshOfManyCells()
    {
        TestScene scene;
        scene.terrainPixels = 70;
        scene.cellsX = 1300;
        scene.cellsY = 1100;
        PlainRun judge(scene);
        FastRun run(scene);
        run.setup.threads = 2;
        QVERIFY(run.frame() == judge.frame());
    }

    // More pixels than wait for the end: colours come in between here too, whether the
    // frame ends or is stopped.
    void pictureOfManyPixels()
    {
        TestScene scene;
        scene.width = 900;
        scene.height = 700;
        scene.focal = 800.0;
        scene.quality = 1;
        scene.position = {32.3, 2.0, 25.0, 1.0};
        for (const int rows : {40, 1000}) {
            int left = rows;
            const auto untilThen = [&] { return left-- > 0; };
            PlainRun judge(scene);
            judge.sweep.rowStarts = untilThen;
            const QImage expected = judge.frame();
            for (const int threads : {1, 3}) {
                left = rows;
                FastRun run(scene);
                run.setup.threads = threads;
                run.rowStarts = untilThen;
                QVERIFY(run.frame() == expected);
            }
        }
    }

    // While files are written, a frame is drawn on fewer threads.
    void coresThatOthersTake()
    {
        const TestScene scene;
        PlainRun judge(scene);
        FastRun run(scene);
        run.setup.threads = 3;
        int asked = 0;
        run.setup.coresTaken = [&] { return asked++ % 6; };
        QVERIFY(run.frame() == judge.frame());
        QVERIFY(asked > 0);
    }

    void aRunMayEndBetweenFrames()
    {
        const TestScene scene;
        FastRun run(scene);
        run.setup.threads = 2;
        const QImage first = run.frame();
        run.sweep.endOfRun();
        run.sweep.showable(); // nothing is left to show
        run.setup.threads = 3;
        QVERIFY(run.frame() == first);
    }

    void texturesOfOtherFormats()
    {
        for (const QImage::Format format :
             {QImage::Format_RGB888, QImage::Format_ARGB32, QImage::Format_Indexed8}) {
            TestScene scene;
            scene.quality = 1;
            PlainRun judge(scene);
            FastRun run(scene);
            QImage other = judge.texture.convertToFormat(format);
            TextureImage texture(other.bits(), other.width(), other.height(),
                                 other.bytesPerLine(), format);
            texture.setColorTable(other.colorTable());
            judge.camera.SetzeTexturDatei(&texture);
            judge.sweep.Scan(&texture, true, 0xFF000000u, 1);
            run.setup.texture = &texture;
            run.setup.background = 0xFF000000u;
            (void)run.frame();
            QVERIFY(QImage(run.target) == QImage(judge.target));
        }
    }
};

QTEST_GUILESS_MAIN(TestSameBytes)
#include "test_samebytes.moc"

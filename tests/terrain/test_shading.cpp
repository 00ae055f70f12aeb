#include "base/workerpool.h"
#include "terrain/madeterrain.h"
#include "terrain/rowwork.h"
#include "terrain/shading.h"
#include "terrain/stopsat.h"

#include <QTest>

#include <cmath>

/// Light on ground: its law, its shadows, its sky, and that threads do not change it.
class TestShading : public QObject {
    Q_OBJECT

private slots:
    void flatGroundIsAsBrightAsTheSunIsHigh_data();
    void flatGroundIsAsBrightAsTheSunIsHigh();
    void slopesFollowLambert();
    void shadowsReachAsFarAsTheSunAllows_data();
    void shadowsReachAsFarAsTheSunAllows();
    void shadowsOfOtherDirectionsAreThoseOfTurnedGround();
    void skyOfAnOpenSlope();
    void skyOfAPitIsDark();
    void threadsChangeNothing();
    void aStopEndsIt();
    void tinyGroundIsLit_data();
    void tinyGroundIsLit();

private:
    static TextureRequest request(BakedLight light, double azimuth, double height)
    {
        TextureRequest wanted;
        wanted.light = light;
        wanted.sunAzimuth = azimuth;
        wanted.sunHeight = height;
        return wanted;
    }
    static LightMap lit(const Heights &heights, const TextureRequest &wanted,
                        double cell = 10.0, int threads = 2)
    {
        WorkerPool pool(threads);
        NoProgress progress;
        return bakeLight({heights, cell, cell}, wanted, pool, Stretch{progress}).value();
    }
    static Heights rough(int width, int height)
    {
        return madeHeights({width, height}, [](int x, int y) {
            return 40.0 * std::sin(x * 0.31) * std::cos(y * 0.23) + (x * 7 + y * 13) % 11;
        });
    }
};

void TestShading::flatGroundIsAsBrightAsTheSunIsHigh_data()
{
    QTest::addColumn<double>("height");
    QTest::addColumn<double>("expected");
    QTest::newRow("overhead") << 90.0 << 1.0;
    QTest::newRow("usual") << 40.0 << 1.0;
    QTest::newRow("low") << 10.0 << 0.3 + 0.7 * std::sin(M_PI / 18) / std::sin(M_PI / 9);
    QTest::newRow("below the horizon") << -5.0 << 0.3;
}

void TestShading::flatGroundIsAsBrightAsTheSunIsHigh()
{
    QFETCH(double, height);
    QFETCH(double, expected);
    const Heights flat = madeHeights({40, 30}, [](int, int) { return 123.0; });
    for (const BakedLight light :
         {BakedLight::Sun, BakedLight::Shadow, BakedLight::Sky}) {
        const LightMap map = lit(flat, request(light, 225.0, height));
        for (const float value : map.light)
            QVERIFY2(std::abs(value - expected) < 2e-4,
                     qPrintable(QString::number(value)));
    }
}

void TestShading::slopesFollowLambert()
{
    // Ground that rises to the east by 1 in 2, the sun in the west at 30 degrees.
    const Heights slope = madeHeights({20, 20}, [](int x, int) { return x * 5.0; });
    const LightMap map = lit(slope, request(BakedLight::Sun, 270.0, 30.0));
    const double angle = std::atan(0.5) + M_PI / 6;
    const double full = 0.3 + 0.7 * std::sin(angle) / 0.5;
    const double expected = 1.0 + (full - 1.0) / 2.0;
    for (const float value : map.light)
        QVERIFY(std::abs(value - expected) < 1e-4);
    const LightMap turned = lit(slope, request(BakedLight::Sun, 90.0, 20.0));
    for (const float value : turned.light)
        QVERIFY(std::abs(value - 0.3) < 1e-6);
}

void TestShading::shadowsReachAsFarAsTheSunAllows_data()
{
    QTest::addColumn<double>("azimuth");
    QTest::addColumn<QPoint>("away");
    QTest::newRow("sun in the west") << 270.0 << QPoint(1, 0);
    QTest::newRow("sun in the east") << 90.0 << QPoint(-1, 0);
    QTest::newRow("sun in the north") << 0.0 << QPoint(0, 1);
    QTest::newRow("sun in the south") << 180.0 << QPoint(0, -1);
    QTest::newRow("sun in the south-west") << 225.0 << QPoint(1, -1);
    QTest::newRow("sun in the north-west") << 315.0 << QPoint(1, 1);
}

// A tower of 300 m, cells of 10 m, the sun at 45 degrees: 30 cells of shadow.
void TestShading::shadowsReachAsFarAsTheSunAllows()
{
    QFETCH(double, azimuth);
    QFETCH(QPoint, away);
    const QPoint tower(50, 50);
    const Heights heights = madeHeights({101, 101}, [&](int x, int y) {
        return std::abs(x - 50) < 2 && std::abs(y - 50) < 2 ? 300.0 : 0.0;
    });
    const LightMap map = lit(heights, request(BakedLight::Shadow, azimuth, 45.0));
    const double cells = 30.0 / std::hypot(away.x(), away.y());
    for (int i = 3; i < 48; ++i) {
        if (std::abs(i - cells) < 3.0)
            continue;
        const QPoint place = tower + away * i;
        const float light = map.row(place.y())[place.x()];
        QVERIFY2(i < cells ? light < 0.31f : light > 0.9f,
                 qPrintable(QStringLiteral("%1: %2").arg(i).arg(light)));
        const QPoint before = tower - away * i;
        QVERIFY(map.row(before.y())[before.x()] > 0.9f);
    }
}

void TestShading::shadowsOfOtherDirectionsAreThoseOfTurnedGround()
{
    const Heights ground = madeHeights({60, 60}, [](int x, int y) {
        return 40.0 * std::sin(x * 0.21) * std::cos(y * 0.17) + 0.3 * x - 0.7 * y;
    });
    const Heights turned =
        madeHeights({60, 60}, [&](int x, int y) { return ground.row(59 - x)[y]; });
    for (const double azimuth : {20.0, 60.0, 100.0, 200.0, 290.0, 345.0}) {
        const LightMap a = lit(ground, request(BakedLight::Shadow, azimuth, 15.0));
        const LightMap b = lit(turned, request(BakedLight::Shadow, azimuth + 90.0, 15.0));
        int differing = 0;
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 60; ++x)
                if (std::abs(b.row(y)[x] - a.row(59 - x)[y]) > 0.02f)
                    ++differing;
        // Shadows end between cells, which the two count from other sides.
        QVERIFY2(differing < 180, qPrintable(QString::number(differing)));
    }
}

void TestShading::skyOfAnOpenSlope()
{
    // A ramp that nothing stands around: the sky over its plane.
    const Heights slope = madeHeights({60, 60}, [](int, int y) { return y * 10.0; });
    const LightMap map = lit(slope, request(BakedLight::Sky, 0.0, -1.0));
    const double expected = 0.3 * (1.0 + std::cos(M_PI / 4)) / 2;
    QVERIFY(std::abs(map.row(30)[30] - expected) < 0.004);
}

void TestShading::skyOfAPitIsDark()
{
    const Heights pit = madeHeights({61, 61}, [](int x, int y) {
        return std::hypot(x - 30, y - 30) < 5.5 ? 0.0 : 100.0;
    });
    const LightMap map = lit(pit, request(BakedLight::Sky, 0.0, -1.0));
    // The walls stand 60 degrees high: a quarter of the sky.
    const float middle = map.row(30)[30] / 0.3f;
    QVERIFY2(middle > 0.2f && middle < 0.33f, qPrintable(QString::number(middle)));
    QVERIFY(map.row(5)[5] > 0.29f);
}

void TestShading::threadsChangeNothing()
{
    const Heights ground = rough(333, 217);
    const TextureRequest wanted = request(BakedLight::Sky, 240.0, 25.0);
    const LightMap one = lit(ground, wanted, 10.0, 1);
    for (const int threads : {2, 3, 8})
        QVERIFY(lit(ground, wanted, 10.0, threads).light == one.light);
}

void TestShading::aStopEndsIt()
{
    const Heights ground = rough(500, 400);
    for (const int question : {0, 1, 7, 40}) {
        WorkerPool pool(2);
        StopsAt progress(question);
        const Result<LightMap> map =
            bakeLight({ground, 10.0, 10.0}, request(BakedLight::Sky, 225.0, 40.0), pool,
                      Stretch{progress});
        if (!progress.wasAsked()) {
            QVERIFY(question > 0 && map);
            break;
        }
        QVERIFY(!map);
        QVERIFY(map.error().stopped);
    }
}

void TestShading::tinyGroundIsLit_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("a cell") << QSize(1, 1);
    QTest::newRow("a row") << QSize(9, 1);
    QTest::newRow("a column") << QSize(1, 9);
    QTest::newRow("four") << QSize(2, 2);
}

void TestShading::tinyGroundIsLit()
{
    QFETCH(QSize, size);
    const Heights ground =
        madeHeights(size, [](int x, int y) { return double(x * 3 + y); });
    for (const double azimuth : {0.0, 33.0, 90.0, 225.0, 359.0})
        for (const float value :
             lit(ground, request(BakedLight::Sky, azimuth, 40.0)).light)
            QVERIFY(value > 0.1f && value < 2.0f);
}

QTEST_APPLESS_MAIN(TestShading)
#include "test_shading.moc"

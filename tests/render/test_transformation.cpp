#include "render/transformation.h"

#include "base/pi.h"
#include "base/vectormath.h"

#include <QSettings>
#include <QTest>

#include <cmath>

namespace {

constexpr double Focal = 500.0;
const C4Vector Observer{100.0, 200.0, 50.0, 1.0};

void storeQuarter(int value)
{
    QSettings settings(QStringLiteral("Zephrant"), QString());
    settings.setValue(QStringLiteral("Settings/Quarter"), value);
}

Transformation cameraOf(double direction, double pitch, double roll, int width = 640,
                        int height = 480)
{
    Transformation camera(nullptr, {0.0, 0.0, -1.0, 0.0}, width, height);
    camera.SetView(Observer, direction, pitch, Focal, roll);
    return camera;
}

// Screen position before it is cut to whole numbers.
C2Vector projected(const Transformation &camera, const C4Vector &point)
{
    const C4Vector s = point * camera.projection();
    return {s.x / s.w, -s.y / s.w};
}

C4Vector beside(double east, double north, double up)
{
    return {Observer.x + east, Observer.y + north, Observer.z + up, 1.0};
}

bool near(double a, double b, double allowed = 0.01) { return std::abs(a - b) < allowed; }

} // namespace

class TestTransformation : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QSettings(QStringLiteral("Zephrant"), QString()).clear(); }

    void pointsLandWhereTheAnglesSay_data()
    {
        QTest::addColumn<double>("direction");
        QTest::addColumn<double>("pitch");
        QTest::addColumn<double>("roll");
        QTest::addColumn<double>("east");
        QTest::addColumn<double>("north");
        QTest::addColumn<double>("up");
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("row");
        QTest::newRow("ahead") << 0.0 << 0.0 << 0.0 << 0.0 << 10.0 << 0.0 << 320.0
                               << 240.0;
        QTest::newRow("to the right")
            << 0.0 << 0.0 << 0.0 << 1.0 << 10.0 << 0.0 << 370.0 << 240.0;
        QTest::newRow("above") << 0.0 << 0.0 << 0.0 << 0.0 << 10.0 << 1.0 << 320.0
                               << 190.0;
        QTest::newRow("looking east")
            << Pi / 2 << 0.0 << 0.0 << 10.0 << -1.0 << 0.0 << 370.0 << 240.0;
        QTest::newRow("looking down at 45 degrees")
            << 0.0 << -Pi / 4 << 0.0 << 0.0 << 10.0 << -10.0 << 320.0 << 240.0;
        QTest::newRow("rolled, the right goes straight up")
            << 0.0 << 0.0 << Pi / 2 << 1.0 << 10.0 << 0.0 << 320.0 << 190.0;
        QTest::newRow("rolled, above goes to the left")
            << 0.0 << 0.0 << Pi / 2 << 0.0 << 10.0 << 1.0 << 270.0 << 240.0;
    }
    void pointsLandWhereTheAnglesSay()
    {
        QFETCH(double, direction);
        QFETCH(double, pitch);
        QFETCH(double, roll);
        QFETCH(double, east);
        QFETCH(double, north);
        QFETCH(double, up);
        QFETCH(double, x);
        QFETCH(double, row);
        const Transformation camera = cameraOf(direction, pitch, roll);
        const C2Vector screen = projected(camera, beside(east, north, up));
        QVERIFY2(near(screen.x, x), qPrintable(QString::number(screen.x)));
        QVERIFY2(near(screen.y, row), qPrintable(QString::number(screen.y)));
    }

    // Casting a ray undoes the projection, whatever the camera.
    void raysUndoTheProjection()
    {
        for (const double direction : {0.0, 0.7, 2.5, -1.2}) {
            for (const double pitch : {0.0, -0.6, 0.9}) {
                for (const double roll : {0.0, 0.4, -2.0}) {
                    const Transformation camera = cameraOf(direction, pitch, roll);
                    const PixelRay d = camera.ray(17.25, 400.0);
                    const C4Vector o = camera.Beobachter();
                    const C2Vector screen = projected(
                        camera, {o.x + 0.3 * d.x, o.y + 0.3 * d.y, o.z + 0.3 * d.z, 1.0});
                    QVERIFY(near(screen.x, 17.25, 1e-3));
                    QVERIFY(near(screen.y, 400.0, 1e-3));
                }
            }
        }
    }

    void offsetsKeepTheViewOffTheAxes()
    {
        const Transformation camera = cameraOf(0.0, 0.0, 0.0);
        QCOMPARE(camera.Beobachter().x, Observer.x + 1e-5);
        QCOMPARE(camera.Beobachter().y, Observer.y + 1e-5);
        QCOMPARE(camera.Beobachter().z, Observer.z + 1e-5);
        QCOMPARE(camera.Sichtvektor().x, 1e-5);
        QCOMPARE(camera.Sichtvektor().y, Focal + 1e-5);
        QCOMPARE(camera.Sichtvektor().w, 0.0);
        QCOMPARE(camera.Blickrichtung(), 0.0);
    }

    void axesAreUnitVectorsAcrossTheView()
    {
        for (const double pitch : {0.0, -1.3, Pi / 2, -Pi / 2}) {
            const Transformation camera = cameraOf(0.3, pitch, 0.0);
            const C4Vector view = camera.Sichtvektor();
            for (const C4Vector &axis : {camera.rightAxis(), camera.upAxis()}) {
                QVERIFY(near(length(axis), 1.0, 1e-12));
                const double along = axis.x * view.x + axis.y * view.y + axis.z * view.z;
                QVERIFY(near(along, 0.0, 1e-9));
            }
            QCOMPARE(camera.rightAxis().z, 0.0);
        }
    }

    void lightIsScaledToUnitLength()
    {
        const Transformation camera(nullptr, {0.0, 3.0, -4.0, 0.0}, 10, 10);
        QCOMPARE(camera.light().y, 0.6);
        QCOMPARE(camera.light().z, -0.8);
        const Transformation dark(nullptr, {0.0, 0.0, 0.0, 0.0}, 10, 10);
        QCOMPARE(length(dark.light()), 0.0);
    }

    void screenPositionsAreCutToWhole()
    {
        const Transformation camera = cameraOf(0.0, 0.0, 0.0);
        C4Vector screen;
        const C4Vector point = beside(1.01, 10.0, 0.01); // 370.5, 239.5
        QCOMPARE(camera.Bildschirmpunkt(&point, &screen), 0);
        QCOMPARE(screen.x, 370.0);
        QCOMPARE(screen.y, 239.0);
    }

    void pointsBehindOrFarAsideHaveNoPosition()
    {
        const Transformation camera = cameraOf(0.0, 0.0, 0.0);
        C4Vector screen;
        const C4Vector behind = beside(0.0, -10.0, 0.0);
        QCOMPARE(camera.Bildschirmpunkt(&behind, &screen), 1);
        const C4Vector aside = beside(400.0, 10.0, 0.0); // 20320
        QCOMPARE(camera.Bildschirmpunkt(&aside, &screen), 1);
    }

    // A light vector of none makes no difference; the observer at the origin less its
    // offset makes the products exact.
    void limitOfThePositionsIsAccepted()
    {
        Transformation camera(nullptr, {0.0, 0.0, -1.0, 0.0}, 0, 0);
        camera.SetView({-1e-5, -1e-5, -1e-5, 1.0}, 0.0, 0.0, 16384.0, 0.0);
        C4Vector screen;
        const C4Vector on{1.0, 1.0, 0.0, 1.0};
        QCOMPARE(camera.Bildschirmpunkt(&on, &screen), 0);
        QCOMPARE(screen.x, 16384.0);
        const C4Vector beyond{1.0 + 1.0 / 16384, 1.0, 0.0, 1.0};
        QCOMPARE(camera.Bildschirmpunkt(&beyond, &screen), 1);
    }

    void depthOfNothingCountsAsTheSmallestDepth()
    {
        Transformation camera(nullptr, {0.0, 0.0, -1.0, 0.0}, 640, 480);
        camera.SetView({-1e-5, -1e-5, -1e-5, 1.0}, 0.0, 0.0, Focal, 0.0);
        C4Vector screen;
        const C4Vector observer{0.0, 0.0, 0.0, 1.0};
        QCOMPARE(camera.Bildschirmpunkt(&observer, &screen), 0);
        QCOMPARE(screen.w, 1e-18);
        const C4Vector aside{1.0, 0.0, 0.0, 1.0};
        QCOMPARE(camera.Bildschirmpunkt(&aside, &screen), 1);
    }

    void quartersMoveTheCentreAndDoubleTheFocalLength_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("quarter");
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("row");
        QTest::newRow("whole") << 0 << 0 << 320.0 << 240.0;
        QTest::newRow("upper left") << 1 << 1 << 640.0 << 480.0;
        QTest::newRow("upper right") << 2 << 2 << 0.0 << 480.0;
        QTest::newRow("lower left") << 3 << 3 << 640.0 << 0.0;
        QTest::newRow("lower right") << 4 << 4 << 0.0 << 0.0;
        QTest::newRow("beyond") << 5 << 0 << 320.0 << 240.0;
        QTest::newRow("negative") << -1 << 0 << 320.0 << 240.0;
    }
    void quartersMoveTheCentreAndDoubleTheFocalLength()
    {
        QFETCH(int, stored);
        QFETCH(int, quarter);
        QFETCH(double, x);
        QFETCH(double, row);
        storeQuarter(stored);
        const Transformation camera = cameraOf(0.0, 0.0, 0.0);
        QCOMPARE(camera.quarter(), quarter);
        const C2Vector centre = projected(camera, beside(0.0, 10.0, 0.0));
        QVERIFY(near(centre.x, x));
        QVERIFY(near(centre.y, row));
        const double focal = quarter == 0 ? Focal : 2 * Focal;
        const C2Vector right = projected(camera, beside(1.0, 10.0, 0.0));
        QVERIFY(near(right.x, x + focal / 10));
    }

    void rayMeetsAPlane()
    {
        Transformation camera = cameraOf(0.0, -Pi / 4, 0.0);
        C4Vector ground[3] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}};
        C4Vector point;
        // 50 up and looking down at 45 degrees: 50 ahead.
        QVERIFY(camera.PunktImDreieck(320, 240, ground, &point) > 0.0);
        QVERIFY(near(point.x, Observer.x, 1e-3));
        QVERIFY(near(point.y, Observer.y + 50.0, 1e-3));
        QVERIFY(near(point.z, 0.0, 1e-6));
        C4Vector above[3] = {{0, 0, 99, 1}, {1, 0, 99, 1}, {0, 1, 99, 1}};
        QVERIFY(camera.PunktImDreieck(320, 240, above, &point) < 0.0);
    }

    void setViewReplacesTheWholeCamera()
    {
        Transformation camera = cameraOf(1.0, -0.5, 0.3);
        camera.SetView(Observer, 0.2, 0.1, 123.0, -0.4);
        Transformation fresh(nullptr, {0.0, 0.0, -1.0, 0.0}, 640, 480);
        fresh.SetView(Observer, 0.2, 0.1, 123.0, -0.4);
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                QCOMPARE(camera.projection().m[r][c], fresh.projection().m[r][c]);
        QCOMPARE(camera.upAxis().y, fresh.upAxis().y);
    }
};

QTEST_GUILESS_MAIN(TestTransformation)
#include "test_transformation.moc"

#include "base/framecamera.h"
#include "base/pi.h"
#include "base/workerpool.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"
#include "render/framesetup.h"
#include "render/terrainsweep.h"
#include "render/transformation.h"
#include "terrain/elevationpicture.h"
#include "terrain/madeterrain.h"
#include "terrain/rowwork.h"
#include "terrain/stopsat.h"
#include "terrain/terrainscenery.h"

#include <QTest>

#include <cmath>

/// The scenery that a terrain begins with: its scales, its mesh and its camera.
class TestTerrainScenery : public QObject {
    Q_OBJECT

private slots:
    void scalesAreTrue_data();
    void scalesAreTrue();
    void meshIsAsFineAsTheElevation_data();
    void meshIsAsFineAsTheElevation();
    void namesAreRelativeAndSafe();
    void everyColumnShowsTerrain_data();
    void everyColumnShowsTerrain();
    void voidsStayOutOfTheLowestRow_data();
    void voidsStayOutOfTheLowestRow();
    void cameraStaysOnTheLineOfSight();
    void aStopEndsTheSearch();

private:
    static SceneryDocument made(const TerrainScene &scene, const QImage &heights)
    {
        NoProgress progress;
        return sceneryOf(scene, heights, {}, progress).value();
    }
    static QImage picture(const Heights &heights, double unit)
    {
        WorkerPool pool(2);
        NoProgress progress;
        return elevationPicture(heights, unit, pool, Stretch{progress})->image;
    }
    static TerrainScene sceneOf(const QSize &elevation, double cell)
    {
        TerrainScene scene;
        scene.name = "x";
        scene.elevation = elevation;
        scene.texture = elevation;
        scene.cellX = cell;
        scene.cellY = cell;
        scene.unit = unitFor(cell, 1.0);
        return scene;
    }
    // The frame, without light and shade.
    static QImage drawn(const SceneryData &data, const QImage &heights,
                        const QImage &texture);
    // White on black.
    static QImage drawn(const SceneryData &data, const QImage &heights,
                        const QSize &texture)
    {
        QImage white(texture, QImage::Format_RGB32);
        white.fill(Qt::white);
        return drawn(data, heights, white);
    }
};

QImage TestTerrainScenery::drawn(const SceneryData &data, const QImage &heights,
                                 const QImage &texture)
{
    const QSize frame(data.AusBreite, data.AusHoehe);
    TextureImage white(texture.size(), QImage::Format_RGB32);
    static_cast<QImage &>(white) = texture;
    white.setBackgroundColor(0xFFFFFFFFu);
    // Scales come with a file alone.
    ElevationImage stretched("", data.HDateiSkalaX, data.HDateiSkalaY, nullptr);
    static_cast<QImage &>(stretched) = heights;
    TextureImage target(frame, QImage::Format_RGB32);
    const C4Vector light{0.0, 0.0, -1.0, 0.0};
    Transformation view(nullptr, light, frame.width(), frame.height());
    view.SetzeTexturDatei(&white);
    FrameSetup setup;
    setup.target = &target;
    setup.texture = &white;
    setup.elevation = &stretched;
    setup.view = &view;
    setup.light = light;
    setup.meshCellsX = data.AusAuflX;
    setup.meshCellsY = data.AusAuflY;
    setup.terrainX = heights.width() * data.HDateiSkalaX;
    setup.terrainY = heights.height() * data.HDateiSkalaY;
    setup.quality = data.GenauRechnen;
    setup.useBackground = true;
    setup.background = 0xFF123456u;
    const double turn = Pi / 180.0;
    FrameCamera camera;
    camera.position = {data.BeobXA, data.BeobYA, data.BeobZA, 1.0};
    camera.direction = data.RichtungA * turn;
    camera.pitch = data.NeigungA * turn;
    camera.focal = data.BrennA;
    camera.zScale = data.HDateiSkalaZA;
    camera.dustRange = data.NebelA;
    NoProgress progress;
    TerrainSweep sweep;
    sweep.renderFrame(setup, camera, progress);
    sweep.showable();
    return target.copy();
}

void TestTerrainScenery::scalesAreTrue_data()
{
    QTest::addColumn<QSize>("elevation");
    QTest::addColumn<double>("cellX");
    QTest::addColumn<double>("cellY");
    QTest::addColumn<QSize>("texture");
    QTest::addColumn<double>("exaggeration");
    QTest::newRow("square cells")
        << QSize(400, 300) << 30.0 << 30.0 << QSize(400, 300) << 1.0;
    QTest::newRow("exaggerated")
        << QSize(400, 300) << 30.0 << 30.0 << QSize(400, 300) << 2.5;
    QTest::newRow("degrees in the north")
        << QSize(600, 300) << 15.0 << 30.0 << QSize(600, 600) << 1.0;
    QTest::newRow("a larger texture")
        << QSize(100, 50) << 90.0 << 90.0 << QSize(800, 400) << 1.0;
}

void TestTerrainScenery::scalesAreTrue()
{
    QFETCH(QSize, elevation);
    QFETCH(double, cellX);
    QFETCH(double, cellY);
    QFETCH(QSize, texture);
    QFETCH(double, exaggeration);
    if (texture.width() < 800)
        QCOMPARE(squareTexture(elevation, cellX, cellY, 8192), texture);
    TerrainScene scene = sceneOf(elevation, cellX);
    scene.texture = texture;
    scene.cellY = cellY;
    scene.exaggeration = exaggeration;
    const QImage heights = picture(
        madeHeights(elevation, [](int x, int y) { return x + 0.5 * y; }), scene.unit);
    const SceneryDocument document = made(scene, heights);
    const SceneryData &data = document.parameters;
    const double perUnit = document.extras.MetresPerUnit;
    const auto isNear = [](double a, double b) { return std::abs(a - b) <= 1e-5 * b; };
    // A cell of the elevation file is as long in the world as on the earth.
    QVERIFY(isNear(data.HDateiSkalaX * perUnit, cellX));
    QVERIFY(isNear(data.HDateiSkalaY * perUnit, cellY));
    // So is a unit of its heights, to the six decimals of the form.
    const double zScale = scene.unit / perUnit * exaggeration;
    QVERIFY(std::abs(data.HDateiSkalaZA - zScale) <= 0.5001e-6);
    QCOMPARE(data.HDateiSkalaZE, data.HDateiSkalaZA);
    QVERIFY(data.HDateiSkalaZA >= 0.00005);
}

void TestTerrainScenery::meshIsAsFineAsTheElevation_data()
{
    QTest::addColumn<QSize>("elevation");
    QTest::addColumn<QSize>("mesh");
    QTest::newRow("a cell") << QSize(1, 1) << QSize(2, 2);
    QTest::newRow("usual") << QSize(327, 468) << QSize(327, 468);
    QTest::newRow("wide") << QSize(2000, 3) << QSize(1024, 3);
}

void TestTerrainScenery::meshIsAsFineAsTheElevation()
{
    QFETCH(QSize, elevation);
    QFETCH(QSize, mesh);
    const QImage heights =
        picture(madeHeights(elevation, [](int, int) { return 1.0; }), 0.01);
    const SceneryData data = made(sceneOf(elevation, 30.0), heights).parameters;
    QCOMPARE(QSize(data.AusAuflX, data.AusAuflY), mesh);
    QCOMPARE(QSize(data.AusBreite, data.AusHoehe), QSize(1280, 960));
    QCOMPARE(data.GenauRechnen, 1);
    QVERIFY(data.HintergrundVerwenden);
    QVERIFY(qBlue(data.Hintergrund) > qRed(data.Hintergrund));
    // From the south-west, downward.
    QVERIFY(data.LichtX > 0.0 && data.LichtX == data.LichtY && data.LichtZ < 0.0);
}

void TestTerrainScenery::namesAreRelativeAndSafe()
{
    TerrainScene scene = sceneOf({10, 10}, 30.0);
    scene.name = "100% rock";
    const QImage heights =
        picture(madeHeights({10, 10}, [](int, int) { return 1.0; }), 0.01);
    const SceneryData data = made(scene, heights).parameters;
    QCOMPARE(data.HDateiname, QString("100% rock_elevation.png"));
    QCOMPARE(data.TDateiname, QString("100% rock_texture.png"));
    QCOMPARE(data.AusDateiname, QString("100%% rock_%04d"));
    QVERIFY(data.TDateiVerwenden && data.AusgabePNG);
}

void TestTerrainScenery::everyColumnShowsTerrain_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("base");   // metres
    QTest::addColumn<double>("relief"); // metres
    QTest::newRow("level, at the sea") << QSize(300, 300) << 0.0 << 0.0;
    QTest::newRow("hills") << QSize(300, 260) << 400.0 << 800.0;
    QTest::newRow("steep") << QSize(200, 200) << 100.0 << 4000.0;
    QTest::newRow("a high plateau") << QSize(120, 120) << 6000.0 << 300.0;
    QTest::newRow("below the sea") << QSize(200, 150) << -3000.0 << 500.0;
    QTest::newRow("wide") << QSize(800, 90) << 200.0 << 300.0;
    QTest::newRow("long") << QSize(90, 800) << 200.0 << 300.0;
    QTest::newRow("small") << QSize(15, 12) << 100.0 << 60.0;
    QTest::newRow("tiny") << QSize(2, 2) << 10.0 << 5.0;
    QTest::newRow("a cell") << QSize(1, 1) << 10.0 << 0.0;
}

void TestTerrainScenery::everyColumnShowsTerrain()
{
    QFETCH(QSize, size);
    QFETCH(double, base);
    QFETCH(double, relief);
    const Heights ground = madeHeights(size, [&](int x, int y) {
        return base + relief * (0.5 + 0.3 * std::sin(x * 0.11) * std::cos(y * 0.07) +
                                0.2 * std::sin(x * 0.4 + y * 0.3));
    });
    TerrainScene scene = sceneOf(size, 30.0);
    const QImage heights = picture(ground, scene.unit);
    const SceneryData data = made(scene, heights).parameters;
    const QImage frame = drawn(data, heights, size);
    int empty = 0;
    for (int x = 0; x < frame.width(); ++x) {
        bool shows = false;
        for (int y = frame.height() - 1; y >= 0 && !shows; --y)
            shows = (frame.pixel(x, y) & 0xFFFFFFu) != 0x123456u;
        empty += shows ? 0 : 1;
    }
    QCOMPARE(empty, 0);
}

void TestTerrainScenery::voidsStayOutOfTheLowestRow_data()
{
    QTest::addColumn<int>("cells"); // for which an edge moves by one
    for (const int cells : {14, 20, 30})
        QTest::addRow("1 in %d", cells) << cells;
}

// As turned degrees have it: wedges without heights at the edges.
void TestTerrainScenery::voidsStayOutOfTheLowestRow()
{
    QFETCH(int, cells);
    const QSize size(220, 260);
    Heights heights = madeHeights(size, [](int x, int y) {
        return 500.0 + 300.0 * std::sin(x * 0.09) * std::cos(y * 0.07);
    });
    std::vector<bool> isVoid(heights.metres.size(), false);
    QImage texture(size, QImage::Format_RGB32);
    texture.fill(Qt::white);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const int east = size.width() - x;
            const int south = size.height() - y;
            if (x * cells > y && east * cells > south && south * cells > x + 1)
                continue;
            isVoid[std::size_t(y * size.width() + x)] = true;
            heights.row(y)[x] = 200.0F;
            texture.setPixel(x, y, qRgb(255, 0, 0));
        }
    const TerrainScene scene = sceneOf(size, 30.0);
    const QImage image = picture(heights, scene.unit);
    NoProgress progress;
    const SceneryData data = sceneryOf(scene, image, isVoid, progress)->parameters;
    const QImage frame = drawn(data, image, texture);
    int red = 0;
    for (int x = 0; x < frame.width(); ++x) {
        const QRgb pixel = frame.pixel(x, frame.height() - 1);
        red += qRed(pixel) - qGreen(pixel) > 8 ? 1 : 0;
    }
    QCOMPARE(red, 0);
}

// A terrain that is not high for its size is seen from the line of Reposition.
void TestTerrainScenery::cameraStaysOnTheLineOfSight()
{
    const QSize size(300, 260);
    const Heights ground = madeHeights(
        size, [](int x, int y) { return 300.0 + 100.0 * std::sin(x * 0.05 + y * 0.03); });
    const TerrainScene scene = sceneOf(size, 30.0);
    const SceneryData data = made(scene, picture(ground, scene.unit)).parameters;
    QCOMPARE(data.BeobXA, 150.0);
    QVERIFY(std::abs(data.BeobYA + data.BeobZA - 130.0) < 0.02);
    QVERIFY(data.BeobYA >= -260.0 && data.BeobZA > 0.0);
    QCOMPARE(data.RichtungA, 0.0);
    QCOMPARE(data.NeigungA, -45.0);
    QCOMPARE(data.BrennA, 1000.0);
    QCOMPARE(data.VerkantenA, 0.0);
    QCOMPARE(data.BeobYE, data.BeobYA);
    QCOMPARE(data.BeobZE, data.BeobZA);
}

void TestTerrainScenery::aStopEndsTheSearch()
{
    const QImage heights =
        picture(madeHeights({300, 200}, [](int x, int) { return x; }), 0.01);
    for (const int question : {0, 1, 5}) {
        StopsAt progress(question);
        const auto document =
            sceneryOf(sceneOf(heights.size(), 30.0), heights, {}, progress);
        QVERIFY(progress.wasAsked() || question > 0);
        QCOMPARE(document.has_value(), !progress.wasAsked());
        QVERIFY(document || document.error().stopped);
    }
}

QTEST_APPLESS_MAIN(TestTerrainScenery)
#include "test_terrainscenery.moc"

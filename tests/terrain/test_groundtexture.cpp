#include "base/workerpool.h"
#include "terrain/groundpalettes.h"
#include "terrain/groundtexture.h"
#include "terrain/madeterrain.h"
#include "terrain/rowwork.h"

#include <QColor>
#include <QTest>

#include <cmath>
#include <limits>

/// Textures of heights: the palettes of the program, voids, sizes and light.
class TestGroundTexture : public QObject {
    Q_OBJECT

private slots:
    void thereAreEightPalettes();
    void everyPalettePaintsItsOwnGround();
    void heightAndSlopeTellTheColour();
    void plainsBelowAHillHaveMoreThanOneColour();
    void seaIsBlueWhereItIsSea_data();
    void seaIsBlueWhereItIsSea();
    void levelGroundIsNotOneColour();
    void voidsStandOut();
    void anotherSizeIsTheSameGround();
    void threadsChangeNothing();
    void lightOfAnotherSizeIsSpread();
    void photographsLieOverIt();
    void unknownPalettesAreTold();

private:
    static QImage paint(const Heights &heights, const char *palette,
                        const QSize &size = {}, int threads = 2)
    {
        WorkerPool pool(threads);
        NoProgress progress;
        const FilledHeights filled =
            fillWithLowest(heights, pool, Stretch{progress}).value();
        return paintGround(filled, {filled.heights, 10.0, 10.0},
                           groundColours(palette).value(),
                           size.isEmpty() ? heights.size : size, pool, Stretch{progress})
            .value();
    }
    static Heights hills(const QSize &size)
    {
        return madeHeights(size, [](int x, int y) {
            return 500.0 + 300.0 * std::sin(x * 0.05) * std::cos(y * 0.04);
        });
    }
    // The mean of a part of a picture.
    static std::array<double, 3> mean(const QImage &image, const QRect &part)
    {
        std::array<double, 3> sum{};
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                const QRgb p = image.pixel(x, y);
                sum[0] += qRed(p);
                sum[1] += qGreen(p);
                sum[2] += qBlue(p);
            }
        }
        for (double &channel : sum)
            channel /= part.width() * part.height();
        return sum;
    }
};

void TestGroundTexture::thereAreEightPalettes()
{
    QCOMPARE(groundPaletteNames(), (QStringList{"alpine", "temperate", "desert", "arctic",
                                                "autumn", "volcanic", "atlas", "grey"}));
    QVERIFY(!groundPalette("Alpine"));
}

void TestGroundTexture::everyPalettePaintsItsOwnGround()
{
    const Heights ground = hills({120, 90});
    QList<QImage> pictures;
    for (const QString &name : groundPaletteNames()) {
        const QImage picture = paint(ground, qPrintable(name));
        QCOMPARE(picture.size(), ground.size);
        QVERIFY(!pictures.contains(picture));
        pictures.append(picture);
    }
}

void TestGroundTexture::heightAndSlopeTellTheColour()
{
    // Alpine: low ground green, high ground white, and a cliff between without snow.
    const Heights ground = madeHeights({120, 40}, [](int x, int) {
        return x < 50 ? 0.5 * x : x > 69 ? 1000.0 + 0.5 * x : (x - 50) * 50.0;
    });
    const QImage picture = paint(ground, "alpine");
    const auto low = mean(picture, {5, 5, 30, 30});
    const auto cliff = mean(picture, {60, 5, 8, 30});
    const auto high = mean(picture, {85, 5, 30, 30});
    QVERIFY(low[1] > low[0] && low[1] > low[2] + 20.0);
    QVERIFY(high[0] > 225.0 && high[1] > 225.0 && high[2] > 225.0);
    QVERIFY(cliff[0] < 190.0 && std::abs(cliff[0] - cliff[2]) < 60.0);
}

void TestGroundTexture::plainsBelowAHillHaveMoreThanOneColour()
{
    // A plain that rises by 50 m, and one hill of 1000 m in its corner.
    const Heights ground = madeHeights({200, 100}, [](int x, int y) {
        return x < 6 && y < 6 ? 1000.0 : 1.0 + 0.25 * x;
    });
    const auto difference = [&ground](const char *palette) {
        const QImage picture = paint(ground, palette);
        const auto low = mean(picture, {20, 20, 30, 70});
        const auto high = mean(picture, {160, 20, 30, 70});
        return std::abs(high[0] - low[0]) + std::abs(high[1] - low[1]);
    };
    QVERIFY(difference("temperate") > 80.0);
    QVERIFY(difference("atlas") < 30.0); // a map's colours tell the height alone
}

void TestGroundTexture::seaIsBlueWhereItIsSea_data()
{
    QTest::addColumn<QString>("palette");
    QTest::addColumn<double>("below"); // height of the lower half
    QTest::addColumn<double>("rise");  // of it, southward
    QTest::addColumn<bool>("isSea");
    QTest::newRow("level at 0") << "temperate" << 0.0 << 0.0 << true;
    QTest::newRow("deep") << "alpine" << -300.0 << 1.0 << true;
    QTest::newRow("a polder") << "temperate" << -6.0 << 0.01 << false;
    QTest::newRow("a desert below the sea") << "desert" << -80.0 << 0.1 << false;
    QTest::newRow("low land") << "temperate" << 2.0 << 0.0 << false;
}

void TestGroundTexture::seaIsBlueWhereItIsSea()
{
    QFETCH(QString, palette);
    QFETCH(double, below);
    QFETCH(double, rise);
    QFETCH(bool, isSea);
    const Heights ground = madeHeights({60, 60}, [&](int, int y) {
        return y < 30 ? 100.0 - y : below + rise * (y - 30);
    });
    const auto lower = mean(paint(ground, qPrintable(palette)), {5, 36, 50, 20});
    QCOMPARE(lower[2] > lower[0] + 20.0, isSea);
}

void TestGroundTexture::levelGroundIsNotOneColour()
{
    const Heights flat = madeHeights({64, 64}, [](int, int) { return 5.0; });
    const QImage picture = paint(flat, "temperate");
    QSet<QRgb> colours;
    for (int x = 0; x < 64; ++x)
        colours.insert(picture.pixel(x, 20));
    QVERIFY(colours.size() > 10);
    QCOMPARE(picture, paint(flat, "temperate"));
}

void TestGroundTexture::voidsStandOut()
{
    Heights ground = hills({40, 40});
    ground.row(7)[9] = std::numeric_limits<float>::quiet_NaN();
    const QImage picture = paint(ground, "temperate");
    const QRgb ofVoid = picture.pixel(9, 7);
    QVERIFY(qBlue(ofVoid) > qRed(ofVoid));
    QVERIFY(picture.pixel(10, 7) != ofVoid);
    WorkerPool pool(2);
    NoProgress progress;
    const FilledHeights filled = fillWithLowest(ground, pool, Stretch{progress}).value();
    QCOMPARE(filled.voids, qint64(1));
    QCOMPARE(filled.heights.row(7)[9], filled.range.first);
}

void TestGroundTexture::anotherSizeIsTheSameGround()
{
    const Heights ground = hills({60, 40});
    const QImage same = paint(ground, "atlas");
    const QImage large = paint(ground, "atlas", {240, 160});
    QCOMPARE(large.size(), QSize(240, 160));
    for (int y = 2; y < 38; ++y) {
        for (int x = 2; x < 58; ++x) {
            const QColor a(same.pixel(x, y));
            const QColor b(large.pixel(x * 4 + 2, y * 4 + 2));
            QVERIFY(std::abs(a.red() - b.red()) < 12);
            QVERIFY(std::abs(a.green() - b.green()) < 12);
        }
    }
    QCOMPARE(paint(ground, "atlas", {1, 1}).size(), QSize(1, 1));
}

void TestGroundTexture::threadsChangeNothing()
{
    const Heights ground = hills({333, 217});
    const QImage one = paint(ground, "autumn", {}, 1);
    for (const int threads : {2, 5})
        QCOMPARE(paint(ground, "autumn", {}, threads), one);
}

void TestGroundTexture::lightOfAnotherSizeIsSpread()
{
    QImage texture(8, 4, QImage::Format_RGB32);
    texture.fill(qRgb(100, 200, 50));
    LightMap light;
    light.size = {2, 1};
    light.light = {0.5f, 2.0f};
    WorkerPool pool(2);
    NoProgress progress;
    QVERIFY(shadeTexture(texture, light, pool, Stretch{progress}));
    QCOMPARE(QColor(texture.pixel(0, 0)), QColor(50, 100, 25));
    QCOMPARE(QColor(texture.pixel(7, 3)), QColor(200, 255, 100));
    QVERIFY(qRed(texture.pixel(3, 1)) > 60 && qRed(texture.pixel(3, 1)) < 200);
}

void TestGroundTexture::photographsLieOverIt()
{
    QImage texture(3, 1, QImage::Format_RGB32);
    texture.fill(qRgb(10, 20, 30));
    QImage photo(3, 1, QImage::Format_ARGB32);
    photo.setPixel(0, 0, qRgba(200, 100, 50, 255));
    photo.setPixel(1, 0, qRgba(0, 0, 0, 0));
    photo.setPixel(2, 0, qRgba(110, 120, 130, 128));
    layOver(photo, texture);
    QCOMPARE(QColor(texture.pixel(0, 0)), QColor(200, 100, 50));
    QCOMPARE(QColor(texture.pixel(1, 0)), QColor(10, 20, 30));
    QCOMPARE(QColor(texture.pixel(2, 0)), QColor(60, 70, 80));
}

void TestGroundTexture::unknownPalettesAreTold()
{
    const Result<GroundColours> none = groundColours("alpin");
    QVERIFY(!none);
    QVERIFY(none.error().text.contains("\"alpin\""));
    QVERIFY(none.error().text.contains("temperate"));
}

QTEST_APPLESS_MAIN(TestGroundTexture)
#include "test_groundtexture.moc"

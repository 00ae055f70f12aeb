#include "raster/textureimage.h"

#include "raster/texturesampler.h"

#include <QRandomGenerator>
#include <QSettings>
#include <QTest>
#include <QtNumeric>

#include <algorithm>
#include <cmath>

namespace {

void storeAntialiasing(int value)
{
    QSettings settings(QStringLiteral("Zephrant"), QString());
    settings.setValue(QStringLiteral("Settings/Antialiasing"), value);
}

// Texel (column, row) has the red 16 * row + column; row 0 is the top.
void paint(TextureImage &texture)
{
    for (int y = 0; y < texture.height(); ++y)
        for (int x = 0; x < texture.width(); ++x)
            texture.setPixel(x, y, qRgb(16 * y + x, 0, 0));
    texture.setBackgroundColor(0xFF0000FFu);
}

unsigned int nearest(const TextureImage &texture, double x, double y)
{
    unsigned int colour = 0;
    texture.GetColorInt({x, y, 0.0, 1.0}, &colour);
    return colour;
}

unsigned int smooth(TextureImage &texture, double x, double y)
{
    unsigned int colour = 0;
    texture.GetColor(C4Vector{x, y, 0.0, 1.0}, &colour);
    return colour;
}

} // namespace

class TestTextureImage : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QSettings(QStringLiteral("Zephrant"), QString()).clear(); }

    void weightsFallExponentially()
    {
        const TextureImage texture;
        QCOMPARE(texture.weights()[0], 1.0);
        QCOMPARE(texture.weights()[10], std::exp(-1.0));
        QCOMPARE(texture.weights()[80], std::exp(-8.0));
    }

    void settingSetsTheWeights_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<double>("scale");
        QTest::newRow("soft") << 40 << 40.0;
        QTest::newRow("zero") << 0 << 1.0;
        QTest::newRow("negative") << -3 << 1.0;
    }
    void settingSetsTheWeights()
    {
        QFETCH(int, stored);
        QFETCH(double, scale);
        storeAntialiasing(stored);
        const TextureImage texture;
        for (int i = 0; i <= 80; ++i)
            QCOMPARE(texture.weights()[i], std::exp(-i / scale));
    }

    void nearestReadTruncatesAndFlips_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<unsigned int>("colour");
        const unsigned int background = 0xFF0000FFu;
        QTest::newRow("lower left") << 0.0 << 0.0 << qRgb(16 * 7, 0, 0);
        QTest::newRow("upper right") << 7.9 << 7.9 << qRgb(7, 0, 0);
        QTest::newRow("a half below 0") << -0.5 << 0.0 << qRgb(16 * 7, 0, 0);
        QTest::newRow("one below 0") << -1.0 << 0.0 << background;
        QTest::newRow("a half below the bottom") << 0.0 << -0.5 << qRgb(16 * 7, 0, 0);
        QTest::newRow("right of it") << 8.0 << 0.0 << background;
        QTest::newRow("above it") << 0.0 << 8.0 << background;
        QTest::newRow("beyond an int") << 1e12 << 0.0 << background;
        QTest::newRow("no number") << qQNaN() << 0.0 << background;
    }
    void nearestReadTruncatesAndFlips()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(unsigned int, colour);
        TextureImage texture(8, 8, QImage::Format_RGB32);
        paint(texture);
        QCOMPARE(nearest(texture, x, y), colour);
    }

    void wholeReadTestsBeforeItFlips()
    {
        TextureImage texture(8, 8, QImage::Format_RGB32);
        paint(texture);
        unsigned int colour = 0;
        texture.GetColor(2, 1, &colour);
        QCOMPARE(colour, qRgb(16 * 6 + 2, 0, 0));
        texture.GetColor(-1, 1, &colour);
        QCOMPARE(colour, 0xFF0000FFu);
        texture.GetColor(0, 8, &colour);
        QCOMPARE(colour, 0xFF0000FFu);
    }

    void averageOfFiveTruncates()
    {
        TextureImage texture(5, 1, QImage::Format_RGB32);
        for (int x = 0; x < 4; ++x)
            texture.setPixel(x, 0, qRgb(255, 10, 0));
        texture.setPixel(4, 0, qRgb(254, 14, 4));
        C4Vector points[5];
        for (int k = 0; k < 5; ++k)
            points[k] = {double(k), 0.0, 0.0, 1.0};
        unsigned int colour = 0;
        texture.GetColorArray(points, &colour);
        QCOMPARE(colour, qRgb(254, 10, 0)); // 1274, 54 and 4 by 5
    }

    void smoothReadKeepsItsFrame_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<bool>("inside");
        QTest::newRow("first column that reads") << 1.0 << 5.0 << true;
        QTest::newRow("left of it") << 0.5 << 5.0 << false;
        QTest::newRow("last before the right edge") << 5.99 << 5.0 << true;
        QTest::newRow("right edge") << 6.0 << 5.0 << false;
        QTest::newRow("top") << 3.0 << 8.0 << true;
        QTest::newRow("above the top") << 3.0 << 8.01 << false;
        QTest::newRow("just above the bottom edge") << 3.0 << 3.01 << true;
        QTest::newRow("bottom edge") << 3.0 << 3.0 << false;
        QTest::newRow("no number") << qQNaN() << 5.0 << false;
    }
    void smoothReadKeepsItsFrame()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(bool, inside);
        TextureImage texture(8, 8, QImage::Format_RGB32);
        paint(texture);
        QCOMPARE(smooth(texture, x, y) != 0xFF0000FFu, inside);
        // The nearest read still has texels there.
        QVERIFY(x != 0.5 || nearest(texture, x, y) != 0xFF0000FFu);
    }

    // In the middle of a block the four inner texels are 5 tenths away, the corners
    // 45 and the other eight 25.
    void smoothReadWeighsByDistance()
    {
        TextureImage texture(4, 4, QImage::Format_RGB32);
        texture.fill(qRgb(0, 0, 0));
        for (const int at : {1, 2})
            for (const int row : {1, 2})
                texture.setPixel(at, row, qRgb(200, 0, 0));
        const double inner = 4 * std::exp(-0.5);
        const double rest = 8 * std::exp(-2.5) + 4 * std::exp(-4.5);
        const int red = int(200 * inner / (inner + rest + 1e-08));
        QCOMPARE(red, 155);
        QCOMPARE(smooth(texture, 1.5, 3.5), qRgb(red, 0, 0));
    }

    void oneColourStaysThatColour()
    {
        TextureImage texture(4, 4, QImage::Format_RGB32);
        texture.fill(qRgb(255, 128, 1));
        // The small term in the sum of weights cuts a whole value by one.
        QCOMPARE(smooth(texture, 1.25, 3.75), qRgb(254, 127, 0));
    }

    void repeatedReadsInOneBlockAgree()
    {
        TextureImage texture(9, 9, QImage::Format_RGB32);
        paint(texture);
        const unsigned int first = smooth(texture, 2.5, 6.5);
        const unsigned int other = smooth(texture, 4.5, 6.5);
        QVERIFY(first != other);
        QCOMPARE(smooth(texture, 2.5, 6.5), first);
        QCOMPARE(smooth(texture, 2.5, 6.5), first);
    }

    // The reads of pictures against those that are written down plainly.
    void vectorReadsAgree_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::newRow("RGB32") << QImage::Format_RGB32;
        QTest::newRow("ARGB32") << QImage::Format_ARGB32;
        QTest::newRow("RGB888") << QImage::Format_RGB888;
        QTest::newRow("grey") << QImage::Format_Grayscale8;
        QTest::newRow("indexed") << QImage::Format_Indexed8;
    }
    void vectorReadsAgree()
    {
        QFETCH(QImage::Format, format);
        QRandomGenerator random(7);
        QImage picture(23, 17, QImage::Format_ARGB32);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, random.generate());
        const QImage held = picture.convertToFormat(format);
        TextureImage texture(held.width(), held.height(), format);
        texture.setColorTable(held.colorTable());
        for (int y = 0; y < held.height(); ++y)
            std::copy_n(held.constScanLine(y), held.bytesPerLine(), texture.scanLine(y));
        texture.setBackgroundColor(0xFF0000FFu);
        const TextureSampler sampler(texture);
        for (int k = 0; k < 5000; ++k) {
            const double x = random.generateDouble() * 27.0 - 2.0;
            const double y = random.generateDouble() * 21.0 - 2.0;
            // Whole positions too, where the weights of columns change places.
            const C4Vector at = {k % 5 ? x : std::floor(x), k % 7 ? y : std::floor(y),
                                 0.0, 1.0};
            QCOMPARE(sampler.smooth(at), smooth(texture, at.x, at.y));
            QCOMPARE(sampler.nearest(at), nearest(texture, at.x, at.y));
        }
    }

    void reversedBilinearRead()
    {
        TextureImage texture(3, 3, QImage::Format_RGB32);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 3; ++x)
                texture.setPixel(x, y, qRgb(10 * (3 * y + x), 0, 0));
        const auto at = [&](double x, double y) {
            unsigned int colour = 0;
            texture.GetColor(C2Vector{x, y}, &colour);
            return colour;
        };
        // At a texel the weight of its right and lower neighbour is 1.
        QCOMPARE(at(0.0, 2.0), qRgb(40, 0, 0));
        // Row 0.25, column 0.25: (30 * .25 + 40 * .75) * .75 + (0 * .25 + 10 * .75) * .25
        QCOMPARE(at(0.25, 1.75), qRgb(30, 0, 0));
        QCOMPARE(at(2.0, 0.0), qRgb(80, 0, 0));  // last corner
        QCOMPARE(at(0.25, 0.0), qRgb(67, 0, 0)); // last row: 60 * .25 + 70 * .75
        QCOMPARE(at(2.0, 1.75), qRgb(42, 0, 0)); // last column: 20 * .25 + 50 * .75
        QCOMPARE(at(0.0, 2.4), qRgb(40, 0, 0));  // row -0.4 counts as 0
        QCOMPARE(at(0.0, 2.6), 0xFF000000u);
        QCOMPARE(at(2.1, 1.0), 0xFF000000u);
        QCOMPARE(at(qQNaN(), 1.0), 0xFF000000u);
    }

    void copyTakesThePictureAlone()
    {
        TextureImage texture(4, 4, QImage::Format_RGB32);
        paint(texture);
        const TextureImage copy(texture);
        QCOMPARE(copy.pixel(2, 2), texture.pixel(2, 2));
        QCOMPARE(copy.background(), 0xFFFFFFFFu);
    }
};

QTEST_GUILESS_MAIN(TestTextureImage)
#include "test_textureimage.moc"

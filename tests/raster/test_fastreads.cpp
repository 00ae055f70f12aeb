// Reads by rows and pointers give what reads of single pixels give, to the bit.
#include "base/vectors.h"
#include "raster/bilinearrows.h"
#include "raster/elevationcolumns.h"
#include "raster/elevationimage.h"
#include "raster/image.h"
#include "raster/imagerows.h"
#include "raster/texturesampler.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cmath>
#include <limits>

namespace {

enum class Alpha { Opaque, Any };

// Noise in all channels, which comes to a format as the toolkit converts it.
QImage noise(int width, int height, QImage::Format format, quint32 seed,
             Alpha alpha = Alpha::Opaque)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(
                x, y, random.generate() | (alpha == Alpha::Opaque ? 0xFF000000u : 0u));
    return image.convertToFormat(format);
}

void addFormats()
{
    QTest::addColumn<int>("format");
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format)
        QTest::addRow("format %d", format) << format;
}

// A terrain that is stretched, as a scenery names it.
ElevationImage stretched(const QImage &image, double x, double y)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("e.png");
    return image.save(name) ? ElevationImage(name, x, y, nullptr) : ElevationImage();
}

// The same pixels in a picture of another class.
template <class Picture> void fill(Picture &picture, const QImage &pixels)
{
    for (int y = 0; y < picture.height(); ++y)
        std::copy_n(rowOf(pixels, y), picture.width(),
                    reinterpret_cast<QRgb *>(picture.scanLine(y)));
}

// Positions inside, at the edges, between pixels and far outside.
double somewhere(QRandomGenerator &random, int size)
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    constexpr std::array Odd{-1.0, -0.5, -0.0, 1e300, -Infinity, Infinity};
    switch (random.bounded(4)) {
    case 0:
        return random.bounded(-2, size + 3);
    case 1:
        return size - random.generateDouble();
    case 2:
        return Odd[random.bounded(int(Odd.size()))];
    default:
        return random.generateDouble() * (size + 4) - 2.0;
    }
}

} // namespace

class TestFastReads : public QObject {
    Q_OBJECT

private slots:
    void pixelsAreThoseOfTheImage_data() { addFormats(); }
    void pixelsAreThoseOfTheImage();
    void editablePicturesKeepTheirColours_data() { addFormats(); }
    void editablePicturesKeepTheirColours();
    void editsReachEveryRowUntilOneSaysStop_data();
    void editsReachEveryRowUntilOneSaysStop();
    void stretchedRowsAreSingleReads_data();
    void stretchedRowsAreSingleReads();
    void columnsOfElevationsAreSingleReads_data();
    void columnsOfElevationsAreSingleReads();
    void rangeIsThatOfAllReads_data() { columnsOfElevationsAreSingleReads_data(); }
    void rangeIsThatOfAllReads();
    void sampledTextureIsTheTexture();
};

void TestFastReads::pixelsAreThoseOfTheImage()
{
    QFETCH(int, format);
    const QImage image = noise(13, 7, QImage::Format(format), 15, Alpha::Any);
    const PixelReader read(image);
    std::array<QRgb, 13> row{};
    for (int y = 0; y < image.height(); ++y) {
        read.readRow(y, row.data());
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(read(x, y), image.pixel(x, y));
            QCOMPARE(row[std::size_t(x)], image.pixel(x, y));
        }
    }
}

void TestFastReads::editablePicturesKeepTheirColours()
{
    QFETCH(int, format);
    QImage image = noise(9, 5, QImage::Format(format), 16);
    const QImage before = image;
    const QImage wide = as32Bit(image);
    QCOMPARE(wide.depth(), 32);
    makeEditable(image);
    QVERIFY(image.depth() == 32 || image.format() == QImage::Format_RGB888);
    if (before.format() == QImage::Format_RGB32 ||
        before.format() == QImage::Format_RGB888)
        QCOMPARE(image.constBits(), before.constBits()); // no copy
    constexpr QRgb Colour = 0x00FFFFFFu;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(image.pixel(x, y) & Colour, before.pixel(x, y) & Colour);
            QCOMPARE(rowOf(wide, y)[x] & Colour, before.pixel(x, y) & Colour);
        }
}

void TestFastReads::editsReachEveryRowUntilOneSaysStop_data()
{
    QTest::addColumn<int>("format");
    for (const auto format :
         {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_RGB888})
        QTest::addRow("format %d", format) << int(format);
}
void TestFastReads::editsReachEveryRowUntilOneSaysStop()
{
    QFETCH(int, format);
    const QImage before = noise(5, 6, QImage::Format(format), 17);
    for (int last = 0; last <= before.height(); ++last) {
        QImage image = before.copy();
        int row = 0;
        const bool whole = editRows(image, [&](QRgb *colours) {
            for (int x = 0; x < image.width(); ++x)
                colours[x] = 0xFF000000u | ~colours[x];
            return row++ < last;
        });
        QCOMPARE(whole, last == before.height());
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                if (y == last)
                    continue; // of the row that says stop nothing is promised
                const QRgb was = before.pixel(x, y) & 0x00FFFFFFu;
                QCOMPARE(image.pixel(x, y) & 0x00FFFFFFu,
                         y < last ? was ^ 0x00FFFFFFu : was);
            }
    }
}

void TestFastReads::stretchedRowsAreSingleReads_data()
{
    QTest::addColumn<QSize>("from");
    QTest::addColumn<QSize>("to");
    QTest::newRow("larger") << QSize(7, 5) << QSize(31, 17);
    QTest::newRow("smaller") << QSize(31, 17) << QSize(7, 5);
    QTest::newRow("the same") << QSize(12, 9) << QSize(12, 9);
    QTest::newRow("whole steps") << QSize(24, 18) << QSize(12, 9);
    QTest::newRow("from one pixel") << QSize(1, 1) << QSize(4, 4);
    QTest::newRow("to one pixel") << QSize(9, 8) << QSize(1, 1);
    QTest::newRow("one row") << QSize(9, 1) << QSize(5, 3);
}
void TestFastReads::stretchedRowsAreSingleReads()
{
    QFETCH(QSize, from);
    QFETCH(QSize, to);
    Image image(from, QImage::Format_RGB32);
    fill(image, noise(from.width(), from.height(), QImage::Format_RGB32, 18));
    const double rx = double(from.width()) / to.width();
    const double ry = double(from.height()) / to.height();
    BilinearRows rows(image, to.width(), to.height());
    QRandomGenerator random(19);
    // In order, and then here and there: what is kept of a row must not be another's.
    for (int i = 0; i < 3 * to.height(); ++i) {
        const int y = i < to.height() ? i : random.bounded(to.height());
        const QRgb *const row = rows.row(y);
        for (int x = 0; x < to.width(); ++x)
            QCOMPARE(row[x], image.pixel(x * rx, y * ry) | 0xFF000000u);
    }
}

void TestFastReads::columnsOfElevationsAreSingleReads_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("format");
    for (const auto format : {QImage::Format_RGB32, QImage::Format_Indexed8}) {
        QTest::addRow("as it is, %d", format) << 1.0 << 1.0 << int(format);
        QTest::addRow("stretched, %d", format) << 2.5 << 3.0 << int(format);
        QTest::addRow("shrunk, %d", format) << 0.3 << 0.7 << int(format);
    }
}
void TestFastReads::columnsOfElevationsAreSingleReads()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(int, format);
    ElevationImage image = stretched(noise(17, 11, QImage::Format(format), 20), x, y);
    QVERIFY(!image.isNull());
    image.setZScale(0.037);
    QRandomGenerator random(21);
    std::vector<double> places(200);
    for (double &place : places)
        place = somewhere(random, int(17 * x));
    const ElevationColumns columns(image, places);
    std::vector<double> read(places.size());
    for (int round = 0; round < 100; ++round) {
        const double line = somewhere(random, int(11 * y));
        const int first = random.bounded(int(places.size()));
        const int count = random.bounded(int(places.size()) - first + 1);
        columns.read(line, first, count, read.data());
        for (int i = 0; i < count; ++i)
            QCOMPARE(read[std::size_t(i)],
                     image.elevation(places[std::size_t(first + i)], line));
    }
}

void TestFastReads::rangeIsThatOfAllReads()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(int, format);
    ElevationImage image = stretched(noise(17, 11, QImage::Format(format), 22), x, y);
    for (const double scale : {1.0, -0.5}) {
        image.setZScale(scale);
        double lowest = image.elevation(0, 0);
        double highest = lowest;
        for (int row = 0; row < image.height(); ++row)
            for (int column = 0; column < image.width(); ++column) {
                lowest = std::min(lowest, image.elevation(column, row));
                highest = std::max(highest, image.elevation(column, row));
            }
        QCOMPARE(image.elevationRange().first, lowest);
        QCOMPARE(image.elevationRange().second, highest);
    }
    QVERIFY(ElevationImage().elevationRange().first >
            ElevationImage().elevationRange().second);
    QCOMPARE(ElevationImage().stepsRange(), std::pair(0, 0));
}

void TestFastReads::sampledTextureIsTheTexture()
{
    TextureImage texture(23, 19, QImage::Format_RGB32);
    fill(texture, noise(23, 19, QImage::Format_RGB32, 23));
    const TextureSampler sampler(texture);
    QRandomGenerator random(24);
    for (int round = 0; round < 5000; ++round) {
        std::array<C4Vector, 5> points;
        for (C4Vector &point : points)
            point = {somewhere(random, 23), somewhere(random, 19), 0.0, 1.0};
        const C4Vector &p = points[0];
        unsigned int colour = 0;
        texture.GetColorInt(p, &colour);
        QCOMPARE(sampler.nearest(p), colour);
        texture.GetColorArray(points.data(), &colour);
        QCOMPARE(sampler.average(points.data()), colour);
        texture.GetColor(p, &colour);
        QCOMPARE(sampler.smooth(p), colour);
    }
}

QTEST_APPLESS_MAIN(TestFastReads)
#include "test_fastreads.moc"

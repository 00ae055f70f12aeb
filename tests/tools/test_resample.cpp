#include "tools/resample.h"

#include "tools/images.h"

#include <QTest>

namespace {

ElevationImage elevationNoise(const QSize &size,
                              QImage::Format format = QImage::Format_RGB32)
{
    ElevationImage image;
    static_cast<QImage &>(image) =
        images::noise(size.width(), size.height()).convertToFormat(format);
    return image;
}

// The rule itself, one pixel at a time.
QImage plainResample(const ElevationImage &source, double zScale, const QSize &size)
{
    ElevationImage out(size, QImage::Format_RGB888);
    const double rx = double(source.width()) / size.width();
    const double ry = double(source.height()) / size.height();
    for (int r = 0; r < size.height(); ++r)
        for (int c = 0; c < size.width(); ++c)
            out.setElevation(c, size.height() - 1 - r,
                             source.elevation(c * rx, r * ry) * zScale);
    return out;
}

QImage resampled(const ElevationImage &source, double zScale, const QSize &size)
{
    NoProgress unwatched;
    return resample(source, {size, zScale}, unwatched).value_or(ElevationImage());
}

} // namespace

class TestResample : public QObject {
    Q_OBJECT

private slots:
    void percentAndPixelsFollowEachOther();
    void theSameSizeLosesTheBottomRowAndTheLastColumn();
    void halfAWidthAndDoubleAHeight();
    void valuesBeyond24BitsWrap();
    void aNegativeScaleTurnsTheTerrainOver();
    void everyFormatFollowsTheBilinearRead_data() { images::addFormatRows(); }
    void everyFormatFollowsTheBilinearRead();
    void everySizeFollowsTheBilinearRead_data();
    void everySizeFollowsTheBilinearRead();
    void nullImagesAreRefused();
};

void TestResample::percentAndPixelsFollowEachOther()
{
    QCOMPARE(pixelsOfPercent(201, 33.33), 67);  // 66.9933
    QCOMPARE(pixelsOfPercent(149, 250.0), 373); // 372.5
    QCOMPARE(pixelsOfPercent(3, 50.0), 2);      // 1.5
    QCOMPARE(pixelsOfPercent(100, 0.0), 0);
    QCOMPARE(percentOfPixels(200, 50), 25.0);
    QCOMPARE(percentOfPixels(3, 1), 100.0 / 3.0);
}

void TestResample::theSameSizeLosesTheBottomRowAndTheLastColumn()
{
    const ElevationImage source = elevationNoise({4, 3});
    const QImage out = resampled(source, 1.0, {4, 3});
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            QCOMPARE(out.pixel(x, y),
                     y == 2 || x == 3 ? QRgb(0xFF000000) : source.pixel(x, y));
}

void TestResample::halfAWidthAndDoubleAHeight()
{
    // Rows from the top: 10 20 30 40 and, below, 50 60 70 80.
    ElevationImage source(4, 2, QImage::Format_RGB888);
    for (int i = 0; i < 8; ++i)
        source.setElevation(i % 4, i / 4, 10.0 * (i + 1));
    NoProgress unwatched;
    const ElevationImage out =
        resample(source, {{2, 4}, 1.0}, unwatched).value_or(ElevationImage());
    QVERIFY(!out.isNull());
    // World y = 0, 0.5, 1, 1.5 from the bottom; rows 1, 0.5, 0, -0.5 from the top.
    QCOMPARE(out.elevation(0, 0), 0.0);  // the bottom row counts as outside
    QCOMPARE(out.elevation(0, 1), 30.0); // midway between 10 and 50
    QCOMPARE(out.elevation(1, 1), 50.0); // midway between 30 and 70
    QCOMPARE(out.elevation(1, 2), 30.0);
    QCOMPARE(out.elevation(0, 3), 0.0); // above the top row
}

void TestResample::valuesBeyond24BitsWrap()
{
    ElevationImage source(2, 2, QImage::Format_RGB888);
    source.clear(0xFF000201); // 513
    // 513 * 16384 = 8404992, whose low 24 bits stand for a negative integer.
    QCOMPARE(resampled(source, 16384.0, {2, 2}).pixel(0, 0), QRgb(0xFF804000));
    QCOMPARE(resampled(source, 0.0, {2, 2}).pixel(0, 0), QRgb(0xFF000000));
}

void TestResample::aNegativeScaleTurnsTheTerrainOver()
{
    ElevationImage source(2, 2, QImage::Format_RGB888);
    source.clear(0xFF000005);
    // -2.5 is rounded away from zero.
    QCOMPARE(resampled(source, -0.5, {2, 2}).pixel(0, 0), QRgb(0xFFFFFFFD));
}

void TestResample::everyFormatFollowsTheBilinearRead()
{
    QFETCH(int, format);
    const ElevationImage source = elevationNoise({11, 9}, QImage::Format(format));
    for (const double zScale : {1.0, -0.37, 16384.0})
        QCOMPARE(resampled(source, zScale, {17, 13}),
                 plainResample(source, zScale, {17, 13}));
}

void TestResample::everySizeFollowsTheBilinearRead_data()
{
    QTest::addColumn<QSize>("from");
    QTest::addColumn<QSize>("to");
    QTest::newRow("larger") << QSize(11, 9) << QSize(40, 31);
    QTest::newRow("to one pixel") << QSize(11, 9) << QSize(1, 1);
    QTest::newRow("to one column") << QSize(11, 9) << QSize(1, 50);
    QTest::newRow("to one row") << QSize(11, 9) << QSize(50, 1);
    QTest::newRow("of one pixel") << QSize(1, 1) << QSize(3, 3);
    QTest::newRow("of one column") << QSize(1, 5) << QSize(3, 3);
    QTest::newRow("of one row") << QSize(5, 1) << QSize(3, 3);
}

void TestResample::everySizeFollowsTheBilinearRead()
{
    QFETCH(QSize, from);
    QFETCH(QSize, to);
    const ElevationImage source = elevationNoise(from);
    QCOMPARE(resampled(source, 1.0, to), plainResample(source, 1.0, to));
}

void TestResample::nullImagesAreRefused()
{
    NoProgress unwatched;
    const auto empty = resample(elevationNoise({2, 2}), {QSize(), 1.0}, unwatched);
    QCOMPARE(empty.error().text, QString("Could not create output file."));
    QVERIFY(!resample(ElevationImage(), {{1, 1}, 1.0}, unwatched).has_value());
}

QTEST_GUILESS_MAIN(TestResample)
#include "test_resample.moc"

#include "tools/elevationconversions.h"

#include "tools/images.h"

#include <QTest>

namespace {

ElevationImage elevations(std::initializer_list<int> values)
{
    ElevationImage image(static_cast<int>(values.size()), 1, QImage::Format_RGB32);
    int x = 0;
    for (const int e : values)
        image.setElevation(x++, 0, e);
    return image;
}

ElevationImage asElevations(QImage pixels)
{
    ElevationImage image;
    static_cast<QImage &>(image) = std::move(pixels);
    return image;
}

QRgb gray(int v) { return qRgb(v, v, v); }

// The image as grays, in place, and what was found.
GrayConversion toGray(ElevationImage &image, double zScale = 1.0)
{
    NoProgress unwatched;
    GrayPicture gray = *elevationToGray(std::move(image), zScale, unwatched);
    image = asElevations(std::move(gray.picture));
    return gray.found;
}

GrayConversion normalize(ElevationImage &image, const GrayConversion &found)
{
    NoProgress unwatched;
    GrayPicture gray = *normalizeToGray(std::move(image), found, unwatched);
    image = asElevations(std::move(gray.picture));
    return gray.found;
}

ElevationLimits toElevations(ElevationImage &image)
{
    NoProgress unwatched;
    SummedElevations sums = *grayToElevation(std::move(image), unwatched);
    image = std::move(sums.image);
    return sums.range;
}

QImage coloured(ElevationImage image, const QImage &palette, int lower, int upper)
{
    NoProgress unwatched;
    return elevationToColor(std::move(image), palette, lower, upper, unwatched)
        .value_or(QImage());
}

QImage blueChanged(QImage image)
{
    NoProgress unwatched;
    return changeBlue0Pixels(std::move(image), unwatched).value_or(QImage());
}

// Lets so many rows pass.
class RowsUntil final : public Progress {
public:
    explicit RowsUntil(qint64 last) : m_last(last) {}
    [[nodiscard]] bool step(qint64 done, qint64) override { return done < m_last; }

private:
    qint64 m_last;
};

} // namespace

class TestElevationConversions : public QObject {
    Q_OBJECT

private slots:
    void graysAreTheElevationsThemselves();
    void graysRoundAtTheHalfAndCountWhatIsCutOff_data();
    void graysRoundAtTheHalfAndCountWhatIsCutOff();
    void aScaleOfZeroMakesEverythingBlackAndCountsNothing();
    void normalizingSpreadsTheRangeFoundBefore();
    void normalizingASingleValueGivesBlack();
    void countsStartAfreshWithEachPass();
    void rowsKeepTheirPlace();
    void sumsOfColoursBecomeElevations();
    void blueZeroBecomesOne_data();
    void blueZeroBecomesOne();
    void theRangeLeavesZerosOutOfTheLowestOnly();
    void aFileOfZerosHasNoLowestValueWhenZerosAreIgnored();
    void rangesAreCutToWhatAFileHolds();
    void coloursComeFromThePalettesTopRow_data();
    void coloursComeFromThePalettesTopRow();
    void equalOrSwappedLimitsGiveTheEndsOfThePalette();
    void aPaletteOfOnePixelColoursEverything();
    void withoutAPaletteNothingChanges();
    void whatLiesBeyondAPaletteIsCounted();
    void theTopRowOfAPaletteIsSpreadOverAllRows();
    void everyFormatIsReadAsItsColours_data() { images::addFormatRows(); }
    void everyFormatIsReadAsItsColours();
    void imagesOf32BitsKeepTheirBuffer();
    void aStoppedConversionGivesNothing();
};

void TestElevationConversions::graysAreTheElevationsThemselves()
{
    ElevationImage image(256, 1, QImage::Format_RGB888);
    for (int x = 0; x < 256; ++x)
        image.setElevation(x, 0, x);
    const GrayConversion conversion = toGray(image);
    for (int x = 0; x < 256; ++x)
        QCOMPARE(image.pixel(x, 0), gray(x));
    QCOMPARE(conversion.belowCount, 0);
    QCOMPARE(conversion.aboveCount, 0);
    QCOMPARE(conversion.minValue, 0.0);
    QCOMPARE(conversion.maxValue, 255.0);
}

void TestElevationConversions::graysRoundAtTheHalfAndCountWhatIsCutOff_data()
{
    QTest::addColumn<int>("elevation");
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("below");
    QTest::addColumn<int>("above");
    QTest::newRow("-0.4 is 0") << -4 << 0.1 << 0 << 0 << 0;
    QTest::newRow("-0.5 is cut off") << -1 << 0.5 << 0 << 1 << 0;
    QTest::newRow("0.5 is 1") << 1 << 0.5 << 1 << 0 << 0;
    QTest::newRow("255.25 is 255") << 1021 << 0.25 << 255 << 0 << 0;
    QTest::newRow("255.5 is cut off") << 511 << 0.5 << 255 << 0 << 1;
    QTest::newRow("256 is cut off") << 256 << 1.0 << 255 << 0 << 1;
    QTest::newRow("lowest") << -8388608 << 65536.0 << 0 << 1 << 0;
    QTest::newRow("lowest turned over") << -8388608 << -65536.0 << 255 << 0 << 1;
}

void TestElevationConversions::graysRoundAtTheHalfAndCountWhatIsCutOff()
{
    QFETCH(int, elevation);
    QFETCH(double, scale);
    QFETCH(int, expected);
    QFETCH(int, below);
    QFETCH(int, above);
    ElevationImage image = elevations({elevation});
    const GrayConversion conversion = toGray(image, scale);
    QCOMPARE(image.pixel(0, 0), gray(expected));
    QCOMPARE(conversion.belowCount, below);
    QCOMPARE(conversion.aboveCount, above);
}

void TestElevationConversions::aScaleOfZeroMakesEverythingBlackAndCountsNothing()
{
    ElevationImage image = elevations({-500, 0, 8388607});
    const GrayConversion conversion = toGray(image, 0.0);
    for (int x = 0; x < 3; ++x)
        QCOMPARE(image.pixel(x, 0), gray(0));
    QCOMPARE(conversion.belowCount + conversion.aboveCount, 0);
    QCOMPARE(conversion.maxValue, 0.0);
}

void TestElevationConversions::normalizingSpreadsTheRangeFoundBefore()
{
    const ElevationImage source = elevations({-100, 0, 310, 410});
    ElevationImage image = source;
    GrayConversion conversion = toGray(image);
    QCOMPARE(conversion.belowCount, 1);
    QCOMPARE(conversion.aboveCount, 2);
    QCOMPARE(conversion.normalizingScale(), 0.5); // 255 / 510

    image = source;
    conversion = normalize(image, conversion);
    QCOMPARE(image.pixel(0, 0), gray(0));
    QCOMPARE(image.pixel(1, 0), gray(50));
    QCOMPARE(image.pixel(2, 0), gray(205));
    QCOMPARE(image.pixel(3, 0), gray(255));
    QCOMPARE(conversion.minValue, -100.0);
    QCOMPARE(conversion.maxValue, 410.0);
}

void TestElevationConversions::normalizingASingleValueGivesBlack()
{
    const ElevationImage source = elevations({300, 300});
    ElevationImage image = source;
    GrayConversion conversion = toGray(image);
    QCOMPARE(conversion.aboveCount, 2);
    image = source;
    normalize(image, conversion);
    QCOMPARE(image.pixel(1, 0), gray(0));
}

void TestElevationConversions::countsStartAfreshWithEachPass()
{
    ElevationImage image = elevations({-1, 256});
    GrayConversion conversion = toGray(image);
    for (int pass = 0; pass < 2; ++pass) {
        QCOMPARE(conversion.belowCount, pass == 0 ? 1 : 0);
        QCOMPARE(conversion.aboveCount, pass == 0 ? 1 : 0);
        image = elevations({-1, 256});
        conversion = normalize(image, conversion);
    }
}

void TestElevationConversions::rowsKeepTheirPlace()
{
    ElevationImage image(1, 3, QImage::Format_RGB888);
    for (int y = 0; y < 3; ++y)
        image.setElevation(0, y, 10 * y);
    toGray(image);
    for (int y = 0; y < 3; ++y)
        QCOMPARE(image.pixel(0, y), gray(10 * y));
}

void TestElevationConversions::sumsOfColoursBecomeElevations()
{
    ElevationImage image =
        asElevations(images::row({0xFFFFFFFF, gray(100), 0x00010203, gray(60)}));
    const ElevationLimits range = toElevations(image);
    QCOMPARE(image.elevation(0, 0), 765.0);
    QCOMPARE(image.elevation(1, 0), 300.0);
    QCOMPARE(image.pixel(2, 0), QRgb(0xFF000006)); // opaque
    QCOMPARE(range.lowest, 6.0);
    QCOMPARE(range.highest, 765.0);
}

void TestElevationConversions::blueZeroBecomesOne_data()
{
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("transparent") << QRgb(0x00123400) << QRgb(0xFF123401);
    QTest::newRow("black") << QRgb(0xFF000000) << QRgb(0xFF000001);
    QTest::newRow("blue of 1") << QRgb(0x80123401) << QRgb(0x80123401);
    QTest::newRow("white") << QRgb(0xFFFFFFFF) << QRgb(0xFFFFFFFF);
}

void TestElevationConversions::blueZeroBecomesOne()
{
    QFETCH(QRgb, pixel);
    QFETCH(QRgb, expected);
    QImage image = images::row({pixel});
    image = blueChanged(std::move(image));
    QCOMPARE(image.pixel(0, 0), expected);
}

void TestElevationConversions::theRangeLeavesZerosOutOfTheLowestOnly()
{
    const ElevationImage image = elevations({0, 12, 5});
    QCOMPARE(elevationRange(image, false).lowest, 0.0);
    QCOMPARE(elevationRange(image, true).lowest, 5.0);
    QCOMPARE(elevationRange(image, true).highest, 12.0);
    QCOMPARE(elevationRange(elevations({-3, 0}), true).highest, 0.0);
}

void TestElevationConversions::aFileOfZerosHasNoLowestValueWhenZerosAreIgnored()
{
    const ElevationLimits range = elevationRange(elevations({0, 0}), true);
    QCOMPARE(range.highest, 0.0);
    QCOMPARE(elevationAsInteger(range.lowest), 8388607);
}

void TestElevationConversions::rangesAreCutToWhatAFileHolds()
{
    QCOMPARE(elevationAsInteger(-8388608.0), -8388608);
    QCOMPARE(elevationAsInteger(-1e300), -8388608);
    QCOMPARE(elevationAsInteger(-1.9), -1);
}

void TestElevationConversions::coloursComeFromThePalettesTopRow_data()
{
    QTest::addColumn<int>("elevation");
    QTest::addColumn<int>("index");
    // Ten elevations on four pixels: (e - 100) * 0.4 + 0.5, cut.
    QTest::newRow("below") << 99 << 0;
    QTest::newRow("lower limit") << 100 << 0;
    QTest::newRow("0.9") << 101 << 0;
    QTest::newRow("1.3") << 102 << 1;
    QTest::newRow("2.5") << 105 << 2;
    QTest::newRow("4.1 is held at the last") << 109 << 3;
    QTest::newRow("upper limit") << 110 << 3;
    QTest::newRow("above") << 8388607 << 3;
}

void TestElevationConversions::coloursComeFromThePalettesTopRow()
{
    QFETCH(int, elevation);
    QFETCH(int, index);
    QImage palette = images::plain(4, 2, qRgb(9, 9, 9));
    for (int x = 0; x < 4; ++x)
        palette.setPixel(x, 0, qRgb(10 * x, 1, 2));
    const QImage image = coloured(elevations({elevation}), palette, 100, 110);
    QCOMPARE(image.pixel(0, 0), qRgb(10 * index, 1, 2));
}

void TestElevationConversions::equalOrSwappedLimitsGiveTheEndsOfThePalette()
{
    const QImage palette = images::row({gray(1), gray(2), gray(3)});
    const QImage equal = coloured(elevations({4, 5, 6}), palette, 5, 5);
    QCOMPARE(equal.convertToFormat(QImage::Format_ARGB32),
             images::row({gray(1), gray(3), gray(3)}));
    const QImage swapped = coloured(elevations({500, 1000, 1500}), palette, 1500, 500);
    QCOMPARE(swapped.convertToFormat(QImage::Format_ARGB32),
             images::row({gray(1), gray(1), gray(3)}));
}

void TestElevationConversions::aPaletteOfOnePixelColoursEverything()
{
    const QImage image = coloured(elevations({-8388608, 0, 8388607}),
                                  images::row({gray(77)}), -8388608, 8388607);
    for (int x = 0; x < 3; ++x)
        QCOMPARE(image.pixel(x, 0), gray(77));
}

void TestElevationConversions::withoutAPaletteNothingChanges()
{
    NoProgress unwatched;
    const ElevationImage image = elevations({7});
    const Result<QImage> none = elevationToColor(image, QImage(), 0, 10, unwatched);
    QCOMPARE(none.error().text, "There is no palette.");
    QCOMPARE(image.elevation(0, 0), 7.0);
}

void TestElevationConversions::whatLiesBeyondAPaletteIsCounted()
{
    const QImage palette = images::row({qRgb(1, 2, 3), qRgb(4, 5, 6)});
    const ElevationImage image = elevations({-9, -1, 0, 5, 10, 11, 4000});
    const auto beyond = [&](int lower, int upper) {
        NoProgress unwatched;
        qint64 cut = -1;
        return elevationToColor(image, palette, lower, upper, unwatched, &cut) ? cut : -2;
    };
    QCOMPARE(beyond(0, 10), qint64(4));
    QCOMPARE(beyond(-9, 4000), qint64(0)); // the ends are within
    QCOMPARE(beyond(5, 5), qint64(6));
}

void TestElevationConversions::theTopRowOfAPaletteIsSpreadOverAllRows()
{
    const QImage before = images::noise(5, 4);
    const QImage palette = withTopRowSpread(before);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x)
            QCOMPARE(palette.pixel(x, y), before.pixel(x, 0));
    QVERIFY(withTopRowSpread(QImage()).isNull());
}

void TestElevationConversions::everyFormatIsReadAsItsColours()
{
    QFETCH(int, format);
    const QImage source = images::noise(7, 3).convertToFormat(QImage::Format(format));
    ElevationImage image = asElevations(source);
    toElevations(image);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 7; ++x) {
            const QRgb c = source.pixel(x, y);
            const int sum = qRed(c) + qGreen(c) + qBlue(c);
            QCOMPARE(image.pixel(x, y), 0xFF000000u | QRgb(sum));
        }
    }
}

void TestElevationConversions::imagesOf32BitsKeepTheirBuffer()
{
    ElevationImage image = asElevations(images::noise(3, 3));
    const uchar *const buffer = image.bits();
    toGray(image);
    image = asElevations(blueChanged(std::move(image)));
    toElevations(image);
    const QImage last = coloured(std::move(image), images::row({0xFF010203}), 0, 1);
    QCOMPARE(last.constBits(), buffer);
}

void TestElevationConversions::aStoppedConversionGivesNothing()
{
    const ElevationImage image = asElevations(images::noise(3, 3));
    const QImage palette = images::row({gray(1)});
    RowsUntil second(2);
    QVERIFY(elevationToGray(image, 1.0, second).error().stopped);
    QVERIFY(normalizeToGray(image, {}, second).error().stopped);
    QVERIFY(grayToElevation(image, second).error().stopped);
    QVERIFY(elevationToColor(image, palette, 0, 1, second).error().stopped);
    QVERIFY(changeBlue0Pixels(image, second).error().stopped);
}

QTEST_GUILESS_MAIN(TestElevationConversions)
#include "test_elevationconversions.moc"

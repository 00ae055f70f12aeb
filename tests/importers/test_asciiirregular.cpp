#include "importers/asciiirregular.h"
#include "raster/elevationimage.h"

#include <QBuffer>
#include <QTest>

#include <cstdlib>

namespace {

struct Reading {
    bool stored = false;
    ScatteredPoints points;
    QStringList rows;
    qint64 pointsRead = 0;
    AsciiIrregularOptions options;
};

AsciiIrregularOptions size(int width, int height, int estimate = 1000)
{
    AsciiIrregularOptions options;
    options.width = width;
    options.height = height;
    options.nodalPointEstimate = estimate;
    return options;
}

void read(const QByteArray &text, Reading &result)
{
    QBuffer in;
    in.setData(text);
    in.open(QIODevice::ReadOnly);
    NoProgress unwatched;
    (void)scanTextMesh(in, result.options.skip, result.options.boundaries, unwatched);
    in.seek(0);
    Result<ScatteredMesh> mesh = readScatteredPoints(in, result.options, unwatched);
    QVERIFY(mesh.has_value());
    result.points = std::move(mesh->scattered);
    result.stored = result.points.count > 0;
    result.rows = mesh->rows;
    result.pointsRead = mesh->pointsRead;
}

ElevationImage convert(const QByteArray &text, const AsciiIrregularOptions &options)
{
    Reading result;
    result.options = options;
    read(text, result);
    NoProgress unwatched;
    if (!result.stored)
        return {};
    return fillScatteredPoints(result.points, result.options, unwatched)
        .value_or(ElevationImage());
}

int at(const ElevationImage &image, int x, int y)
{
    return ElevationImage::stepsOf(image.pixel(x, y));
}

bool isFlat(const ElevationImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (at(image, x, y) != 0)
                return false;
    return true;
}

const QString Exceeded = QStringLiteral("Number of nodal points exceeded.");

} // namespace

class TestAsciiIrregular : public QObject {
    Q_OBJECT

private slots:
    void init() { std::srand(1); }
    void pointsSpanTheOutput();
    void asManyPointsAsTheEstimate_data();
    void asManyPointsAsTheEstimate();
    void theEstimateIsReachedAtAHundredRows();
    void allPointsOnOneLineOfX();
    void oneOrTwoPointsGiveAZeroImage_data();
    void oneOrTwoPointsGiveAZeroImage();
    void aPlaneIsFilled();
    void aWideImageIsFilledAsFarAsItIsHigh();
    void aScaleOfZeroIsFlat();
    void stoppedWorkGivesNothing();
    void oddInputGivesNoPointsOrNoHeights_data();
    void oddInputGivesNoPointsOrNoHeights();
};

void TestAsciiIrregular::pointsSpanTheOutput()
{
    Reading result;
    result.options = size(20, 10);
    result.options.zScale = 2;
    read("0 0 1\n4 8 2\n1 2 3\n", result);
    QCOMPARE(result.points.count, 3);
    double **const rows = result.points.points.rows;
    QCOMPARE(rows[0][0], 0.0);
    QCOMPARE(rows[0][1], 9.0);
    QCOMPARE(rows[1][0], 20.0); // both ends belong to it
    QCOMPARE(rows[1][1], -1.0);
    QCOMPARE(rows[2][0], 5.0);
    QCOMPARE(rows[2][1], 6.5);
    QCOMPARE(result.points.z.data[2], 6.0);
    QCOMPARE(result.pointsRead, 3);
}

void TestAsciiIrregular::asManyPointsAsTheEstimate_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("no more lines")
        << QByteArray("0 0 1\n1 1 2\n2 1 3\n") << QStringList();
    QTest::newRow("an empty line")
        << QByteArray("0 0 1\n1 1 2\n2 1 3\n\n") << QStringList(Exceeded);
    QTest::newRow("a fourth point")
        << QByteArray("0 0 1\n1 1 2\n2 1 3\n2 2 4\n") << QStringList(Exceeded);
}

void TestAsciiIrregular::asManyPointsAsTheEstimate()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, rows);
    Reading result;
    result.options = size(8, 8, 3);
    read(text, result);
    QVERIFY(result.stored);
    QCOMPARE(result.points.count, 3);
    QCOMPARE(result.rows, rows);
}

void TestAsciiIrregular::theEstimateIsReachedAtAHundredRows()
{
    for (const int bad : {99, 100}) {
        Reading result;
        result.options = size(8, 8, 1);
        read(QByteArray("x\n").repeated(bad) + "1 1 1\n2 2 2\n", result);
        QCOMPARE(result.rows.size(), 101);
        QCOMPARE(result.rows[99] == Exceeded, bad == 99);
        QCOMPARE(result.rows[100], QStringLiteral("Number of error messages exceeded."));
    }
}

void TestAsciiIrregular::allPointsOnOneLineOfX()
{
    Reading result;
    result.options = size(8, 8);
    read("3 0 1\n3 1 2\n3 2 3\n", result);
    QVERIFY(!result.stored);
    QCOMPARE(result.rows,
             QStringList(QStringLiteral("Not a single valid line encountered.")));
}

void TestAsciiIrregular::oneOrTwoPointsGiveAZeroImage_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("two") << QByteArray("1 1 50\n2 2 60\n");
    QTest::newRow("one, and the extent of a word") << QByteArray("word\n2 2 60\n");
}

void TestAsciiIrregular::oneOrTwoPointsGiveAZeroImage()
{
    QFETCH(QByteArray, text);
    const ElevationImage image = convert(text, size(8, 6));
    QCOMPARE(image.size(), QSize(8, 6));
    QVERIFY(isFlat(image));
}

void TestAsciiIrregular::aPlaneIsFilled()
{
    // z = 1000 x + 100 y over a square of 10.
    const ElevationImage image =
        convert("0 0 0\n10 0 10000\n0 10 1000\n10 10 11000\n", size(10, 10));
    for (int y = 1; y < 9; ++y)
        for (int x = 1; x < 9; ++x) {
            const int expected = 1000 * x + 100 * (9 - y);
            QVERIFY(std::abs(at(image, x, y) - expected) <= 1); // the shift
        }
}

void TestAsciiIrregular::aWideImageIsFilledAsFarAsItIsHigh()
{
    const ElevationImage image =
        convert("0 0 500\n10 0 500\n0 10 500\n10 10 500\n", size(100, 50));
    for (int y = 0; y < 50; ++y) {
        QCOMPARE(at(image, 49, y), 500);
        for (int x = 50; x < 100; ++x)
            QCOMPARE(at(image, x, y), 0);
    }
}

void TestAsciiIrregular::aScaleOfZeroIsFlat()
{
    AsciiIrregularOptions options = size(10, 10);
    options.zScale = 0;
    QVERIFY(isFlat(convert("0 0 5\n10 0 6\n0 10 7\n10 10 8\n", options)));
}

void TestAsciiIrregular::stoppedWorkGivesNothing()
{
    class Never final : public Progress {
        [[nodiscard]] bool step(qint64, qint64) override { return false; }
    };
    Never never;
    QBuffer in;
    in.setData(QByteArray("1 1 1\n").repeated(2000));
    in.open(QIODevice::ReadOnly);
    Reading result;
    result.options = size(8, 6);
    QVERIFY(readScatteredPoints(in, result.options, never).error().stopped);
    read("1 1 50\n2 2 60\n2 1 5\n", result);
    const auto image = fillScatteredPoints(result.points, result.options, never);
    QVERIFY(image.error().stopped);
    QCOMPARE(image.error().code, 0);
}

void TestAsciiIrregular::oddInputGivesNoPointsOrNoHeights_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("points");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("junk") << QByteArray("\x7F"
                                        "ELF\0\1\2 \xFF \xFE\n\0 \0 \0\n",
                                        17)
                          << 0;
    // The extent is infinite, and so no place in it is a number.
    QTest::newRow("infinite") << QByteArray("1 2 3\n1e400 5 6\n7 8 9\n-inf 3 3\n") << 0;
    QTest::newRow("huge") << QByteArray("1e308 1 1\n-1e308 1e308 2\n0 -1e308 3\n5 5 1\n")
                          << 0;
    // There is no extent.
    QTest::newRow("all equal") << QByteArray("5 5 1\n").repeated(20) << 0;
    // The triangle's plane is no number, and that is stored as 0.
    QTest::newRow("no numbers")
        << QByteArray("nan nan nan\n1 2 nan\n5 3 inf\n3 9 1\n") << 3;
    // No triangle lies between points of one line.
    QTest::newRow("on a diagonal")
        << QByteArray("0 0 1\n1 1 2\n2 2 3\n3 3 4\n4 4 5\n") << 5;
    // Numbers of that size are multiples of 2 to the 24th: nothing is left to store.
    QTest::newRow("huge heights")
        << QByteArray("0 0 1e300\n9 0 -1e300\n0 9 1e305\n9 9 1\n") << 4;
}

void TestAsciiIrregular::oddInputGivesNoPointsOrNoHeights()
{
    QFETCH(QByteArray, text);
    QFETCH(int, points);
    Reading result;
    result.options = size(16, 16);
    read(text, result);
    QCOMPARE(result.points.count, points);
    QCOMPARE(result.stored, points > 0);
    QCOMPARE(result.rows.isEmpty(), points > 0);
    ElevationImage image;
    if (points == 0) {
        QCOMPARE(result.rows.constFirst(),
                 QStringLiteral("Not a single valid line encountered."));
        return;
    }
    NoProgress unwatched;
    image = *fillScatteredPoints(result.points, result.options, unwatched);
    QCOMPARE(image.size(), QSize(16, 16));
    QVERIFY(isFlat(image));
}

QTEST_APPLESS_MAIN(TestAsciiIrregular)
#include "test_asciiirregular.moc"

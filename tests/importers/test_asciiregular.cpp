#include "importers/asciiregular.h"
#include "raster/elevationimage.h"

#include <QBuffer>
#include <QTest>

namespace {

struct Conversion {
    bool stored = false;
    ElevationImage image;
    QStringList rows;

    // Steps of the pixel, row counted from the top.
    [[nodiscard]] int at(int x, int y) const
    {
        return ElevationImage::stepsOf(image.pixel(x, y));
    }
};

// Scans and converts; the proposed size unless another is given.
Conversion convert(const QByteArray &text, AsciiRegularOptions options = {})
{
    QBuffer in;
    in.setData(text);
    in.open(QIODevice::ReadOnly);
    NoProgress unwatched;
    if (options.boundaries == MeshBoundaries())
        (void)scanTextMesh(in, options.skip, options.boundaries, unwatched);
    const MeshBoundaries &b = options.boundaries;
    if (options.width == 0)
        options.width = proposedSide(b.minX, b.maxX, 16384);
    if (options.height == 0)
        options.height = proposedSide(b.minY, b.maxY, 16384);
    in.seek(0);
    const Result<AsciiRegularMesh> mesh = convertAsciiRegular(in, options, unwatched);
    return {mesh->hasPoints, mesh->image, mesh->rows};
}

} // namespace

class TestAsciiRegular : public QObject {
    Q_OBJECT

private slots:
    void eachGridPointMeetsOnePixel();
    void theSmallestYIsTheLastRow();
    void aSingleTripleIsOnePixel();
    void anEmptyFileStoresNothing();
    void theProposedSizeIsClamped_data();
    void theProposedSizeIsClamped();
    void aLaterTripleOverwritesAnEarlierOne();
    void pointsOutsideTheBoundariesArePassedOver();
    void theRightEdgeCountsAsStored();
    void elevationsAreScaledAndWrap();
    void shortLinesAreListedAndBlankOnesOnlyCounted();
    void skipsMoreLinesThanThereAre();
    void whatIsNoNumberEnds();
};

void TestAsciiRegular::eachGridPointMeetsOnePixel()
{
    QByteArray text;
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 5; ++x)
            text += QByteArray::number(100 + x) + ' ' + QByteArray::number(-3 + y) + ' ' +
                    QByteArray::number(10 * y + x) + '\n';
    const Conversion c = convert(text);
    QVERIFY(c.stored);
    QCOMPARE(c.image.size(), QSize(5, 7));
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 5; ++x)
            QCOMPARE(c.at(x, 6 - y), 10 * y + x);
}

void TestAsciiRegular::theSmallestYIsTheLastRow()
{
    const Conversion c = convert("0 0 1\n0 1 2\n");
    QCOMPARE(c.at(0, 1), 1);
    QCOMPARE(c.at(0, 0), 2);
}

void TestAsciiRegular::aSingleTripleIsOnePixel()
{
    const Conversion c = convert("5.5 7.5 -3 99\n");
    QCOMPARE(c.image.size(), QSize(1, 1));
    QCOMPARE(c.at(0, 0), -3);
}

void TestAsciiRegular::anEmptyFileStoresNothing()
{
    const Conversion c = convert("");
    QVERIFY(!c.stored);
    QCOMPARE(c.rows, QStringList({QStringLiteral("Not a single valid line encountered."),
                                  QStringLiteral("No output file was written.")}));
}

void TestAsciiRegular::theProposedSizeIsClamped_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("side");
    QTest::newRow("grid") << 0.0 << 511.0 << 512;
    QTest::newRow("half up") << 0.0 << 9.5 << 11; // 9.5 + 1 + 0.5
    QTest::newRow("just below half") << 0.0 << 9.49 << 10;
    QTest::newRow("point") << 3.0 << 3.0 << 1;
    QTest::newRow("untouched") << 2147483647.0 << -2147483647.0 << 1;
    QTest::newRow("wide") << 0.0 << 1e300 << 16384;
    const double infinite = std::numeric_limits<double>::infinity();
    QTest::newRow("infinite") << -infinite << infinite << 16384;
    QTest::newRow("no number") << infinite << infinite << 1;
}

void TestAsciiRegular::theProposedSizeIsClamped()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(int, side);
    QCOMPARE(proposedSide(lowest, highest, 16384), side);
}

void TestAsciiRegular::aLaterTripleOverwritesAnEarlierOne()
{
    AsciiRegularOptions options;
    options.width = 2;
    options.height = 1;
    // u = x * 2 / 4: 0, 0.5, 1, 1.5, so the columns are 0, 1, 1 and 2.
    const Conversion c = convert("0 0 1\n1 0 2\n2 0 3\n3 0 4\n", options);
    QCOMPARE(c.at(0, 0), 1);
    QCOMPARE(c.at(1, 0), 3);
}

void TestAsciiRegular::pointsOutsideTheBoundariesArePassedOver()
{
    AsciiRegularOptions options;
    options.boundaries = {0, 1, 1, 0};
    const Conversion c = convert("-1 0 5\n3 0 6\n0 -1 7\n0 3 8\n1 1 9\n", options);
    QVERIFY(c.stored);
    QCOMPARE(c.rows, QStringList());
    QCOMPARE(c.at(1, 0), 9);
    QCOMPARE(c.at(0, 0), 0);
    QCOMPARE(c.at(0, 1), 0);
}

void TestAsciiRegular::theRightEdgeCountsAsStored()
{
    AsciiRegularOptions options;
    options.boundaries = {0, 1, 1, 0};
    // u = 2 = width: beside the image, and yet a point.
    const Conversion c = convert("2 0 5\n", options);
    QVERIFY(c.stored);
    QCOMPARE(c.at(0, 1), 0);
    QCOMPARE(c.at(1, 1), 0);
}

void TestAsciiRegular::elevationsAreScaledAndWrap()
{
    AsciiRegularOptions options;
    options.zScale = 256;
    const Conversion c =
        convert("0 0 1.5\n1 0 -0.01\n2 0 32768\n3 0 1e400\n4 0 nan\n", options);
    QCOMPARE(c.at(0, 0), 384);
    QCOMPARE(c.at(1, 0), -3);       // -2.56
    QCOMPARE(c.at(2, 0), -8388608); // 8388608 wraps
    QCOMPARE(c.at(3, 0), 0);
    QCOMPARE(c.at(4, 0), 0);
    options.zScale = 0;
    QCOMPARE(convert("0 0 1.5\n1 1 7\n", options).at(0, 1), 0);
}

void TestAsciiRegular::shortLinesAreListedAndBlankOnesOnlyCounted()
{
    const Conversion c = convert("words\n\n1 2\n  \n1 2 3\n");
    QCOMPARE(c.rows, QStringList({QStringLiteral("Line 0: only one item found."),
                                  QStringLiteral("Line 2: only two items found."),
                                  QStringLiteral("Line 3: only two items found.")}));
    const Conversion many = convert(QByteArray("x\n").repeated(500) + "1 2 3\n");
    QVERIFY(many.stored);
    QCOMPARE(many.rows.size(), 101);
    QCOMPARE(many.rows.back(), QStringLiteral("Number of error messages exceeded."));
}

void TestAsciiRegular::skipsMoreLinesThanThereAre()
{
    AsciiRegularOptions options;
    options.skip = 99;
    const Conversion c = convert("1 2 3\n4 5 6\n", options);
    QVERIFY(!c.stored);
    QCOMPARE(c.rows.size(), 2);
}

void TestAsciiRegular::whatIsNoNumberEnds()
{
    AsciiRegularOptions options;
    options.width = 10;
    options.height = 10;
    const Conversion c =
        convert("1e400 1 1\n-1e400 nan 2\ninf inf 3\n0 0 4\n1 1 5\n", options);
    QVERIFY(!c.stored); // all quotients by an infinite extent, or of it, fail
}

QTEST_APPLESS_MAIN(TestAsciiRegular)
#include "test_asciiregular.moc"

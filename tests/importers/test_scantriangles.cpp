#include "importers/scantriangles.h"
#include "raster/elevationimage.h"
#include "support/standardoutput.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

ElevationImage blank(int width, int height)
{
    ElevationImage image(width, height, QImage::Format_RGB888);
    image.clear(0xFF000000u);
    return image;
}

int at(const ElevationImage &image, int x, int y)
{
    return ElevationImage::stepsOf(image.pixel(x, y));
}

// The columns of a row that were written, as "first-last"; all must be one span.
QString span(const ElevationImage &image, int row)
{
    int first = -1, last = -2;
    for (int x = 0; x < image.width(); ++x)
        if (at(image, x, row) != 0) {
            if (first < 0)
                first = x;
            last = x;
        }
    for (int x = first; x >= 0 && x <= last; ++x)
        if (at(image, x, row) == 0)
            return QStringLiteral("broken");
    return first < 0 ? QStringLiteral("-") : QStringLiteral("%1-%2").arg(first).arg(last);
}

QStringList spans(const ElevationImage &image)
{
    QStringList all;
    for (int y = 0; y < image.height(); ++y)
        all << span(image, y);
    return all;
}

} // namespace

class TestScanTriangles : public QObject {
    Q_OBJECT

private slots:
    void aLevelBottomEdge();
    void aLevelTopEdge();
    void neitherEdgeIsLevel();
    void theOrderOfTheCornersDoesNotMatter();
    void aFlatTrianglePaintsOneSpan();
    void cornersOutsidePaintTheClampedRowsAndColumns();
    void noColumnBeyondTheHeightIsWritten();
    void aTallImageDropsColumnsBeyondItsWidth();
    void theValueIsThePlaneThroughTheCorners();
    void threeLinesGoToStandardOutput();
    void manyTrianglesKeepTheirOrderInTheOutput();
    void whatIsNoNumberHasItsPlace_data();
    void whatIsNoNumberHasItsPlace();
    void noImageIsNoAccident();
    void almostEqualEndsAtAHundredThousandth();
};

void TestScanTriangles::aLevelBottomEdge()
{
    ElevationImage image = blank(8, 8);
    // Smallest y at rows 1; the edges run from x = 1 and x = 5 to x = 3 at row 5.
    QCOMPARE(scanOneTriangle(1, 1, 9, 5, 1, 9, 3, 5, 9, &image), 1);
    // Row 5: 3; row 4: 2.5 to 3.5 rounds to 3 and 4; row 3: 2 to 4; row 2: 1.5, 4.5.
    QCOMPARE(spans(image),
             QStringList({"-", "1-5", "2-5", "2-4", "3-4", "3-3", "-", "-"}));
}

void TestScanTriangles::aLevelTopEdge()
{
    ElevationImage image = blank(8, 8);
    scanOneTriangle(1, 5, 9, 5, 5, 9, 3, 1, 9, &image);
    // The level edge is the upper part; the lower part begins a row below it.
    QCOMPARE(spans(image),
             QStringList({"-", "3-3", "3-4", "2-4", "2-5", "1-5", "-", "-"}));
}

void TestScanTriangles::neitherEdgeIsLevel()
{
    ElevationImage image = blank(8, 8);
    // Left edge x = 0 from row 0 to 6, by way of (6, 3).
    scanOneTriangle(0, 0, 9, 6, 3, 9, 0, 6, 9, &image);
    QCOMPARE(spans(image),
             QStringList({"0-0", "0-2", "0-4", "0-6", "0-4", "0-2", "0-0", "-"}));
}

void TestScanTriangles::theOrderOfTheCornersDoesNotMatter()
{
    const double x[] = {1, 14, 6}, y[] = {2, 7, 13}, z[] = {5, 5, 5};
    int order[] = {0, 1, 2};
    ElevationImage first = blank(16, 16);
    scanOneTriangle(x[0], y[0], z[0], x[1], y[1], z[1], x[2], y[2], z[2], &first);
    while (std::next_permutation(order, order + 3)) {
        const auto [a, b, c] = order;
        ElevationImage image = blank(16, 16);
        scanOneTriangle(x[a], y[a], z[a], x[b], y[b], z[b], x[c], y[c], z[c], &image);
        QVERIFY(image == first);
    }
}

void TestScanTriangles::aFlatTrianglePaintsOneSpan()
{
    ElevationImage image = blank(8, 8);
    // z = 4 + y / y's tiny spread would explode; equal heights keep it.
    scanOneTriangle(2, 4, 7, 6, 4.000005, 7, 3, 4.000002, 7, &image);
    QCOMPARE(spans(image), QStringList({"-", "-", "-", "-", "2-6", "-", "-", "-"}));
}

void TestScanTriangles::cornersOutsidePaintTheClampedRowsAndColumns()
{
    ElevationImage above = blank(8, 8);
    scanOneTriangle(-30, -40, 9, -5, -45, 9, -20, -10, 9, &above);
    QCOMPARE(spans(above), QStringList({"0-0", "-", "-", "-", "-", "-", "-", "-"}));
    ElevationImage below = blank(8, 8);
    scanOneTriangle(70, 60, 9, 90, 66, 9, 80, 90, 9, &below);
    // On row 7 the edges, prolonged, stand at x = 115 and 52 for the upper part, at
    // -107 and 52 for the lower.
    QCOMPARE(spans(below), QStringList({"-", "-", "-", "-", "-", "-", "-", "0-7"}));
}

void TestScanTriangles::noColumnBeyondTheHeightIsWritten()
{
    ElevationImage image = blank(100, 50);
    scanOneTriangle(0, 0, 9, 99, 0, 9, 99, 49, 9, &image);
    for (int y = 0; y < 50; ++y)
        QVERIFY(span(image, y).endsWith(QStringLiteral("-49")));
}

void TestScanTriangles::aTallImageDropsColumnsBeyondItsWidth()
{
    ElevationImage image = blank(10, 40);
    scanOneTriangle(0, 5, 9, 30, 5, 9, 0, 35, 9, &image);
    QCOMPARE(span(image, 10), QStringLiteral("0-9"));
}

void TestScanTriangles::theValueIsThePlaneThroughTheCorners()
{
    ElevationImage image = blank(12, 12);
    // z = 100 + 3 x - 2 y
    scanOneTriangle(0, 0, 100, 11, 0, 133, 0, 11, 78, &image);
    for (int y = 0; y < 11; ++y)
        for (int x = 0; x < 11 - y; ++x)
            QCOMPARE(at(image, x, y), 100 + 3 * x - 2 * y);
}

void TestScanTriangles::threeLinesGoToStandardOutput()
{
    ElevationImage image = blank(8, 8);
    const QByteArray lines = standardOutputOf(
        [&] { scanOneTriangle(1.5, 6, 1, -2, 3, 1, 1e7, 4.25, 1, &image); });
    QCOMPARE(lines, QByteArray("p1: -2.000000\t3.000000\n"
                               "p2: 10000000.000000\t4.250000\n"
                               "p3: 1.500000\t6.000000\n"));
}

void TestScanTriangles::manyTrianglesKeepTheirOrderInTheOutput()
{
    constexpr int Count = 5000;
    CDoubleMatrix points;
    CDoubleVector z;
    CIntMatrix triangles;
    QVERIFY(points.Allocate(Count + 2, 2) && z.Allocate(Count + 2) &&
            triangles.Allocate(Count, 3));
    QByteArray expected;
    for (int i = 0; i < Count + 2; ++i) {
        points.rows[i][0] = i % 7;
        points.rows[i][1] = i;
        z.data[i] = 1;
    }
    for (int t = 0; t < Count; ++t)
        for (int k = 0; k < 3; ++k) {
            triangles.rows[t][k] = t + k;
            expected += "p" + QByteArray::number(k + 1) + ": " +
                        QByteArray::number((t + k) % 7) + ".000000\t" +
                        QByteArray::number(t + k) + ".000000\n";
        }
    ElevationImage image = blank(8, 8);
    const QByteArray lines = standardOutputOf(
        [&] { QCOMPARE(ScanTriangles(&points, &z, &triangles, Count, &image), 1); });
    QVERIFY(lines == expected);
}

// A position that is no number counts as 0 and one beyond an end as that end; a height
// that cannot be stored is stored as 0. What the triangle does not reach stays as it was.
void TestScanTriangles::whatIsNoNumberHasItsPlace_data()
{
    const double none = std::nan("");
    const double infinite = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("odd");
    QTest::addColumn<QString>(
        "oneCoordinateEach"); // pixels that are written: row:columns
    QTest::addColumn<QString>("nothingElse");
    QTest::newRow("no number") << none << "0:0-0 1:0-0 2:0-0 3:0-0"
                               << "0:0-0";
    QTest::newRow("infinite") << infinite << "1:7-7 2:7-7 3:0-0 4:0-0 5:0-0 6:0-0 7:0-0"
                              << "7:0-0";
    QTest::newRow("infinite below zero") << -infinite << "0:0-0 1:0-0 2:0-0 3:0-0"
                                         << "0:0-0";
    QTest::newRow("huge") << 1e300 << "1:7-7 2:7-7 3:3-7 4:3-7 5:3-7 6:3-7 7:3-7"
                          << "7:7-7";
    QTest::newRow("huge below zero") << -1e300 << "0:0-3 1:0-3 2:0-3 3:3-3"
                                     << "0:0-0";
}

void TestScanTriangles::whatIsNoNumberHasItsPlace()
{
    QFETCH(double, odd);
    constexpr int Before = 7;
    // Which pixels a triangle of odd numbers has written; all of them hold 0.
    const auto writtenBy = [](const std::array<double, 9> &c) {
        ElevationImage image = blank(8, 8);
        image.clear(0xFF000000u + Before);
        standardOutputOf([&] {
            scanOneTriangle(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], &image);
        });
        QStringList rows;
        for (int y = 0; y < image.height(); ++y) {
            ElevationImage row = blank(image.width(), 1);
            for (int x = 0; x < image.width(); ++x) {
                const int stored = at(image, x, y);
                row.setElevation(x, 0, stored == 0 ? 1 : stored == Before ? 0 : 1000);
            }
            if (span(row, 0) != QStringLiteral("-"))
                rows << QStringLiteral("%1:%2").arg(y).arg(span(row, 0));
        }
        return rows.join(' ');
    };
    QTEST(writtenBy({odd, 1, 1, 2, odd, 2, 3, 3, odd}), "oneCoordinateEach");
    QTEST(writtenBy({odd, odd, odd, odd, odd, odd, odd, odd, odd}), "nothingElse");
    // The places are those of any triangle when nothing but the heights is odd.
    QCOMPARE(writtenBy({1, 1, odd, 6, 2, odd, 3, 6, odd}),
             QString("1:1-1 2:1-6 3:2-5 4:2-5 5:3-4 6:3-3"));
}

void TestScanTriangles::noImageIsNoAccident()
{
    ElevationImage null;
    standardOutputOf(
        [&] { QCOMPARE(scanOneTriangle(0, 0, 1, 2, 0, 1, 0, 2, 1, &null), 1); });
    QVERIFY(null.isNull());
}

void TestScanTriangles::almostEqualEndsAtAHundredThousandth()
{
    QVERIFY(approxEqual(1, 1.000009));
    QVERIFY(approxEqual(-1.000009, -1));
    QVERIFY(!approxEqual(0, 0.00001));
    QVERIFY(!approxEqual(std::nan(""), 0));
}

QTEST_APPLESS_MAIN(TestScanTriangles)
#include "test_scantriangles.moc"

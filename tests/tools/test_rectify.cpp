#include "tools/rectify.h"

#include "raster/image.h"
#include "tools/images.h"
#include "tools/points.h"

#include <QTest>

namespace {

// Notes the rows, and stops at one.
class Rows : public Progress {
public:
    explicit Rows(qint64 last = -1) : m_last(last) {}
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        told << done;
        return Py_ == double(done) && of == 4 && done != m_last;
    }
    QList<qint64> told;

private:
    qint64 m_last;
};

// The rule itself, one pixel at a time.
QRgb plainPixel(Image &image, double px, double py)
{
    const auto squared = [px, py](double x, double y) {
        return (px - x) * (px - x) + (py - y) * (py - y);
    };
    const double qA = squared(Ax_, Ay_);
    const double qB = squared(Bx_, By_);
    const double qC = squared(Cx_, Cy_);
    const double qD = squared(Dx_, Dy_);
    if (qA == 0)
        return image.pixel(Ax, Ay);
    if (qB == 0)
        return image.pixel(Bx, By);
    if (qC == 0)
        return image.pixel(Cx, Cy);
    if (qD == 0)
        return image.pixel(Dx, Dy);
    const double s = 1 / qA + 1 / qB + 1 / qC + 1 / qD;
    const double wA = (1 / qA) / s;
    const double wB = (1 / qB) / s;
    const double wC = (1 / qC) / s;
    const double wD = (1 / qD) / s;
    return image.pixel(
        px + wA * (Ax_ - Ax) + wB * (Bx_ - Bx) + wC * (Cx_ - Cx) + wD * (Dx_ - Dx),
        py + wA * (Ay_ - Ay) + wB * (By_ - By) + wC * (Cy_ - Cy) + wD * (Dy_ - Dy));
}

QImage plainRectify(const QImage &source)
{
    Image image;
    static_cast<QImage &>(image) = source;
    QImage out(source.size(), QImage::Format_RGB32);
    for (int y = 0; y < out.height(); ++y)
        for (int x = 0; x < out.width(); ++x)
            out.setPixel(x, y, plainPixel(image, x, y));
    return out;
}

QImage rectified(const QImage &source)
{
    NoProgress unwatched;
    return rectify(source, unwatched)
        .value_or(QImage())
        .convertToFormat(QImage::Format_RGB32);
}

} // namespace

class TestRectify : public QObject {
    Q_OBJECT

private slots:
    void equalPairsKeepAllButTheLastColumnAndRow();
    void pointsThatAreAllZeroDisplaceNothing();
    void onADistortedPointItsCorrectedOneIsRead();
    void ofEqualDistortedPointsTheFirstCounts();
    void farPointsShiftByTheMeanDisplacement();
    void everyImageFollowsTheRule_data();
    void everyImageFollowsTheRule();
    void everyFormatFollowsTheRule_data() { images::addFormatRows(); }
    void everyFormatFollowsTheRule();
    void alphaIsMadeOpaque();
    void rowsAreToldBeforeTheyAreWorkedOn();
    void aNullImageGivesNull();
};

void TestRectify::equalPairsKeepAllButTheLastColumnAndRow()
{
    setCorrectedPoints({2, 1, 9, 2, 1, 7, 9, 8});
    setDistortedPoints({2, 1, 9, 2, 1, 7, 9, 8});
    const QImage image = images::noise(12, 10);
    const QImage out = rectified(image);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 12; ++x)
            QCOMPARE(out.pixel(x, y), image.pixel(std::min(x, 10), std::min(y, 8)));
}

void TestRectify::pointsThatAreAllZeroDisplaceNothing()
{
    setCorrectedPoints({});
    setDistortedPoints({});
    const QImage image = images::noise(6, 5);
    const QImage out = rectified(image);
    QCOMPARE(out.pixel(0, 0), image.pixel(0, 0));
    QCOMPARE(out.pixel(3, 2), image.pixel(3, 2));
    QCOMPARE(out.pixel(5, 4), image.pixel(4, 3));
}

void TestRectify::onADistortedPointItsCorrectedOneIsRead()
{
    setCorrectedPoints({1, 1, 7, 1, 1, 6, 7, 6});
    setDistortedPoints({2, 2, 6, 2, 2, 5, 6, 5});
    const QImage image = images::noise(10, 9);
    const QImage out = rectified(image);
    QCOMPARE(out.pixel(2, 2), image.pixel(1, 1));
    QCOMPARE(out.pixel(6, 2), image.pixel(7, 1));
    QCOMPARE(out.pixel(2, 5), image.pixel(1, 6));
    QCOMPARE(out.pixel(6, 5), image.pixel(7, 6));
}

void TestRectify::ofEqualDistortedPointsTheFirstCounts()
{
    setCorrectedPoints({0, 0, 1, 0, 2, 0, 3, 0});
    setDistortedPoints({9, 9, 4, 4, 4, 4, 4, 4});
    const QImage image = images::noise(8, 8);
    QCOMPARE(rectified(image).pixel(4, 4), image.pixel(1, 0));
}

void TestRectify::farPointsShiftByTheMeanDisplacement()
{
    // Displacements of 4, 0, 4 and 0 in x: a mean of 2, to within a thousandth.
    setCorrectedPoints({-100000, 3, 100000, 3, 3, -100000, 3, 100000});
    setDistortedPoints({-99996, 3, 100000, 3, 7, -100000, 3, 100000});
    QImage ramp(20, 4, QImage::Format_RGB32);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 20; ++x)
            ramp.setPixel(x, y, qRgb(10 * x, 0, 0));
    QVERIFY(qAbs(qRed(rectified(ramp).pixel(5, 1)) - 70) <= 1);
}

void TestRectify::everyImageFollowsTheRule_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("ordinary") << QSize(40, 30);
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("one column") << QSize(1, 17);
    QTest::newRow("one row") << QSize(17, 1);
    QTest::newRow("two pixels") << QSize(2, 1);
}

void TestRectify::everyImageFollowsTheRule()
{
    QFETCH(QSize, size);
    const QImage image = images::noise(size.width(), size.height());
    setCorrectedPoints({4, 3, 35, 4, 3, 26, 36, 27});
    setDistortedPoints({0, 0, 31, 9, 9, 21, 39, 22});
    QCOMPARE(rectified(image), plainRectify(image));
    setDistortedPoints({-2147483648.0, 2147483647.0, 1e5, -1e4, 0, 0, 5, 0});
    QCOMPARE(rectified(image), plainRectify(image));
}

void TestRectify::everyFormatFollowsTheRule()
{
    QFETCH(int, format);
    const QImage image = images::noise(14, 9).convertToFormat(QImage::Format(format));
    setCorrectedPoints({1, 1, 12, 1, 1, 8, 12, 8});
    setDistortedPoints({2, 3, 10, 1, 3, 7, 13, 8});
    QCOMPARE(rectified(image), plainRectify(image));
}

void TestRectify::alphaIsMadeOpaque()
{
    setCorrectedPoints({});
    setDistortedPoints({});
    const QImage out = rectified(images::plain(3, 3, qRgba(1, 2, 3, 0)));
    QCOMPARE(out.pixel(2, 2), qRgb(1, 2, 3));
}

void TestRectify::rowsAreToldBeforeTheyAreWorkedOn()
{
    Rows rows;
    QVERIFY(rectify(images::noise(3, 4), rows).has_value());
    QCOMPARE(rows.told, (QList<qint64>{0, 1, 2, 3}));
    rows = Rows(2);
    const Result<QImage> none = rectify(images::noise(3, 4), rows);
    QVERIFY(!none.has_value() && none.error().stopped);
    QCOMPARE(rows.told, (QList<qint64>{0, 1, 2}));
}

void TestRectify::aNullImageGivesNull() { QVERIFY(rectified(QImage()).isNull()); }

QTEST_GUILESS_MAIN(TestRectify)
#include "test_rectify.moc"

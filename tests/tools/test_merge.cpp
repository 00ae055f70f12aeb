#include "tools/merge.h"

#include "raster/image.h"
#include "tools/images.h"

#include <QTest>

namespace {

// Nobody watches; null where there is no result.
QImage merged(const QImage &first, const QImage &second, const MergeOptions &options)
{
    NoProgress unwatched;
    return merge(first, second, options, unwatched).value_or(QImage());
}

constexpr auto Add = MergeOptions::Mode::Add;
constexpr auto Multiply = MergeOptions::Mode::Multiply;

QRgb mergedPixel(QRgb first, QRgb second, const MergeOptions &options, qint64 *cut)
{
    const auto channel = [&options, cut](int a, int b) {
        const double merged = options.mode == Add
                                  ? b * options.bias2 + a * options.bias1
                                  : (b + options.bias2) * (a + options.bias1) / 255.0;
        const int whole = static_cast<int>(merged);
        *cut += whole < 0 || whole > 255 ? 1 : 0;
        return whole & 0xFF;
    };
    return qRgb(channel(qRed(first), qRed(second)),
                channel(qGreen(first), qGreen(second)),
                channel(qBlue(first), qBlue(second)));
}

// The rule itself, one pixel at a time.
QImage plainMerge(const QImage &first, const QImage &second, const MergeOptions &options,
                  qint64 *cut)
{
    Image stretched;
    static_cast<QImage &>(stretched) = second;
    QImage out(first.size(), QImage::Format_RGB888);
    const double rx = double(second.width()) / first.width();
    const double ry = double(second.height()) / first.height();
    for (int y = 0; y < first.height(); ++y)
        for (int x = 0; x < first.width(); ++x)
            out.setPixel(x, y,
                         mergedPixel(first.pixel(x, y), stretched.pixel(x * rx, y * ry),
                                     options, cut));
    return out;
}

void compareWithTheRule(const QImage &first, const QImage &second)
{
    for (const MergeOptions &options :
         {MergeOptions{Add, 0.3, 0.7}, MergeOptions{Add, -1.25, 200.0},
          MergeOptions{Multiply, -31.5, 255.0}}) {
        qint64 cut = 0;
        QCOMPARE(merged(first, second, options),
                 plainMerge(first, second, options, &cut));
    }
}

} // namespace

class TestMerge : public QObject {
    Q_OBJECT

private slots:
    void channelsAreAddedOrMultiplied_data();
    void channelsAreAddedOrMultiplied();
    void equalImagesAddedHalfAndHalfStayAsTheyAre();
    void cutChannelsAreCounted();
    void theSecondImageIsStretchedToTheFirst();
    void everyFormatFollowsTheBilinearRead_data() { images::addFormatRows(); }
    void everyFormatFollowsTheBilinearRead();
    void everySizeFollowsTheBilinearRead_data();
    void everySizeFollowsTheBilinearRead();
    void nullImagesGiveNull();
};

void TestMerge::channelsAreAddedOrMultiplied_data()
{
    QTest::addColumn<bool>("add");
    QTest::addColumn<double>("bias1");
    QTest::addColumn<double>("bias2");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<int>("expected");
    QTest::newRow("halves of 255") << true << 0.5 << 0.5 << 255 << 255 << 255;
    QTest::newRow("halves of 1") << true << 0.5 << 0.5 << 1 << 1 << 1;
    QTest::newRow("300 wraps") << true << 1.0 << 1.0 << 200 << 100 << 44;
    QTest::newRow("1.5 is cut") << true << 0.5 << 0.0 << 3 << 9 << 1;
    QTest::newRow("-1.5 is cut to -1") << true << -0.5 << 0.0 << 3 << 0 << 255;
    QTest::newRow("130050 wraps") << true << 255.0 << 255.0 << 255 << 255 << 2;
    QTest::newRow("product") << false << 0.0 << 0.0 << 100 << 51 << 20;
    QTest::newRow("30 * 51 / 255") << false << 10.0 << -5.0 << 20 << 56 << 6;
    QTest::newRow("-2 wraps") << false << -200.0 << 0.0 << 98 << 5 << 254;
}

void TestMerge::channelsAreAddedOrMultiplied()
{
    QFETCH(bool, add);
    QFETCH(double, bias1);
    QFETCH(double, bias2);
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(int, expected);
    const QImage both = merged(images::plain(3, 2, qRgba(first, first, first, 0)),
                               images::plain(3, 2, qRgb(second, second, second)),
                               {add ? Add : Multiply, bias1, bias2});
    QCOMPARE(both.format(), QImage::Format_RGB888);
    QCOMPARE(both.size(), QSize(3, 2));
    for (int i = 0; i < 6; ++i)
        QCOMPARE(both.pixel(i % 3, i / 3), qRgb(expected, expected, expected));
}

void TestMerge::equalImagesAddedHalfAndHalfStayAsTheyAre()
{
    const QImage image = images::noise(9, 8);
    const QImage both = merged(image, image, {});
    // The read holds back from the last column and row.
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 8; ++x)
            QCOMPARE(both.pixel(x, y), image.pixel(x, y));
}

// Every pair of bytes once.
void TestMerge::cutChannelsAreCounted()
{
    QImage first(256, 256, QImage::Format_RGB888);
    QImage second(first.size(), first.format());
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) {
            first.setPixel(x, y, qRgb(x, 0, 255));
            second.setPixel(x, y, qRgb(y, 0, 255));
        }
    for (const MergeOptions &options : {MergeOptions{}, MergeOptions{Add, 1.5, -0.75},
                                        MergeOptions{Multiply, -7, 90}}) {
        NoProgress unwatched;
        qint64 cut = -1;
        QVERIFY(merge(first, second, options, unwatched, &cut));
        qint64 expected = 0;
        const QImage whole = plainMerge(first, second, options, &expected);
        QVERIFY(!whole.isNull());
        QCOMPARE(cut, expected);
        QCOMPARE(cut > 0, options.bias1 != 0.5);
    }
}

void TestMerge::theSecondImageIsStretchedToTheFirst()
{
    const QImage black = images::plain(8, 1, qRgb(0, 0, 0));
    const QImage wide = images::row(
        {qRgb(10, 10, 10), qRgb(20, 20, 20), qRgb(40, 40, 40), qRgb(50, 50, 50)});
    const QImage both = merged(black, wide, {Add, 0.0, 1.0});
    QCOMPARE(both.size(), QSize(8, 1));
    QCOMPARE(both.pixel(0, 0), qRgb(10, 10, 10));
    QCOMPARE(both.pixel(1, 0), qRgb(15, 15, 15)); // read at 0.5
    QCOMPARE(both.pixel(3, 0), qRgb(30, 30, 30));
    QCOMPARE(both.pixel(5, 0), qRgb(40, 40, 40)); // 2.5 is held at 2
}

void TestMerge::everyFormatFollowsTheBilinearRead()
{
    QFETCH(int, format);
    compareWithTheRule(images::noise(13, 7, 5).convertToFormat(QImage::Format(format)),
                       images::noise(9, 16, 7).convertToFormat(QImage::Format(format)));
}

void TestMerge::everySizeFollowsTheBilinearRead_data()
{
    QTest::addColumn<QSize>("first");
    QTest::addColumn<QSize>("second");
    QTest::newRow("the same size") << QSize(13, 7) << QSize(13, 7);
    QTest::newRow("a whole ratio") << QSize(5, 4) << QSize(10, 12);
    QTest::newRow("whole columns only") << QSize(5, 4) << QSize(10, 5);
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(1, 1);
    QTest::newRow("one pixel stretched") << QSize(6, 5) << QSize(1, 1);
    QTest::newRow("one column") << QSize(6, 5) << QSize(1, 9);
    QTest::newRow("one row") << QSize(6, 5) << QSize(9, 1);
    QTest::newRow("onto one row") << QSize(6, 1) << QSize(9, 4);
}

void TestMerge::everySizeFollowsTheBilinearRead()
{
    QFETCH(QSize, first);
    QFETCH(QSize, second);
    compareWithTheRule(images::noise(first.width(), first.height(), 5),
                       images::noise(second.width(), second.height(), 7));
}

void TestMerge::nullImagesGiveNull()
{
    const QImage image = images::noise(2, 2);
    QVERIFY(merged(image, QImage(), {}).isNull());
    QVERIFY(merged(QImage(), image, {}).isNull());
}

QTEST_GUILESS_MAIN(TestMerge)
#include "test_merge.moc"

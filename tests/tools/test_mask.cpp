#include "tools/mask.h"

#include "tools/images.h"

#include <QTest>

namespace {

// Lays a mask over an image; nobody watches.
bool masked(QImage &image, const QImage &mask)
{
    NoProgress unwatched;
    const Result<QImage> done = applyMask(image, mask, unwatched);
    if (done)
        image = *done;
    return done.has_value();
}

} // namespace

class TestMask : public QObject {
    Q_OBJECT

private slots:
    void alphaTellsHowMuchComesThrough_data();
    void alphaTellsHowMuchComesThrough();
    void everyBlendIsTheFormulaCutTowardZero();
    void aMaskWithoutAlphaIsOpaque();
    void aMaskOfAnotherSizeIsStretched();
    void everyFormatOfImageTakesTheColours_data() { images::addFormatRows(); }
    void everyFormatOfImageTakesTheColours();
    void nullImagesAreRefused();
};

void TestMask::alphaTellsHowMuchComesThrough_data()
{
    QTest::addColumn<int>("base");
    QTest::addColumn<int>("over");
    QTest::addColumn<int>("alpha");
    QTest::addColumn<int>("expected");
    QTest::newRow("transparent") << 17 << 200 << 0 << 17;
    QTest::newRow("opaque") << 17 << 200 << 255 << 200;
    QTest::newRow("half upward") << 0 << 255 << 128 << 128;   // 128.5
    QTest::newRow("half downward") << 255 << 0 << 128 << 128; // -127.5 is cut to -127
    QTest::newRow("one step upward") << 99 << 100 << 255 << 100;
    QTest::newRow("one step downward") << 100 << 99 << 255 << 100; // -0.5 is cut to 0
}

void TestMask::alphaTellsHowMuchComesThrough()
{
    QFETCH(int, base);
    QFETCH(int, over);
    QFETCH(int, alpha);
    QFETCH(int, expected);
    QImage image = images::plain(3, 2, qRgba(base, base, base, 10));
    QVERIFY(masked(image, images::plain(3, 2, qRgba(over, over, over, alpha))));
    for (int i = 0; i < 6; ++i)
        QCOMPARE(image.pixel(i % 3, i / 3), qRgb(expected, expected, expected));
}

void TestMask::everyBlendIsTheFormulaCutTowardZero()
{
    const auto expected = [](int base, int over, int alpha) {
        return base + static_cast<int>((over - base) * alpha / 255.0 + 0.5);
    };
    QImage mask(256, 256, QImage::Format_ARGB32);
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int over = 0; over < 256; ++over)
            mask.setPixel(over, alpha, qRgba(over, over, over, alpha));
    for (int base = 0; base < 256; base += 5) {
        QImage image = images::plain(256, 256, qRgb(base, base, base));
        QVERIFY(masked(image, mask));
        for (int alpha = 0; alpha < 256; ++alpha)
            for (int over = 0; over < 256; ++over)
                QCOMPARE(qGreen(image.pixel(over, alpha)), expected(base, over, alpha));
    }
}

void TestMask::aMaskWithoutAlphaIsOpaque()
{
    QImage image = images::plain(5, 4, qRgb(0, 0, 0));
    QVERIFY(masked(image, images::plain(2, 2, qRgb(12, 34, 56), QImage::Format_RGB888)));
    for (int i = 0; i < 20; ++i)
        QCOMPARE(image.pixel(i % 5, i / 5), qRgb(12, 34, 56));
}

void TestMask::aMaskOfAnotherSizeIsStretched()
{
    QImage image = images::plain(8, 4, qRgb(0, 0, 0));
    QVERIFY(
        masked(image, images::row({qRgba(200, 100, 50, 0), qRgba(200, 100, 50, 255)})));
    QCOMPARE(image.size(), QSize(8, 4));
    QCOMPARE(image.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(image.pixel(7, 3), qRgb(200, 100, 50));
}

void TestMask::everyFormatOfImageTakesTheColours()
{
    QFETCH(int, format);
    QImage image =
        images::plain(6, 5, qRgb(0, 0, 0)).convertToFormat(QImage::Format(format));
    QVERIFY(masked(image, images::plain(1, 1, qRgb(201, 102, 53))));
    for (int i = 0; i < 30; ++i)
        QCOMPARE(image.pixel(i % 6, i / 6), qRgb(201, 102, 53));
}

void TestMask::nullImagesAreRefused()
{
    QImage image = images::noise(2, 2);
    QVERIFY(!masked(image, QImage()));
    QImage none;
    QVERIFY(!masked(none, image));
}

QTEST_GUILESS_MAIN(TestMask)
#include "test_mask.moc"

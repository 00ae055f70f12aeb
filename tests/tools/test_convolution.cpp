#include "tools/convolution.h"

#include "tools/images.h"

#include <QTest>

#include <array>

namespace {

// Nobody watches; null where there is no result.
QImage convolved(const QImage &image, const QImage &kernel)
{
    NoProgress unwatched;
    return convolve(image, kernel, unwatched).value_or(QImage());
}

// The rule itself, one pixel at a time.
QRgb plainPixel(const QImage &image, const QImage &kernel, int x, int y, qint64 *cut)
{
    std::array<int, 3> values{};
    std::array<int, 3> weights{};
    for (int ky = 0; ky < kernel.height(); ++ky) {
        for (int kx = 0; kx < kernel.width(); ++kx) {
            const int sx = x - kernel.width() / 2 + kx;
            const int sy = y - kernel.height() / 2 + ky;
            if (!image.valid(sx, sy))
                continue;
            for (int channel = 0; channel < 3; ++channel) {
                const int shift = 16 - 8 * channel;
                const int k = int(kernel.pixel(kx, ky) >> shift & 0xFF) - 128;
                values[channel] += int(image.pixel(sx, sy) >> shift & 0xFF) * k;
                weights[channel] += k;
            }
        }
    }
    const auto byte = [&](int c) {
        const int whole =
            weights[c] ? static_cast<int>(double(values[c]) / weights[c]) : 0;
        *cut += whole < 0 || whole > 255 ? 1 : 0;
        return whole & 0xFF;
    };
    return qRgb(byte(0), byte(1), byte(2));
}

QImage plainConvolution(const QImage &image, const QImage &kernel, qint64 *cut = nullptr)
{
    qint64 beyond = 0;
    QImage out(image.size(), QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            out.setPixel(x, y, plainPixel(image, kernel, x, y, &beyond));
    if (cut != nullptr)
        *cut = beyond;
    return out;
}

QImage grayKernel(const QSize &size, int value)
{
    return images::plain(size.width(), size.height(), qRgb(value, value, value));
}

} // namespace

class TestConvolution : public QObject {
    Q_OBJECT

private slots:
    void aKernelOfOnePixelKeepsOrBlackens();
    void kernelsUpTo16384PixelsFit();
    void aGrayKernelIsABoxBlurThatRenormalisesAtTheEdges();
    void weightsThatCancelGiveBlackInsideAndWrapAtTheEdges();
    void evenKernelsAreCentredRightAndBelow();
    void everyKernelFollowsTheRule_data();
    void everyKernelFollowsTheRule();
    void cutQuotientsAreCounted();
    void everyFormatFollowsTheRule_data() { images::addFormatRows(); }
    void everyFormatFollowsTheRule();
    void nullImagesGiveNull();
};

void TestConvolution::aKernelOfOnePixelKeepsOrBlackens()
{
    const QImage image = images::noise(5, 4);
    const QImage out = convolved(image, images::plain(1, 1, qRgb(129, 128, 0)));
    QCOMPARE(out.format(), QImage::Format_RGB888);
    for (int i = 0; i < 20; ++i) {
        const QRgb c = image.pixel(i % 5, i / 5);
        QCOMPARE(out.pixel(i % 5, i / 5), qRgb(qRed(c), 0, qBlue(c)));
    }
}

void TestConvolution::kernelsUpTo16384PixelsFit()
{
    QVERIFY(kernelFits({128, 128}));
    QVERIFY(!kernelFits({129, 128}));
    QVERIFY(kernelFits({1, 16384}));
    QVERIFY(!kernelFits({16385, 1}));
    QVERIFY(!kernelFits({65536, 65536}));
    const QImage image = images::noise(3, 3);
    QVERIFY(convolved(image, grayKernel({129, 128}, 200)).isNull());
}

void TestConvolution::aGrayKernelIsABoxBlurThatRenormalisesAtTheEdges()
{
    QImage image(3, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(10, 10, 10));
    image.setPixel(1, 0, qRgb(20, 20, 20));
    image.setPixel(2, 0, qRgb(90, 90, 90));
    const QImage out = convolved(image, grayKernel({3, 3}, 200));
    QCOMPARE(qRed(out.pixel(0, 0)), 15); // 30 / 2
    QCOMPARE(qRed(out.pixel(1, 0)), 40); // 120 / 3
    QCOMPARE(qRed(out.pixel(2, 0)), 55); // 110 / 2
}

void TestConvolution::weightsThatCancelGiveBlackInsideAndWrapAtTheEdges()
{
    // Weights -1, 0, 1.
    const QImage kernel =
        images::row({qRgb(127, 127, 127), qRgb(128, 128, 128), qRgb(129, 129, 129)});
    const QImage image = images::row({qRgb(5, 5, 5), qRgb(7, 7, 7), qRgb(30, 30, 30)});
    const QImage out = convolved(image, kernel);
    QCOMPARE(qRed(out.pixel(0, 0)), 7); // 7 / 1
    QCOMPARE(qRed(out.pixel(1, 0)), 0); // weights sum to 0
    QCOMPARE(qRed(out.pixel(2, 0)), 7); // -7 / -1
    // Weights -2, 3: S / T = (-2 * 100 + 3 * 10) / 1 = -170, low byte 86.
    const QImage uneven = images::row({qRgb(126, 126, 126), qRgb(131, 131, 131)});
    const QImage steep = images::row({qRgb(100, 100, 100), qRgb(10, 10, 10)});
    QCOMPARE(qRed(convolved(steep, uneven).pixel(1, 0)), 86);
}

void TestConvolution::evenKernelsAreCentredRightAndBelow()
{
    // The one weight, at kernel pixel 0 of 2, lies on the left neighbour.
    const QImage kernel = images::row({qRgb(129, 129, 129), qRgb(128, 128, 128)});
    const QImage image = images::row({qRgb(5, 5, 5), qRgb(7, 7, 7), qRgb(9, 9, 9)});
    const QImage out = convolved(image, kernel);
    QCOMPARE(qRed(out.pixel(0, 0)), 0); // the weight falls outside
    QCOMPARE(qRed(out.pixel(1, 0)), 5);
    QCOMPARE(qRed(out.pixel(2, 0)), 7);
}

void TestConvolution::everyKernelFollowsTheRule_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<QSize>("kernel");
    QTest::newRow("odd") << QSize(20, 13) << QSize(7, 5);
    QTest::newRow("even") << QSize(20, 13) << QSize(4, 6);
    QTest::newRow("larger than the image") << QSize(6, 5) << QSize(31, 17);
    QTest::newRow("much larger") << QSize(3, 2) << QSize(128, 128);
    QTest::newRow("a column") << QSize(4, 9) << QSize(1, 16384);
    QTest::newRow("a row") << QSize(9, 4) << QSize(16384, 1);
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(3, 3);
    QTest::newRow("one column of pixels") << QSize(1, 12) << QSize(3, 5);
    QTest::newRow("one row of pixels") << QSize(12, 1) << QSize(5, 3);
}

void TestConvolution::everyKernelFollowsTheRule()
{
    QFETCH(QSize, image);
    QFETCH(QSize, kernel);
    const QImage pixels = images::noise(image.width(), image.height(), 3);
    const QImage weights = images::noise(kernel.width(), kernel.height(), 4);
    QCOMPARE(convolved(pixels, weights), plainConvolution(pixels, weights));
    // The largest sums that there are.
    const QImage white = grayKernel(image, 255);
    const QImage black = grayKernel(kernel, 0);
    QCOMPARE(convolved(white, black), plainConvolution(white, black));
}

void TestConvolution::cutQuotientsAreCounted()
{
    const QImage pixels = images::noise(31, 17, 3);
    NoProgress unwatched;
    qint64 cut = -1;
    QVERIFY(convolve(pixels, grayKernel({5, 4}, 200), unwatched, &cut));
    QCOMPARE(cut, qint64(0)); // means of bytes are bytes
    const QImage weights = images::noise(5, 4, 4);
    qint64 expected = 0;
    QVERIFY(!plainConvolution(pixels, weights, &expected).isNull());
    QVERIFY(expected > 0);
    QVERIFY(convolve(pixels, weights, unwatched, &cut));
    QCOMPARE(cut, expected);
}

void TestConvolution::everyFormatFollowsTheRule()
{
    QFETCH(int, format);
    const QImage pixels = images::noise(9, 8, 3).convertToFormat(QImage::Format(format));
    const QImage weights = images::noise(3, 4, 4).convertToFormat(QImage::Format(format));
    QCOMPARE(convolved(pixels, weights), plainConvolution(pixels, weights));
}

void TestConvolution::nullImagesGiveNull()
{
    const QImage image = images::noise(2, 2);
    QVERIFY(convolved(QImage(), image).isNull());
    QVERIFY(convolved(image, QImage()).isNull());
}

QTEST_GUILESS_MAIN(TestConvolution)
#include "test_convolution.moc"

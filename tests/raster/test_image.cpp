#include "raster/image.h"

#include <QTest>
#include <QtNumeric>

namespace {

// Pixel (x, y) is 10 * x red, 10 * y green, 200 blue, half transparent.
Image gradient(int width, int height)
{
    Image image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgba(10 * x, 10 * y, 200, 0x80));
    return image;
}

} // namespace

class TestImage : public QObject {
    Q_OBJECT

private slots:
    void positionIsHeldInsideAndMixed_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<QRgb>("colour");
        QTest::newRow("far outside") << -5.0 << 1e9 << qRgb(0, 80, 200);
        QTest::newRow("beyond right and top") << 1e300 << -1e300 << qRgb(80, 0, 200);
        QTest::newRow("on a pixel") << 3.0 << 4.0 << qRgb(30, 40, 200);
        QTest::newRow("between four") << 3.5 << 4.25 << qRgb(35, 42, 200); // 42.5 cut
        QTest::newRow("last column is out of reach") << 9.0 << 0.0 << qRgb(80, 0, 200);
        QTest::newRow("no number") << qQNaN() << 2.0 << qRgb(0, 20, 200);
    }
    void positionIsHeldInsideAndMixed()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(QRgb, colour);
        Image image = gradient(10, 10);
        QCOMPARE(image.pixel(x, y), colour);
    }

    void tinyPicturesDoNotReadBeyondTheirEdge()
    {
        Image one = gradient(1, 1);
        QCOMPARE(one.pixel(0.5, 0.5), qRgb(0, 0, 200));
        Image column = gradient(1, 3);
        QCOMPARE(column.pixel(7.0, 1.0), qRgb(0, 10, 200));
        Image none;
        QCOMPARE(none.pixel(0.0, 0.0), qRgb(0, 0, 0));
    }
};

QTEST_GUILESS_MAIN(TestImage)
#include "test_image.moc"

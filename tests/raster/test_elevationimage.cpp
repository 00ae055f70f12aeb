#include "raster/elevationimage.h"

#include <QTest>

class TestElevationImage : public QObject {
    Q_OBJECT

private slots:
    void pixelsDecodeAsTwosComplement_data()
    {
        QTest::addColumn<QRgb>("pixel");
        QTest::addColumn<double>("elevation");
        QTest::newRow("highest") << qRgb(0x7F, 0xFF, 0xFF) << 8388607.0;
        QTest::newRow("lowest") << qRgb(0x80, 0, 0) << -8388608.0;
        QTest::newRow("minus one") << qRgb(0xFF, 0xFF, 0xFF) << -1.0;
        QTest::newRow("black") << qRgb(0, 0, 0) << 0.0;
    }
    void pixelsDecodeAsTwosComplement()
    {
        QFETCH(QRgb, pixel);
        QFETCH(double, elevation);
        ElevationImage image(1, 1, QImage::Format_RGB888);
        image.clear(pixel);
        QCOMPARE(image.elevation(0, 0), elevation);
    }

    void storingRoundsAndWraps_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<QRgb>("pixel");
        QTest::newRow("half up") << 2.5 << QRgb(0xFF000003);
        QTest::newRow("half down") << -2.5 << QRgb(0xFFFFFFFD);
        QTest::newRow("wraps") << 8388608.0 << QRgb(0xFF800000);
        QTest::newRow("wraps twice") << 33554435.0 << QRgb(0xFF000003);
        QTest::newRow("beyond 32 bits") << -1099511627777.0 << QRgb(0xFFFFFFFF);
        QTest::newRow("infinite") << qInf() << QRgb(0xFF000000);
    }
    void storingRoundsAndWraps()
    {
        QFETCH(double, stored);
        QFETCH(QRgb, pixel);
        ElevationImage image(1, 1, QImage::Format_RGB888);
        image.setElevation(0, 0, stored);
        QCOMPARE(image.pixel(0, 0), pixel);
    }

    void readingFlipsRowsAndStoringDoesNot()
    {
        ElevationImage image(1, 2, QImage::Format_RGB888);
        image.clear(0xFF000000);
        image.setElevation(0, 0, 7.0);
        QCOMPARE(image.elevation(0, 0), 0.0); // bottom row
        QCOMPARE(image.elevation(0, 1), 7.0); // top row
    }

    void lastColumnAndBottomRowCountAsOutside()
    {
        ElevationImage image(3, 3, QImage::Format_RGB888);
        image.clear(0xFF000005);
        QCOMPARE(image.elevation(1.0, 2.0), 5.0);
        QCOMPARE(image.elevation(1.0, 0.0), 0.0);
        QCOMPARE(image.elevation(2.0, 1.0), 0.0);
    }
};

QTEST_GUILESS_MAIN(TestElevationImage)
#include "test_elevationimage.moc"

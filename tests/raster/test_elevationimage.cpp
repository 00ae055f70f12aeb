#include "raster/elevationimage.h"

#include "base/vectors.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtNumeric>

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

    void bilinearReadMixesTheFourPixelsAround_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<double>("elevation");
        // Rows from the top: 10 20 30, 40 50 60, 70 80 90.
        QTest::newRow("on a pixel of the top row") << 1.0 << 2.0 << 20.0;
        QTest::newRow("between columns") << 0.5 << 2.0 << 15.0;
        QTest::newRow("between rows") << 0.0 << 1.5 << 25.0;
        QTest::newRow("in the middle of four") << 1.5 << 0.5 << 70.0;
        QTest::newRow("a quarter right and down") << 0.25 << 1.75 << 20.0;
        QTest::newRow("left of the picture") << -0.001 << 1.0 << 0.0;
        QTest::newRow("above the picture") << 1.0 << 2.001 << 0.0;
        QTest::newRow("no number") << qQNaN() << 1.0 << 0.0;
        QTest::newRow("infinite") << 1.0 << qInf() << 0.0;
    }
    void bilinearReadMixesTheFourPixelsAround()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(double, elevation);
        ElevationImage image(3, 3, QImage::Format_RGB888);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                image.setElevation(column, row, 10.0 * (row * 3 + column + 1));
        QCOMPARE(image.elevation(x, y), elevation);
        C4Vector point{x, y, -1.0, 1.0};
        image.Z(point);
        QCOMPARE(point.z, elevation);
    }

    void negativePositionThatRoundsToZeroReadsColumnZero()
    {
        // x is whole, so the scale makes the fraction: -1 / 2.5 is -0.4.
        const QString name = m_folder.filePath(QStringLiteral("scaled.png"));
        ElevationImage stored(2, 1, QImage::Format_RGB888);
        stored.setElevation(0, 0, 7.0);
        stored.setElevation(1, 0, 9.0);
        QVERIFY(stored.save(name));
        const ElevationImage image(name, 2.5, 1.0, nullptr);
        QCOMPARE(image.elevation(-1, 0), 7.0);
        QCOMPARE(image.elevation(-4, 0), 0.0); // -1.6 + 0.5 truncates to -1
        QCOMPARE(image.elevation(2, 0), 9.0);  // 0.8 + 0.5 truncates to 1
        QCOMPARE(image.elevation(4, 0), 0.0);  // 1.6 + 0.5 truncates to 2, outside
    }

    void zScaleAppliesToReadingAndStoring()
    {
        ElevationImage image(2, 2, QImage::Format_RGB888);
        image.clear(0xFF000000);
        image.setZScale(0.5);
        image.setElevation(0, 1, -3.0);                // bottom row
        QCOMPARE(image.pixel(0, 1), QRgb(0xFFFFFFFA)); // -6
        QCOMPARE(image.elevation(0, 0), -3.0);
        image.setZScale(2.0);
        QCOMPARE(image.elevation(0, 0), -12.0);
    }

    void storingOutsideIsDropped()
    {
        ElevationImage image(2, 2, QImage::Format_RGB888);
        image.clear(0xFF000000);
        image.setElevation(-2, 0, 5.0); // -1 would round to 0
        image.setElevation(2, 0, 5.0);
        image.setElevation(0, 2, 5.0);
        image.setElevation(0, -7, 5.0);
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < 2; ++x)
                QCOMPARE(image.pixel(x, y), QRgb(0xFF000000));
    }

    void alphaCarriesNothing()
    {
        ElevationImage image(1, 1, QImage::Format_ARGB32);
        image.clear(0x00000102);
        QCOMPARE(image.elevation(0, 0), 258.0);
    }

    void copyKeepsTheScales()
    {
        ElevationImage image(1, 1, QImage::Format_RGB888);
        image.clear(0xFF000004);
        image.setZScale(0.25);
        const ElevationImage copy(image);
        QCOMPARE(copy.zScale(), 0.25);
        QCOMPARE(copy.elevation(0, 0), 1.0);
    }

    void unreadableFileLeavesANullImage()
    {
        const ElevationImage image(m_folder.filePath(QStringLiteral("none.png")), 1.0,
                                   1.0, nullptr);
        QVERIFY(image.isNull());
        QCOMPARE(image.elevation(0, 0), 0.0);
        QCOMPARE(image.elevation(0.5, 0.5), 0.0);
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestElevationImage)
#include "test_elevationimage.moc"

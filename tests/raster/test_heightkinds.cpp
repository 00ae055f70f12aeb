#include "raster/heightkinds.h"

#include "raster/elevationimage.h"

#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <functional>

namespace {

QImage painted(const std::function<QRgb(int x, int y)> &pixel)
{
    QImage image(300, 200, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, pixel(x, y));
    return image;
}

double hill(int x, int y) { return 900 + 700 * std::sin(x * .03) * std::cos(y * .05); }

} // namespace

class TestHeightKinds : public QObject {
    Q_OBJECT

private slots:
    void otherNumbersAreTold_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("kind");
        QTest::newRow("24 bits") << QImage::Format_RGB888 << "a.png"
                                 << "";
        QTest::newRow("grey") << QImage::Format_Grayscale8 << "a.png"
                              << "";
        QTest::newRow("palette") << QImage::Format_Indexed8 << "a.png"
                                 << "";
        QTest::newRow("TIFF, 24 bits") << QImage::Format_RGB888 << "a.tif"
                                       << "";
        QTest::newRow("PPM") << QImage::Format_RGB888 << "a.ppm"
                             << "";
        QTest::newRow("16 bits") << QImage::Format_Grayscale16 << "a.png"
                                 << "numbers of 16 bits";
        QTest::newRow("colours of 16 bits") << QImage::Format_RGBX64 << "a.png"
                                            << "numbers of 16 bits";
        QTest::newRow("TIFF, 16 bits") << QImage::Format_Grayscale16 << "a.tif"
                                       << "numbers of 16 bits";
        QTest::newRow("TIFF, floating") << QImage::Format_RGBX32FPx4 << "a.tif"
                                        << "floating-point numbers of 32 bits";
    }
    void otherNumbersAreTold()
    {
        QFETCH(QImage::Format, format);
        QFETCH(QString, file);
        QFETCH(QString, kind);
        const QTemporaryDir folder;
        QImage image = painted([](int x, int y) { return qRgb(x, y, x + y); });
        const QString name = folder.filePath(file);
        QVERIFY(image.convertToFormat(format).save(name));
        QCOMPARE(otherHeightsIn(name), kind);
        const QString told = kind.isEmpty()
                                 ? QString()
                                 : '"' + name + "\" holds " + kind +
                                       ", not heights of 24 bits; Open Terrain reads it.";
        QCOMPARE(otherHeightsNotice(name), told);
    }

    void whatIsNoPictureIsNotToldOf()
    {
        const QTemporaryDir folder;
        QCOMPARE(otherHeightsIn(folder.path()), QString());
        QCOMPARE(otherHeightsIn(folder.filePath("none.png")), QString());
        QCOMPARE(otherHeightsIn(QString()), QString());
        QFile junk(folder.filePath("junk.tif"));
        QVERIFY(junk.open(QFile::WriteOnly) && junk.write("II*\0junk", 8) == 8);
        junk.close();
        QCOMPARE(otherHeightsIn(junk.fileName()), QString());
    }

    void heightsLookLikeHeights_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<bool>("heights");
        const auto heights = [](double scale) {
            return painted([scale](int x, int y) {
                return ElevationImage::pixelOf(hill(x, y), scale);
            });
        };
        QRandomGenerator random(1);
        QTest::newRow("metres") << heights(1) << true;
        QTest::newRow("centimetres") << heights(0.01) << true;
        QTest::newRow("24 bits a pixel")
            << heights(0.01).convertToFormat(QImage::Format_RGB888) << true;
        QTest::newRow("below the sea") << painted([](int x, int y) {
            return ElevationImage::pixelOf(hill(x, y) - 1000, 0.1);
        }) << true;
        QTest::newRow("voids") << painted([](int x, int y) {
            return ElevationImage::pixelOf(
                (x / 40 + y / 40) % 7 == 0 ? -8388608.0 : hill(x, y), 1);
        }) << true;
        QTest::newRow("even ground")
            << painted([](int, int) { return 0xFF000010u; }) << false;
        QTest::newRow("a photograph") << painted([&random](int x, int y) {
            const int v = int(hill(x, y) / 8) + random.bounded(4);
            return qRgb(v, v * 3 / 4, v / 2);
        }) << false;
        QTest::newRow("a grey ramp")
            << painted([](int x, int) { return qRgb(x * 4 / 5, x * 4 / 5, x * 4 / 5); })
            << false;
        QTest::newRow("a drawing") << painted([](int x, int y) {
            return (x / 50 + y / 50) % 2 == 0 ? qRgb(255, 255, 255) : qRgb(200, 0, 0);
        }) << false;
        QTest::newRow("grey of one byte")
            << heights(1).convertToFormat(QImage::Format_Grayscale8) << false;
        QTest::newRow("one pixel") << QImage(1, 1, QImage::Format_RGB32) << false;
        QTest::newRow("none") << QImage() << false;
    }
    void heightsLookLikeHeights()
    {
        QFETCH(QImage, image);
        QFETCH(bool, heights);
        QCOMPARE(looksLikeElevations(image), heights);
    }
};

QTEST_MAIN(TestHeightKinds)
#include "test_heightkinds.moc"

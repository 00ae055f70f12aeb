#include "qtga/qtgahandler.h"
#include "raster/imagefile.h"

#include <QTemporaryDir>
#include <QTest>

class TestQtga : public QObject {
    Q_OBJECT

private slots:
    void writtenFileReadsBackAlsoBesideTheToolkitsOwnPlugin()
    {
        const QTemporaryDir dir;
        QImage image(4, 3, QImage::Format_RGB32);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x)
                image.setPixel(x, y, qRgb(10 * x, 20 * y, 7 + x));
        QVERIFY(saveImageFile(image, dir.filePath("a.tga")));
        QCOMPARE(loadImageFile(dir.filePath("a.tga")), image);
    }
};

QTEST_MAIN(TestQtga)
#include "test_qtga.moc"

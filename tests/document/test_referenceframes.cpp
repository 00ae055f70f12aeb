// The renderer, from the scenery file to the written frame, against frames that the
// plain method has made. makereference makes them anew; reference/README.md tells what
// they show and what of that was worked out by hand.

#include "document/framecasetest.h"

#include "raster/imagefile.h"

#include <QTest>

namespace {

QDir referenceFolder()
{
    return QDir(qEnvironmentVariable("ZEPHRANT_SOURCE") + "/tests/document/reference");
}

} // namespace

class TestReferenceFrames : public QObject {
    Q_OBJECT

private slots:
    void pixelsAreEqual_data() { addFrameCases(referenceFolder()); }
    void pixelsAreEqual() { compareFrames(referenceFolder()); }
    void straightDownEachPixelShowsTheTexelBelowIt();
    void everySceneryHasItsFrames();
};

// Flat land of texels that tell their place, seen from 100 units above it with a focal
// length of 200 pixels: a pixel is half a unit wide.
void TestReferenceFrames::straightDownEachPixelShowsTheTexelBelowIt()
{
    const QDir folder = referenceFolder();
    const QImage texels = loadImageFile(folder.filePath("texels.png"));
    const QImage frame =
        loadImageFile(folder.filePath("frames/straight_down/frame_0.png"));
    QCOMPARE(frame.size(), QSize(40, 30));
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x) {
            const double east = 20.25 + (x - 20) * 0.5;
            const double north = 15.25 - (y - 15) * 0.5;
            const QRgb below = texels.pixel(int(east), texels.height() - 1 - int(north));
            const QRgb drawn = frame.pixel(x, y);
            // Dust a thousand million units away takes off less than one.
            QVERIFY(qAbs(qRed(drawn) - qRed(below)) <= 1);
            QVERIFY(qAbs(qGreen(drawn) - qGreen(below)) <= 1);
            QVERIFY(qAbs(qBlue(drawn) - qBlue(below)) <= 1);
        }
}

void TestReferenceFrames::everySceneryHasItsFrames()
{
    const QDir folder = referenceFolder();
    QStringList expected;
    for (const FrameCase &one : frameCases(folder)) {
        expected.append(one.scene);
        for (const QString &frame : one.frames)
            QVERIFY2(QFile::exists(folder.filePath(one.pathOf(frame))),
                     qPrintable(frame));
    }
    expected.sort();
    QCOMPARE(folder.entryList({"*.zph"}, QDir::Files, QDir::Name), expected);
}

QTEST_MAIN(TestReferenceFrames)
#include "test_referenceframes.moc"

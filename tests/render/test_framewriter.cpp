#include "render/framewriter.h"

#include "raster/imagefile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>

namespace {

QImage picture(QRgb colour, int width = 40, int height = 30)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

class TestFrameWriter : public QObject {
    Q_OBJECT

private slots:
    void framesAreReportedInOrder()
    {
        const QTemporaryDir folder;
        QList<int> frames;
        int waits = 0;
        {
            FrameWriter writer(
                2, [&](int frame, const QStringList &) { frames.append(frame); },
                [&] { ++waits; });
            for (int k = 0; k < 9; ++k) {
                // The first ones take longer than those behind them.
                const int side = k % 2 ? 8 : 600;
                writer.write(k, picture(qRgb(k, 2, 3), side, side), false,
                             {folder.filePath(QStringLiteral("%1.png").arg(k))});
            }
        }
        QCOMPARE(frames, (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
        for (int k = 0; k < 9; ++k)
            QCOMPARE(loadImageFile(folder.filePath(QStringLiteral("%1.png").arg(k)))
                         .pixel(3, 3),
                     qRgb(k, 2, 3));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 9);
    }

    void laterFrameOfTheSameNameIsTheOneThatStays()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("same.png"));
        FrameWriter writer(
            4, [](int, const QStringList &) {}, [] {});
        for (int k = 0; k < 6; ++k)
            writer.write(k, picture(qRgb(k, 0, 0), 500 - 80 * k, 500), false, {name});
        writer.finish();
        QCOMPARE(loadImageFile(name).pixel(0, 0), qRgb(5, 0, 0));
    }

    void pictureMayChangeOnceItIsHandedOver()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("frame.ppm"));
        FrameWriter writer(
            2, [](int, const QStringList &) {}, [] {});
        QImage target = picture(qRgb(1, 2, 3));
        uchar *const bits = target.bits();
        writer.write(0, target, false, {name});
        std::memset(bits, 0, static_cast<std::size_t>(target.sizeInBytes()));
        writer.finish();
        QCOMPARE(loadImageFile(name).pixel(39, 29), qRgb(1, 2, 3));
    }

    void doubledPicturesAreHalved()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("frame.png"));
        FrameWriter writer(
            1, [](int, const QStringList &) {}, [] {});
        writer.write(0, picture(qRgb(9, 8, 7), 202, 102), true, {name});
        writer.finish();
        QCOMPARE(loadImageFile(name).size(), QSize(101, 51));
        QCOMPARE(loadImageFile(name).pixel(50, 25), qRgb(9, 8, 7));
    }

    void tellsHowManyFramesAreBeingWritten()
    {
        const QTemporaryDir folder;
        FrameWriter writer(
            2, [](int, const QStringList &) {}, [] {});
        QCOMPARE(writer.busy(), 0);
        // Larger than what is done before the next line is reached.
        writer.write(0, picture(qRgb(1, 2, 3), 2000, 2000), false,
                     {folder.filePath(QStringLiteral("a.png")),
                      folder.filePath(QStringLiteral("a.tga"))});
        QCOMPARE(writer.busy(), 1);
        writer.finish();
        QCOMPARE(writer.busy(), 0);
    }

    void filesThatCannotBeWrittenAreNamed()
    {
        const QTemporaryDir folder;
        const QString good = folder.filePath(QStringLiteral("good.png"));
        const QString bad = folder.filePath(QStringLiteral("none/bad.png"));
        QStringList failed;
        FrameWriter writer(
            2, [&](int, const QStringList &names) { failed += names; }, [] {});
        writer.write(0, picture(0xFF000000u), false, {bad, good});
        writer.write(1, picture(0xFF000000u), false, {});
        writer.finish();
        QCOMPARE(failed, QStringList{bad});
        QVERIFY(QFile::exists(good));
    }
};

QTEST_GUILESS_MAIN(TestFrameWriter)
#include "test_framewriter.moc"

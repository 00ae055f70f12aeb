#include "run/framewriter.h"

#include "raster/imagefile.h"
#include "support/heldformat.h"

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
        const auto nameOf = [&](int k, const char *format) {
            return folder.filePath(QStringLiteral("%1.%2").arg(k).arg(format));
        };
        QList<int> frames;
        FrameWriter writer(
            3, [&](int frame, const QStringList &) { frames.append(frame); }, [] {});
        writer.write(0, picture(qRgb(0, 2, 3)), false, {nameOf(0, "held")});
        HeldFormat::begun.acquire();
        for (const int k : {1, 2})
            writer.write(k, picture(qRgb(k, 2, 3)), false, {nameOf(k, "png")});
        // The later ones are written before the first, which is reported before them.
        QTRY_COMPARE(writer.busy(), 1);
        QVERIFY(QFile::exists(nameOf(1, "png")) && QFile::exists(nameOf(2, "png")));
        QVERIFY(!QFile::exists(nameOf(0, "held")));
        QCOMPARE(frames, QList<int>());
        HeldFormat::mayEnd.release();
        writer.finish();
        QCOMPARE(frames, (QList<int>{0, 1, 2}));
        QCOMPARE(loadImageFile(nameOf(2, "png")).pixel(3, 3), qRgb(2, 2, 3));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 3);
    }

    void nextFrameWaitsForRoom()
    {
        const QTemporaryDir folder;
        int waits = 0;
        FrameWriter writer(
            1, [](int, const QStringList &) {},
            [&] {
                if (++waits == 3) // somebody is kept waiting
                    HeldFormat::mayEnd.release(2);
            });
        writer.write(0, picture(qRgb(1, 0, 0)), false, {folder.filePath("a.held")});
        HeldFormat::begun.acquire();
        QCOMPARE(waits, 0);
        writer.write(1, picture(qRgb(2, 0, 0)), false, {folder.filePath("b.held")});
        QVERIFY(waits >= 3);
        QVERIFY(QFile::exists(folder.filePath("a.held")));
        writer.finish();
        HeldFormat::begun.acquire();
    }

    void laterFrameOfTheSameNameIsTheOneThatStays()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("same.held"));
        int waits = 0;
        FrameWriter writer(
            4, [](int, const QStringList &) {},
            [&] {
                ++waits;
                HeldFormat::mayEnd.release();
            });
        for (int k = 0; k < 3; ++k) {
            const int before = waits;
            writer.write(k, picture(qRgb(k, 0, 0)), false, {name});
            QCOMPARE(waits > before, k > 0); // for the one before it, which is held
            HeldFormat::begun.acquire();
        }
        writer.finish();
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("#020000"));
        HeldFormat::mayEnd.acquire(HeldFormat::mayEnd.available());
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
        for (const int k : {1, 2}) {
            writer.write(k, picture(qRgb(1, 2, 3)), false,
                         {folder.filePath(QStringLiteral("%1.held").arg(k))});
            HeldFormat::begun.acquire();
            QCOMPARE(writer.busy(), k);
        }
        HeldFormat::mayEnd.release(2);
        writer.finish();
        QCOMPARE(writer.busy(), 0);
    }

    void filesThatCannotBeWrittenAreToldWithTheReason()
    {
        const QTemporaryDir folder;
        const QString good = folder.filePath(QStringLiteral("good.png"));
        const QString bad = folder.filePath(QStringLiteral("none/bad.png"));
        QStringList failed;
        FrameWriter writer(
            2, [&](int, const QStringList &complaints) { failed += complaints; }, [] {});
        writer.write(0, picture(0xFF000000u), false, {bad, good});
        writer.write(1, picture(0xFF000000u), false, {});
        writer.finish();
        QCOMPARE(
            failed,
            QStringList{QString("Could not save file \"%1\": No such file or directory.")
                            .arg(bad)});
        QVERIFY(QFile::exists(good));
    }
};

QTEST_GUILESS_MAIN(TestFrameWriter)
#include "test_framewriter.moc"

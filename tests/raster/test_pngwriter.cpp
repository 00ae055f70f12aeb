#include "base/progress.h"
#include "raster/imagefile.h"
#include "raster/pngwriter.h"

#include <QBuffer>
#include <QColorSpace>
#include <QDir>
#include <QImage>
#include <QImageWriter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <functional>

namespace {

QImage painted(QSize size, QImage::Format format,
               const std::function<QRgb(int x, int y)> &colour)
{
    QImage image(size, format);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, colour(x, y));
    return image;
}

QByteArray written(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    NoProgress unwatched;
    return writePng(buffer, image, unwatched) ? buffer.data() : QByteArray();
}

QByteArray writtenByTheToolkit(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return QImageWriter(&buffer, "png").write(image) ? buffer.data() : QByteArray();
}

// Heights of some grain, as an elevation file holds them.
QImage hills(const QSize &size)
{
    QRandomGenerator random(5);
    QImage image(size, QImage::Format_RGB888);
    for (int y = 0; y < size.height(); ++y) {
        uchar *const row = image.scanLine(y);
        for (int x = 0; x < size.width(); ++x) {
            const qint64 height = qint64(x) * x / 900 + y * 7 + random.bounded(6);
            row[3 * x] = static_cast<uchar>(height >> 16);
            row[3 * x + 1] = static_cast<uchar>(height >> 8);
            row[3 * x + 2] = static_cast<uchar>(height);
        }
    }
    return image;
}

// Each format that the writer has rows for.
void formats(const QSize &size)
{
    QTest::addColumn<QImage>("image");
    QImage shown = hills(size).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < size.height() / 3; ++y)
        shown.setPixelColor(y % size.width(), y, QColor(200, 100, 7, y % 256));
    // One byte a pixel: as many bytes need more columns.
    const QImage grey = hills({size.width() * 3, size.height()})
                            .convertToFormat(QImage::Format_Grayscale8);
    QTest::newRow("grey") << grey;
    QImage palette(grey.constBits(), grey.width(), grey.height(), grey.bytesPerLine(),
                   QImage::Format_Indexed8);
    for (int i = 0; i < 256; ++i)
        palette.setColor(i, qRgba(i, 255 - i, i * 7 % 256, i % 3 == 0 ? 100 : 255));
    QTest::newRow("palette") << palette.copy();
    for (int i = 0; i < 256; ++i)
        palette.setColor(i, qRgb(i, i, i));
    QTest::newRow("palette of greys") << palette.copy();
    const std::vector<std::pair<const char *, QImage::Format>> all{
        {"24 bits", QImage::Format_RGB888},
        {"24 bits, blue first", QImage::Format_BGR888},
        {"32 bits", QImage::Format_RGB32},
        {"32 bits, red first", QImage::Format_RGBX8888},
        {"alpha", QImage::Format_ARGB32},
        {"alpha, red first", QImage::Format_RGBA8888},
        {"premultiplied", QImage::Format_ARGB32_Premultiplied}};
    for (const auto &[name, format] : all)
        QTest::newRow(name) << shown.convertToFormat(format);
    QRandomGenerator random(3);
    QImage noise(size, QImage::Format_RGB32);
    random.fillRange(reinterpret_cast<quint32 *>(noise.bits()), noise.sizeInBytes() / 4);
    QTest::newRow("noise") << noise;
}

// The chunks of a file that hold no pixels.
QByteArray withoutPixels(const QByteArray &file)
{
    QByteArray left;
    for (qsizetype at = 8; at + 12 <= file.size();) {
        const auto size = qsizetype(qFromBigEndian<quint32>(file.constData() + at)) + 12;
        if (file.mid(at + 4, 4) != "IDAT")
            left += file.mid(at, size);
        at += size;
    }
    return left;
}

class StopAt : public Progress {
public:
    explicit StopAt(int last) : m_last(last) {}
    [[nodiscard]] bool step(qint64, qint64) override { return ++m_steps < m_last; }
    [[nodiscard]] int steps() const { return m_steps; }

private:
    int m_last;
    int m_steps = 0;
};

// A device that is full after some bytes.
class SmallDevice : public QIODevice {
public:
    explicit SmallDevice(qint64 room) : m_room(room)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 count) override
    {
        const qint64 taken = std::min(count, m_room);
        m_room -= taken;
        return taken > 0 || count == 0 ? taken : -1;
    }

private:
    qint64 m_room;
};

} // namespace

class TestPngWriter : public QObject {
    Q_OBJECT

private slots:
    void pictureIsReadBackAsFromTheToolkit_data()
    {
        QTest::addColumn<QImage>("image");
        const auto rgb = QImage::Format_RGB32;
        const auto argb = QImage::Format_ARGB32;
        QRandomGenerator random(7);
        const auto noise = [&random](int, int) { return random.generate(); };
        const auto ramp = [](int x, int y) { return qRgba(3 * x, 5 * y, x + y, x ^ y); };
        // Neighbours that tie, in the foretelling from three of them too.
        const auto steps = [](int x, int y) {
            return qRgb(x % 2 * 255, y % 3 * 127, (x + y) % 5 * 50);
        };
        QTest::newRow("one pixel") << painted({1, 1}, rgb, ramp);
        QTest::newRow("one column") << painted({1, 37}, rgb, noise);
        QTest::newRow("one row") << painted({37, 1}, argb, noise);
        QTest::newRow("noise") << painted({101, 67}, rgb, noise);
        QTest::newRow("noise with alpha") << painted({67, 101}, argb, noise);
        QTest::newRow("ramp") << painted({300, 200}, rgb, ramp);
        QTest::newRow("ramp with alpha") << painted({255, 200}, argb, ramp);
        QTest::newRow("ties") << painted({64, 64}, rgb, steps);
        QTest::newRow("flat") << painted({640, 480}, rgb, [](int, int) { return 7u; });
        QTest::newRow("transparent") << painted({9, 9}, argb, [](int x, int) {
            return qRgba(x, 2, 3, 0); // colour under no opacity stays
        });
    }
    void pictureIsReadBackAsFromTheToolkit()
    {
        QFETCH(QImage, image);
        image.setDotsPerMeterX(3000);
        image.setDotsPerMeterY(5000);
        const QByteArray ours = written(image);
        const QByteArray theirs = writtenByTheToolkit(image);
        // Signature, size, depth and resolution are the same to the byte.
        constexpr int HeadBytes = 8 + 25 + 21;
        QCOMPARE(ours.left(HeadBytes), theirs.left(HeadBytes));
        const QImage read = QImage::fromData(ours, "png");
        QCOMPARE(read, QImage::fromData(theirs, "png"));
        QCOMPARE(read.format(), image.format());
        QCOMPARE(read.dotsPerMeterX(), 3000);
        QCOMPARE(read.dotsPerMeterY(), 5000);
    }

    void filesAreAboutAsLargeAsThoseOfTheToolkit()
    {
        // Hills with a little grain, as a frame has.
        QRandomGenerator random(11);
        const QImage image = painted({640, 480}, QImage::Format_RGB32, [&](int x, int y) {
            const int v = (x * x / 300 + y * y / 200) % 200 + random.bounded(8);
            return qRgb(v, v * 3 / 4, v / 2);
        });
        const auto most = writtenByTheToolkit(image).size() * 103 / 100;
        QVERIFY2(written(image).size() <= most, qPrintable(QString::number(most)));
        const QImage flat =
            painted({640, 480}, QImage::Format_RGB32, [](int, int) { return 7u; });
        QVERIFY(written(flat).size() < 4000); // of 921,600 bytes
    }

    void aFullDeviceIsAFailure_data()
    {
        QTest::addColumn<int>("room");
        QTest::newRow("nothing") << 0;
        QTest::newRow("within the head") << 30;
        QTest::newRow("within the pixels") << 200;
    }
    void aFullDeviceIsAFailure()
    {
        QFETCH(int, room);
        const QImage image = painted({64, 64}, QImage::Format_RGB32,
                                     [](int x, int y) { return qRgb(x * y, x, y); });
        const auto size = written(image).size();
        NoProgress unwatched;
        SmallDevice small(room);
        QVERIFY(!writePng(small, image, unwatched));
        SmallDevice lastByteMissing(size - 1);
        QVERIFY(!writePng(lastByteMissing, image, unwatched));
        SmallDevice enough(size);
        QVERIFY(writePng(enough, image, unwatched));
    }

    void otherDepthsAreLeftToTheToolkit()
    {
        const QImage plain(4, 4, QImage::Format_RGB32);
        QVERIFY(hasPngRows(plain));
        QVERIFY(!hasPngRows(plain.convertToFormat(QImage::Format_RGBA64)));
        QVERIFY(!hasPngRows(plain.convertToFormat(QImage::Format_Grayscale16)));
        QVERIFY(!hasPngRows(plain.convertToFormat(QImage::Format_Mono)));
        QVERIFY(!hasPngRows(QImage()));
        QVERIFY(!hasPngRows(QImage(4, 4, QImage::Format_Indexed8))); // no colours
    }

    // Colours of a palette, title, offset and colour space stand in the file as ever.
    void allButThePixelsIsTheToolkits_data() { formats({70, 50}); }
    void allButThePixelsIsTheToolkits()
    {
        QFETCH(QImage, image);
        image.setText(QStringLiteral("Title"), QStringLiteral("Alps"));
        image.setText(QStringLiteral("Comment"), QString(100, 'x')); // is compressed
        image.setOffset({3, 4});
        image.setDotsPerMeterX(123);
        if (image.format() != QImage::Format_Indexed8)
            image.setColorSpace(QColorSpace::AdobeRgb);
        const QByteArray ours = written(image);
        const QByteArray theirs = writtenByTheToolkit(image);
        QCOMPARE(withoutPixels(ours), withoutPixels(theirs));
        QCOMPARE(QImage::fromData(ours, "png"), QImage::fromData(theirs, "png"));
    }

    // Many pieces, with rows above them in the one before; noise is not compressed.
    void largePictureIsReadBackAsFromTheToolkit_data() { formats({1200, 1170}); }
    void largePictureIsReadBackAsFromTheToolkit()
    {
        QFETCH(QImage, image);
        const QByteArray ours = written(image);
        const QByteArray theirs = writtenByTheToolkit(image);
        const QImage read = QImage::fromData(ours, "png");
        QVERIFY(!read.isNull());
        QCOMPARE(read, QImage::fromData(theirs, "png"));
        QVERIFY2(ours.size() <= theirs.size() * 103 / 100,
                 qPrintable(QString("%1 %2").arg(ours.size()).arg(theirs.size())));
    }

    void threadsDoNotChangeTheFile()
    {
        const QImage image = hills({1250, 1150});
        const QByteArray ours = written(image);
        QVERIFY(!ours.isEmpty());
        NoProgress unwatched;
        for (const int threads : {0, 1, 3, 100}) {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            QVERIFY(writePng(buffer, image, unwatched, threads));
            QCOMPARE(buffer.data(), ours);
        }
    }

    // A frame, and a palette of which no number foretells the next.
    void filesAreAsLargeAsThoseOfTheToolkit_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::newRow("frame") << hills({640, 480}).convertToFormat(QImage::Format_RGB32);
        QRandomGenerator random(5);
        QImage palette({1100, 1000}, QImage::Format_Indexed8);
        for (int y = 0; y < palette.height(); ++y)
            for (int x = 0; x < palette.width(); ++x)
                palette.scanLine(y)[x] =
                    static_cast<uchar>((40 + (x + y) / 100 + random.bounded(3)) * 4);
        for (int i = 0; i < 256; ++i)
            palette.setColor(i, qRgb(i, 255 - i, i * 7 % 256));
        QTest::newRow("noisy palette") << palette;
    }
    void filesAreAsLargeAsThoseOfTheToolkit()
    {
        QFETCH(QImage, image);
        const auto ours = written(image).size();
        const auto theirs = writtenByTheToolkit(image).size();
        QVERIFY2(ours <= theirs * 102 / 100,
                 qPrintable(QString("%1 %2").arg(ours).arg(theirs)));
    }

    // Blocks end at every bit of a byte, and rows may be longer than a piece.
    void piecesEndAtEveryBit_data()
    {
        QTest::addColumn<int>("width");
        for (int width = 1500; width < 1505; ++width)
            QTest::addRow("%d", width) << width;
        QTest::newRow("a row is more than a piece") << 400000;
    }
    void piecesEndAtEveryBit()
    {
        QFETCH(int, width);
        const QImage image = hills({width, width < 2000 ? 940 : 5});
        const QByteArray ours = written(image);
        QCOMPARE(QImage::fromData(ours, "png"),
                 image.convertToFormat(QImage::Format_RGB32));
    }

    void stopsWhenAsked()
    {
        const QImage image = hills({1500, 1500});
        StopAt third(3);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(!writePng(buffer, image, third, 2));
        QCOMPARE(third.steps(), 3);

        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("a.png"));
        QVERIFY(saveImageFile(image.copy(0, 0, 9, 9), name));
        StopAt second(2);
        const Result<void> saved = saveImageFile(image, name, second);
        QVERIFY(!saved);
        QVERIFY(saved.error().stopped);
        QCOMPARE(QImage(name).size(), QSize(9, 9)); // the former file is left
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }

    void tellsHowFarItIs()
    {
        const QImage image = hills({1500, 1500});
        class Heard : public Progress {
        public:
            bool step(qint64 done, qint64 of) override
            {
                rises = rises && done >= last && done <= of;
                last = done;
                return true;
            }
            qint64 last = 0;
            bool rises = true;
        } heard;
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(writePng(buffer, image, heard, 1));
        QVERIFY(heard.rises);
        QVERIFY(heard.last > 7);
    }

    void textsAndColourSpaceSurviveSaving()
    {
        const QTemporaryDir folder;
        QImage image(5, 3, QImage::Format_RGB32);
        image.fill(qRgb(1, 2, 3));
        image.setText(QStringLiteral("Title"), QStringLiteral("Alps"));
        image.setColorSpace(QColorSpace::SRgb);
        const QString name = folder.filePath(QStringLiteral("a.png"));
        QVERIFY(saveImageFile(image, name));
        const QImage read = loadImageFile(name);
        QCOMPARE(read.text(QStringLiteral("Title")), QStringLiteral("Alps"));
        QVERIFY(read.colorSpace().isValid());
        QCOMPARE(read.pixel(4, 2), qRgb(1, 2, 3));
    }
};

QTEST_GUILESS_MAIN(TestPngWriter)
#include "test_pngwriter.moc"

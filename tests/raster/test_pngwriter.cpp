#include "raster/imagefile.h"
#include "raster/pngwriter.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageWriter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

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
    return writePng(buffer, image) ? buffer.data() : QByteArray();
}

QByteArray writtenByTheToolkit(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return QImageWriter(&buffer, "png").write(image) ? buffer.data() : QByteArray();
}

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
        SmallDevice small(room);
        QVERIFY(!writePng(small, image));
        SmallDevice lastByteMissing(size - 1);
        QVERIFY(!writePng(lastByteMissing, image));
        SmallDevice enough(size);
        QVERIFY(writePng(enough, image));
    }

    void whatIsMoreThanPixelsIsLeftToTheToolkit()
    {
        const QImage plain(4, 4, QImage::Format_RGB32);
        QVERIFY(isPlainPicture(plain));
        QVERIFY(!isPlainPicture(plain.convertToFormat(QImage::Format_Indexed8)));
        QVERIFY(!isPlainPicture(plain.convertToFormat(QImage::Format_RGBA64)));
        QVERIFY(
            !isPlainPicture(plain.convertToFormat(QImage::Format_ARGB32_Premultiplied)));
        QImage named = plain;
        named.setText(QStringLiteral("Title"), QStringLiteral("Alps"));
        QVERIFY(!isPlainPicture(named));
        QImage placed = plain;
        placed.setOffset({3, 4});
        QVERIFY(!isPlainPicture(placed));
        QImage coloured = plain;
        coloured.setColorSpace(QColorSpace::SRgb);
        QVERIFY(!isPlainPicture(coloured));
        QVERIFY(!isPlainPicture(QImage()));
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

#include "qtga/qtgahandler.h"
#include "qtga/qtgaplugin.h"
#include "raster/imagefile.h"

#include <QBuffer>
#include <QImageReader>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// The 18 bytes before the pixels.
struct Head {
    quint8 idLength = 0;
    quint8 colourMap = 0;
    quint8 type = 2;
    int width = 0;
    int height = 0;
    quint8 depth = 24;
    quint8 descriptor = 0x20;

    [[nodiscard]] QByteArray bytes() const
    {
        QByteArray head(18, '\0');
        head[0] = char(idLength);
        head[1] = char(colourMap);
        head[2] = char(type);
        head[12] = char(width & 255);
        head[13] = char(width >> 8);
        head[14] = char(height & 255);
        head[15] = char(height >> 8);
        head[16] = char(depth);
        head[17] = char(descriptor);
        return head;
    }
};

// Six pixels whose bytes count from 0: blue 0, green 1, red 2 and so on.
QByteArray countingBytes(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(char(i));
    return bytes;
}

QRgb counted(int firstByte) { return qRgb(firstByte + 2, firstByte + 1, firstByte); }

bool readBytes(QByteArray file, QImage *image)
{
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    QTgaHandler handler;
    handler.setDevice(&buffer);
    return handler.read(image);
}

QByteArray writtenBytes(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTgaHandler handler;
    handler.setDevice(&buffer);
    return handler.write(image) ? buffer.data() : QByteArray();
}

QImage sample()
{
    QImage image(4, 3, QImage::Format_RGB32);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            image.setPixel(x, y, qRgb(10 * x, 20 * y, 7 + x));
    return image;
}

} // namespace

class TestQtga : public QObject {
    Q_OBJECT

private slots:
    void writtenFileReadsBackAlsoBesideTheToolkitsOwnPlugin()
    {
        const QTemporaryDir dir;
        for (const char *name : {"a.tga", "A.TGA"}) {
            QVERIFY(saveImageFile(sample(), dir.filePath(name)));
            QCOMPARE(loadImageFile(dir.filePath(name)), sample());
        }
        QVERIFY(QImageReader::supportedImageFormats().contains("tga"));
    }

    void writtenBytesAreHeadAndLinesFromTheTop()
    {
        QImage image(2, 1, QImage::Format_RGB32);
        image.setPixel(0, 0, qRgb(1, 2, 3));
        image.setPixel(1, 0, qRgb(4, 5, 6));
        QCOMPARE(writtenBytes(image).toHex(' '),
                 QByteArray("00 00 02 00 00 00 00 00 00 00 00 00 02 00 01 00 18 20 "
                            "03 02 01 06 05 04"));
    }

    void originOfTheLinesFollowsTheDescriptor_data()
    {
        QTest::addColumn<int>("descriptor");
        QTest::addColumn<QList<int>>("firstBytes"); // of the pixels of the image
        QTest::newRow("top left") << 0x20 << QList<int>{0, 3, 6, 9, 12, 15};
        QTest::newRow("bottom left") << 0x00 << QList<int>{9, 12, 15, 0, 3, 6};
        QTest::newRow("top right") << 0x30 << QList<int>{6, 3, 0, 15, 12, 9};
        QTest::newRow("bottom right") << 0x10 << QList<int>{15, 12, 9, 6, 3, 0};
        QTest::newRow("other bits mean nothing")
            << 0xEF << QList<int>{0, 3, 6, 9, 12, 15};
    }

    void originOfTheLinesFollowsTheDescriptor()
    {
        QFETCH(int, descriptor);
        QFETCH(QList<int>, firstBytes);
        Head head;
        head.width = 3;
        head.height = 2;
        head.descriptor = quint8(descriptor);
        QImage image;
        QVERIFY(readBytes(head.bytes() + countingBytes(18), &image));
        QCOMPARE(image.format(), QImage::Format_RGB32);
        QCOMPARE(image.size(), QSize(3, 2));
        for (int i = 0; i < 6; ++i)
            QCOMPARE(image.pixel(i % 3, i / 3), counted(firstBytes[i]));
    }

    void idFieldIsNotSkipped()
    {
        Head head;
        head.idLength = 5;
        head.width = 2;
        head.height = 1;
        QImage image;
        QVERIFY(readBytes(head.bytes() + countingBytes(11), &image));
        QCOMPARE(image.pixel(0, 0), counted(0)); // the first bytes of the id
        QCOMPARE(image.pixel(1, 0), counted(3));
    }

    void thirtyTwoBitsAreWalkedInThrees()
    {
        Head head;
        head.width = 3;
        head.height = 2;
        head.depth = 32;
        QImage image;
        QVERIFY(readBytes(head.bytes() + countingBytes(24), &image));
        QCOMPARE(image.pixel(2, 0), counted(6));
        QCOMPARE(image.pixel(0, 1), counted(12)); // lines are four bytes a pixel long
    }

    void smallerDepthsDoNoHarm_data()
    {
        QTest::addColumn<int>("depth");
        for (int depth : {0, 1, 7, 8, 15, 16, 23})
            QTest::addRow("%d bits", depth) << depth;
    }

    void smallerDepthsDoNoHarm()
    {
        QFETCH(int, depth);
        for (quint8 descriptor : {0x20, 0x10}) {
            Head head;
            head.width = 30;
            head.height = 2;
            head.depth = quint8(depth);
            head.descriptor = descriptor;
            QImage image;
            QVERIFY(
                readBytes(head.bytes() + countingBytes(30 * 2 * (depth / 8)), &image));
            QCOMPARE(image.size(), QSize(30, 2));
            QCOMPARE(image.pixel(descriptor == 0x20 ? 29 : 0, 0), 0xFF000000u);
        }
    }

    void otherKindsAreRefused_data()
    {
        QTest::addColumn<int>("colourMap");
        QTest::addColumn<int>("type");
        QTest::newRow("run-length encoded") << 0 << 10;
        QTest::newRow("colour-mapped") << 1 << 1;
        QTest::newRow("true colour with a map") << 1 << 2;
        QTest::newRow("gray") << 0 << 3;
    }

    void otherKindsAreRefused()
    {
        QFETCH(int, colourMap);
        QFETCH(int, type);
        Head head;
        head.colourMap = quint8(colourMap);
        head.type = quint8(type);
        head.width = head.height = 1;
        QImage image = sample();
        QTest::ignoreMessage(QtWarningMsg,
                             "QTgaHandler::read(): TGA file is not uncompressed RGB");
        QVERIFY(!readBytes(head.bytes() + countingBytes(3), &image));
        QCOMPARE(image, sample());
    }

    void fileCutOffAnywhereLeavesTheImage()
    {
        const QByteArray whole = writtenBytes(sample());
        QCOMPARE(whole.size(), 18 + 36);
        for (int length = 0; length < whole.size(); ++length) {
            QImage image = sample().mirrored();
            if (length < 18)
                QTest::ignoreMessage(QtWarningMsg,
                                     "QTgaHandler::read(): Cannot read TGAFILEHEADER");
            QVERIFY(!readBytes(whole.left(length), &image));
            QCOMPARE(image, sample().mirrored());
        }
    }

    void sizesThatTheFileCannotHoldTakeNoMemory()
    {
        for (const int depth : {0, 7, 8, 24, 32}) {
            Head head;
            head.width = head.height = 65535; // 17 GB as a picture
            head.depth = quint8(depth);
            QImage image = sample();
            QVERIFY(!readBytes(head.bytes() + countingBytes(100), &image));
            QCOMPARE(image, sample());
        }
    }

    void imageWithoutPixelsIsRefused()
    {
        Head head;
        head.height = 3;
        QImage image;
        QVERIFY(!readBytes(head.bytes(), &image));
    }

    void alphaIsLostOnWriting()
    {
        QImage image(1, 1, QImage::Format_ARGB32);
        image.setPixel(0, 0, qRgba(10, 20, 30, 40));
        QImage back;
        QVERIFY(readBytes(writtenBytes(image), &back));
        QCOMPARE(back.pixel(0, 0), qRgb(10, 20, 30));
    }

    void everyPixelFormatIsWritten_data()
    {
        QTest::addColumn<int>("format");
        for (int format :
             {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_Grayscale8,
              QImage::Format_RGB888, QImage::Format_RGB16,
              QImage::Format_ARGB32_Premultiplied, QImage::Format_RGBA64})
            QTest::addRow("format %d", format) << format;
    }

    void everyPixelFormatIsWritten()
    {
        QFETCH(int, format);
        const QImage image = sample().convertToFormat(QImage::Format(format));
        QImage back;
        QVERIFY(readBytes(writtenBytes(image), &back));
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x)
                QCOMPARE(back.pixel(x, y), image.pixel(x, y));
    }

    void missingAndClosedDevicesAreRefused()
    {
        QTgaHandler handler;
        QImage image;
        QTest::ignoreMessage(QtWarningMsg,
                             "QTgaHandler::canRead() called with no device");
        QVERIFY(!handler.canRead());
        QTest::ignoreMessage(QtWarningMsg,
                             "QTgaHandler::canRead() called with no device");
        QVERIFY(!QTgaHandler::canRead(nullptr));
        QTest::ignoreMessage(QtWarningMsg, "QTgaHandler::read() called with no device");
        QVERIFY(!handler.read(&image));
        QTest::ignoreMessage(QtWarningMsg, "QTgaHandler::write() called with no device");
        QVERIFY(!handler.write(sample()));
        QBuffer buffer;
        buffer.open(QIODevice::ReadOnly);
        handler.setDevice(&buffer);
        QVERIFY(!handler.write(sample()));
    }

    void everyReadableDeviceIsClaimed()
    {
        QByteArray junk("junk");
        QBuffer buffer(&junk);
        QTgaHandler handler;
        handler.setDevice(&buffer);
        QVERIFY(!handler.canRead());
        buffer.open(QIODevice::ReadOnly);
        QVERIFY(handler.canRead());
        QCOMPARE(handler.format(), QByteArray("tga"));
        QCOMPARE(handler.name(), QByteArray("tga"));
    }

    void optionsAreSizeAndCompression()
    {
        QTgaHandler handler;
        QVERIFY(handler.supportsOption(QImageIOHandler::Size));
        QVERIFY(handler.supportsOption(QImageIOHandler::CompressionRatio));
        QVERIFY(!handler.supportsOption(QImageIOHandler::Quality));
        QCOMPARE(handler.option(QImageIOHandler::Size).toSize(), QSize(400, 300));
        QCOMPARE(handler.option(QImageIOHandler::CompressionRatio).toInt(), 0);
        handler.setOption(QImageIOHandler::CompressionRatio, 7);
        QCOMPARE(handler.option(QImageIOHandler::CompressionRatio).toInt(), 7);
        QVERIFY(!handler.option(QImageIOHandler::Quality).isValid());
    }

    void pluginTellsWhatItCanDo()
    {
        const QTgaPlugin plugin;
        QCOMPARE(plugin.keys(), QStringList{"tga"});
        QCOMPARE(plugin.capabilities(nullptr, "tga"),
                 QImageIOPlugin::CanRead | QImageIOPlugin::CanWrite);
        QCOMPARE(plugin.capabilities(nullptr, "png"), QImageIOPlugin::Capabilities());
        QBuffer buffer;
        QCOMPARE(plugin.capabilities(&buffer, {}), QImageIOPlugin::Capabilities());
        buffer.open(QIODevice::WriteOnly);
        QCOMPARE(plugin.capabilities(&buffer, {}),
                 QImageIOPlugin::Capabilities(QImageIOPlugin::CanWrite));
        buffer.close();
        buffer.open(QIODevice::ReadOnly);
        QCOMPARE(plugin.capabilities(&buffer, {}),
                 QImageIOPlugin::Capabilities(QImageIOPlugin::CanRead));
        const std::unique_ptr<QImageIOHandler> handler(plugin.create(&buffer, "tga"));
        QCOMPARE(handler->device(), &buffer);
        QCOMPARE(handler->format(), QByteArray("tga"));
    }
};

QTEST_MAIN(TestQtga)
#include "test_qtga.moc"

#include "raster/imagefile.h"
#include "raster/picturecheck.h"
#include "support/textfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr QSize Size(17, 13);

QImage picture(const QSize &size = Size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 7, y * 11, x * y));
    return image;
}

} // namespace

class TestPictureCheck : public QObject {
    Q_OBJECT

private slots:
    void formats()
    {
        QTest::addColumn<QString>("format");
        for (const char *format : {"tga", "png", "jpg", "ppm"})
            QTest::newRow(format) << QString(format);
    }

    void pictureOfTheSizeIsWhole_data() { formats(); }
    void pictureOfTheSizeIsWhole()
    {
        const QString file = saved();
        QVERIFY(isWholePicture(file, Size));
        QVERIFY(!isWholePicture(file, Size.transposed()));
        QVERIFY(!isWholePicture(file, QSize(17, 14)));
        QVERIFY(!isWholePicture(file + "x", Size));
    }

    void everyPartOfAFileIsNotWhole_data() { formats(); }
    void everyPartOfAFileIsNotWhole()
    {
        const QString file = saved();
        const QByteArray whole = bytesIn(file);
        QVERIFY(whole.size() > 100);
        for (qsizetype length = 0; length < whole.size(); ++length) {
            QVERIFY(writeBytes(file, whole.left(length)));
            QVERIFY2(!isWholePicture(file, Size), qPrintable(QString::number(length)));
        }
    }

    void otherContentsAreNotWhole_data() { formats(); }
    void otherContentsAreNotWhole()
    {
        const QString file = saved();
        const QByteArray whole = bytesIn(file);
        QVERIFY(writeBytes(file, QByteArray(whole.size(), '\0')));
        QVERIFY(!isWholePicture(file, Size));
        QVERIFY(writeBytes(file, "kept"));
        QVERIFY(!isWholePicture(file, Size));
    }

    // Bytes that a disk lost.
    void changedByteOfAPngIsSeen()
    {
        const QString file = m_dir.filePath("p.png");
        QVERIFY(saveImageFile(picture(), file));
        const QByteArray whole = bytesIn(file);
        for (qsizetype at = 8; at < whole.size(); ++at) {
            QByteArray changed = whole;
            changed[at] = char(changed[at] ^ 0x20);
            QVERIFY(writeBytes(file, changed));
            QVERIFY2(!isWholePicture(file, Size), qPrintable(QString::number(at)));
        }
    }

    void filesOfOtherWritersAreWholeToo()
    {
        const QString png = m_dir.filePath("q.png");
        QVERIFY(picture().convertToFormat(QImage::Format_Indexed8).save(png));
        QVERIFY(isWholePicture(png, Size));
        const QString ppm = m_dir.filePath("q.ppm");
        QVERIFY(writeBytes(ppm, "P6 # a comment\n# another\n 2\t1\n255\nabcdef"));
        QVERIFY(isWholePicture(ppm, QSize(2, 1)));
    }

    void folderIsNoPicture() { QVERIFY(!isWholePicture(m_dir.path(), Size)); }

private:
    [[nodiscard]] QString saved() const
    {
        QFETCH(QString, format);
        const QString name = m_dir.filePath("p." + format);
        return saveImageFile(picture(), name) ? name : QString();
    }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestPictureCheck)
#include "test_picturecheck.moc"

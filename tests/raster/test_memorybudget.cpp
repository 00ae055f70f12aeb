#include "base/memorybudget.h"
#include "base/notices.h"
#include "raster/elevationimage.h"
#include "raster/image.h"
#include "raster/imagefile.h"
#include "raster/textureimage.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>

namespace {

constexpr char Variable[] = "ZEPHRANT_MEMORY_BUDGET";

qint64 physicalMemory()
{
    std::ifstream info("/proc/meminfo");
    std::string name;
    qint64 kilobytes = 0;
    info >> name >> kilobytes;
    return kilobytes * 1024;
}

} // namespace

class TestMemoryBudget : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_told.clear();
        setNoticeSink([this](const QString &text, NoticeStay) { m_told.append(text); });
    }
    void cleanup()
    {
        qunsetenv(Variable);
        setNoticeSink({});
    }

    void budgetIsAPartOfTheMachine()
    {
        QVERIFY(memoryBudget() >= qint64(256) << 20);
        QVERIFY(memoryBudget() <= std::max(physicalMemory() / 2, qint64(256) << 20));
        QVERIFY(fitsMemory(qint64(1920) * 1080 * 4));
        QVERIFY(!fitsMemory(physicalMemory()));
    }

    void environmentTakesItsPlace()
    {
        qputenv(Variable, "1000");
        QCOMPARE(memoryBudget(), qint64(1000));
        QVERIFY(fitsMemory(1000));
        QVERIFY(!fitsMemory(1001));
        qputenv(Variable, "much");
        QVERIFY(memoryBudget() > 1000);
        qputenv(Variable, "-5");
        QVERIFY(memoryBudget() > 1000);
    }

    void amountsAreWrittenForPeople()
    {
        QCOMPARE(memoryText(14415361024), QString("14.4 GB"));
        QCOMPARE(memoryText(999000), QString("999.0 kB"));
        QCOMPARE(memoryText(1000000), QString("1.0 MB"));
        QCOMPARE(memoryText(qint64(5) * 1000 * 1000 * 1000 * 1000), QString("5.0 TB"));
        QCOMPARE(memoryText(0), QString("0.0 kB"));
    }

    void amountsAreWrittenInTheirLargestUnit()
    {
        qint64 unit = 1000;
        for (const char *name : {"kB", "MB", "GB"}) {
            // Rounded, they are a thousand of one unit, which is one of the next.
            for (const qint64 less : {unit / 1000, unit / 100, unit / 25}) {
                const QString text = memoryText(1000 * unit - less);
                QVERIFY2(text.startsWith("1.0 "), qPrintable(text));
            }
            QCOMPARE(memoryText(1000 * unit - unit / 10), QString("999.9 ") + name);
            unit *= 1000;
        }
    }

    // A small file that becomes a large picture.
    void pictureBeyondTheBudgetIsNotRead_data()
    {
        QTest::addColumn<QString>("format");
        for (const char *format : {"png", "bmp", "tif", "jpg", "ppm", "tga"})
            QTest::newRow(format) << QString(format);
    }
    void pictureBeyondTheBudgetIsNotRead()
    {
        QFETCH(QString, format);
        const QString name = m_dir.filePath("large." + format);
        QImage image(300, 200, QImage::Format_RGB32);
        image.fill(qRgb(1, 2, 3));
        QVERIFY(saveImageFile(image, name));
        qputenv(Variable, QByteArray::number(300 * 200 * 4 - 1));
        QVERIFY(Image(name).isNull());
        QVERIFY(TextureImage(name).isNull());
        QVERIFY(ElevationImage(name).isNull());
        QCOMPARE(m_told.size(), 3);
        QCOMPARE(m_told[0],
                 QString("\"large.%1\" (300 x 200 pixels) would take 240.0 kB of memory; "
                         "the budget is 240.0 kB.")
                     .arg(format));
        qputenv(Variable, QByteArray::number(300 * 200 * 8));
        QCOMPARE(Image(name).size(), image.size());
        QCOMPARE(TextureImage(name).size(), image.size());
        QCOMPARE(ElevationImage(name).size(), image.size());
        QCOMPARE(m_told.size(), 3);
    }

    // One bit a pixel in the file and as elevations, 32 as a texture.
    void onePixelClaimsWhatItBecomes()
    {
        const QString name = m_dir.filePath("bits.png");
        QImage image(800, 1000, QImage::Format_Mono);
        image.fill(1);
        QVERIFY(image.save(name));
        qputenv(Variable, "3000000");
        QVERIFY(TextureImage(name).isNull());
        QCOMPARE(m_told.size(), 1);
        QVERIFY2(m_told[0].contains("3.3 MB"), qPrintable(m_told[0]));
        QCOMPARE(ElevationImage(name).size(), image.size());
    }

private:
    QTemporaryDir m_dir;
    QStringList m_told;
};

QTEST_GUILESS_MAIN(TestMemoryBudget)
#include "test_memorybudget.moc"

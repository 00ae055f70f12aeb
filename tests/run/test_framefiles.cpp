// What the files of a frame are called, how large their pictures are, and how much memory
// a frame claims.
#include "base/notices.h"
#include "run/framefiles.h"
#include "run/framememory.h"
#include "run/framescale.h"
#include "scene/scenerydata.h"

#include <QTest>

#include <limits>

class TestFrameFiles : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        qunsetenv("ZEPHRANT_MEMORY_BUDGET");
        setNoticeSink({});
    }

    void everyFormatHasItsFile_data();
    void everyFormatHasItsFile();
    void numbersBeginAtTheOffsetAndWrap_data();
    void numbersBeginAtTheOffsetAndWrap();
    void percentSignsOfAStrangerDoNoHarm();
    void sizesAreThoseOfTheFiles_data();
    void sizesAreThoseOfTheFiles();
    void copiesCountAsMemory_data();
    void copiesCountAsMemory();
};

void TestFrameFiles::everyFormatHasItsFile_data()
{
    QTest::addColumn<int>("formats");
    for (int formats = 0; formats < 16; ++formats)
        QTest::addRow("formats %d", formats) << formats;
}
void TestFrameFiles::everyFormatHasItsFile()
{
    QFETCH(int, formats);
    SceneryData data;
    data.AusDateiname = "/x/f%03d";
    data.AusgabeTGA = (formats & 1) != 0;
    data.AusgabePNG = (formats & 2) != 0;
    data.AusgabeJPG = (formats & 4) != 0;
    data.AusgabePPM = (formats & 8) != 0;
    const QStringList names = frameFiles(data, 7);
    QStringList expected;
    int bit = 1;
    for (const char *extension : {"tga", "png", "jpg", "ppm"}) {
        if ((formats & bit) != 0)
            expected << QStringLiteral("/x/f007.") + extension;
        bit *= 2;
    }
    QCOMPARE(names, expected);
    QCOMPARE(frameTitle(data, 7), QString("/x/f007"));
}

void TestFrameFiles::numbersBeginAtTheOffsetAndWrap_data()
{
    constexpr int Highest = std::numeric_limits<int>::max();
    constexpr int Lowest = std::numeric_limits<int>::min();
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("number");
    QTest::newRow("first") << 0 << 0 << 0;
    QTest::newRow("later") << 100 << 5 << 105;
    QTest::newRow("negative") << -10 << 3 << -7;
    QTest::newRow("wraps upward") << Highest << 1 << Lowest;
    QTest::newRow("wraps downward") << Lowest << -1 << Highest;
}
void TestFrameFiles::numbersBeginAtTheOffsetAndWrap()
{
    QFETCH(int, offset);
    QFETCH(int, frame);
    SceneryData data;
    data.Offset = offset;
    QTEST(frameNumber(data, frame), "number");
}

void TestFrameFiles::percentSignsOfAStrangerDoNoHarm()
{
    SceneryData data;
    data.AusgabePNG = true;
    data.AusDateiname = "%s%n%d%d";
    QCOMPARE(frameFiles(data, 3), QStringList("%s%n3%d.png"));
    data.AusDateiname = "100%"; // the extension is no part of a conversion
    QCOMPARE(frameFiles(data, 3), QStringList("100%.png"));
    data.AusDateiname.clear();
    QCOMPARE(frameFiles(data, 3), QStringList(".png"));
}

void TestFrameFiles::sizesAreThoseOfTheFiles_data()
{
    QTest::addColumn<int>("quality");
    QTest::addColumn<bool>("preview");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("halved");
    QTest::addColumn<double>("factor");
    for (int quality = 0; quality < 3; ++quality) {
        QTest::addRow("quality %d", quality)
            << quality << false << QSize(641, 480) << (quality == 2)
            << (quality == 2 ? 2.0 : 1.0);
        QTest::addRow("quality %d, preview", quality)
            << quality << true << QSize(320, 240) << false << 0.5;
    }
}
void TestFrameFiles::sizesAreThoseOfTheFiles()
{
    QFETCH(int, quality);
    QFETCH(bool, preview);
    QFETCH(QSize, size);
    SceneryData data;
    data.AusBreite = 641;
    data.AusHoehe = 480;
    data.GenauRechnen = quality;
    const FrameScale scale = frameScale(data, preview);
    QCOMPARE(scale.file, size);
    QTEST(scale.halved, "halved");
    QTEST(scale.factor, "factor");
    QCOMPARE(scale.target, scale.halved ? size * 2 : size);
    // The largest of the shape of 641 by 480 in a square.
    const FrameScale within = frameScaleWithin(data, {100, 100});
    QCOMPARE(within.file, QSize(100, 74));
    QCOMPARE(within.halved, quality == 2);
    QCOMPARE(within.target, within.halved ? QSize(200, 148) : within.file);
    QCOMPARE(within.factor, within.target.width() / 641.0);
    QCOMPARE(frameScaleWithin(data, {1, 1}).file, QSize(1, 1));
}

void TestFrameFiles::copiesCountAsMemory_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("halved");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<qint64>("bytes");
    QTest::newRow("alone") << QSize(1000, 500) << false << false << qint64(2000000);
    QTest::newRow("halved") << QSize(1000, 500) << true << false << qint64(2500000);
    QTest::newRow("shown") << QSize(1000, 500) << false << true << qint64(4000000);
    QTest::newRow("both") << QSize(1000, 500) << true << true << qint64(4500000);
    QTest::newRow("beyond 32 bits")
        << QSize(65536, 65536) << false << true << (qint64(1) << 35);
}
void TestFrameFiles::copiesCountAsMemory()
{
    QFETCH(QSize, size);
    QFETCH(bool, halved);
    QFETCH(bool, shown);
    QFETCH(qint64, bytes);
    QStringList told;
    setNoticeSink([&told](const QString &text, NoticeStay) { told << text; });
    qputenv("ZEPHRANT_MEMORY_BUDGET", QByteArray::number(bytes));
    QVERIFY(frameFitsMemory(size, halved, shown));
    QCOMPARE(told, QStringList());
    qputenv("ZEPHRANT_MEMORY_BUDGET", QByteArray::number(bytes - 1));
    QVERIFY(!frameFitsMemory(size, halved, shown));
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].startsWith(QStringLiteral("A frame of %1 x %2 pixels")
                                   .arg(size.width())
                                   .arg(size.height())));
    QCOMPARE(told[0].contains("with its copies"), halved || shown);
}

QTEST_APPLESS_MAIN(TestFrameFiles)
#include "test_framefiles.moc"

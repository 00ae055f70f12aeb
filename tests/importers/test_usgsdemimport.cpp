#include "importers/usgsdemfile.h"
#include "importers/usgsdemimport.h"
#include "importers/usgsdemreader.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Keeps what it is told, and answers as set.
class Listener : public UsgsDemQuestions {
public:
    bool confirmHeader(UsgsDemData &data) override
    {
        shown << data.fileName.trimmed();
        return cancelAt != shown.size();
    }
    bool continueChecking(const SuspiciousElevation &jump) override
    {
        jumps << QString("%1 to %2 in %3/%4")
                     .arg(jump.previous)
                     .arg(jump.current)
                     .arg(jump.column)
                     .arg(jump.row);
        return goOn;
    }
    void readingFile(const QString &fileName) override { reading << fileName; }

    QStringList shown, jumps, reading;
    qsizetype cancelAt = 0; // 1 is the first file
    bool goOn = true;
};

using Grid = QVector<QVector<int>>;

// All elevations, top row first.
Grid gridOf(const ElevationImage &image)
{
    Grid grid;
    for (int row = 0; row < image.height(); ++row) {
        QVector<int> values;
        for (int column = 0; column < image.width(); ++column)
            values << ElevationImage::stepsOf(image.pixel(column, row));
        grid << values;
    }
    return grid;
}

} // namespace

class TestUsgsDemImport : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    Listener m_listener;
    ElevationImage m_image;

    QString path(const QString &name) const { return m_dir.filePath(name); }

    bool import(const QStringList &names, int voidValue = -9999)
    {
        QStringList paths;
        for (const QString &name : names)
            paths << path(name);
        NoProgress unwatched;
        const Result<ElevationImage> image =
            UsgsDemImport(voidValue, m_listener).run(paths, unwatched);
        m_image = image.value_or(ElevationImage());
        return image.has_value();
    }

    bool importOne(const UsgsDemFile &file, int voidValue = -9999)
    {
        file.write(path("one.dem"));
        return import({"one.dem"}, voidValue);
    }

private slots:
    void init() { m_listener = {}; }

    void lastProfileAndLastSamplesAreThrownAway_data()
    {
        QTest::addColumn<int>("layout");
        QTest::newRow("fixed records") << int(UsgsDemFile::FixedRecords);
        QTest::newRow("line feeds") << int(UsgsDemFile::LineFeeds);
        QTest::newRow("carriage returns") << int(UsgsDemFile::WindowsLines);
        QTest::newRow("trimmed lines") << int(UsgsDemFile::Trimmed);
    }
    void lastProfileAndLastSamplesAreThrownAway()
    {
        QFETCH(int, layout);
        UsgsDemFile file;
        file.layout = UsgsDemFile::Layout(layout);
        file.profiles = {{11, 12, 13}, {21, 22, 23}, {31, 32, 33}, {41, 42, 43}};
        QVERIFY(importOne(file));
        QCOMPARE(gridOf(m_image), (Grid{{12, 22, 32}, {11, 21, 31}}));
        QCOMPARE(m_listener.shown, QStringList("TILE"));
        QCOMPARE(m_listener.reading, (QStringList{path("one.dem"), QString()}));
    }

    void theEasternTileHoldsTheSharedEdge()
    {
        UsgsDemFile west;
        west.name = "WEST";
        west.profiles = {{1, 2, 0}, {3, 4, 0}, {5, 6, 0}};
        UsgsDemFile east = west;
        east.name = "EAST";
        east.east += 60.0;
        east.profiles = {{7, 8, 0}, {9, 10, 0}, {0, 0, 0}};
        west.write(path("west.dem"));
        east.write(path("east.dem"));
        QVERIFY(import({"west.dem", "east.dem"}));
        QCOMPARE(gridOf(m_image), (Grid{{2, 4, 8, 10}, {1, 3, 7, 9}}));
        // The first header shown is the last file's, the next that of the file before.
        QCOMPARE(m_listener.shown, (QStringList{"EAST", "WEST"}));
    }

    void coarserTilesLeaveGaps()
    {
        UsgsDemFile fine;
        fine.step = fine.stepInHeader = 15.0;
        fine.profiles = {{1, 2, 0}, {3, 4, 0}, {0, 0, 0}};
        UsgsDemFile coarse;
        coarse.east += 30.0;
        coarse.profiles = {{5, 0}, {6, 0}, {0, 0}};
        fine.write(path("fine.dem"));
        coarse.write(path("coarse.dem"));
        QVERIFY(import({"fine.dem", "coarse.dem"}));
        QCOMPARE(gridOf(m_image), (Grid{{2, 4, 0, 0, 0, 0}, {1, 3, 5, 0, 6, 0}}));
    }

    void aWrongResolutionInOneAxisOnlyStretches()
    {
        UsgsDemFile file;
        file.stepInHeader = 60.0;
        file.profiles = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
        QVERIFY(importOne(file)); // columns 0, 0, (1)
        QCOMPARE(m_image.size(), QSize(1, 1));
        // The second sample stands one row above the image, which counts as row 0.
        QCOMPARE(gridOf(m_image), (Grid{{5}}));
    }

    void voidsBecomeZero_data()
    {
        QTest::addColumn<int>("voidValue");
        QTest::addColumn<int>("stored");
        QTest::newRow("default") << -9999 << 0;
        QTest::newRow("another value") << -32767 << -9999;
        QTest::newRow("zero") << 0 << -9999;
    }
    void voidsBecomeZero()
    {
        QFETCH(int, voidValue);
        QFETCH(int, stored);
        UsgsDemFile file;
        file.profiles = {{-9999, 0, -9999, 5}, {1, 2, 3, 4}};
        QVERIFY(importOne(file, voidValue));
        QCOMPARE(gridOf(m_image), (Grid{{stored}, {0}, {stored}}));
    }

    void jumpsAreShownUntilNo_data()
    {
        QTest::addColumn<bool>("goOn");
        QTest::addColumn<QStringList>("jumps");
        QTest::newRow("yes") << true
                             << QStringList{"100 to 612 in 0/1", "612 to 100 in 0/0",
                                            "0 to -512 in 1/2"};
        QTest::newRow("no") << false << QStringList{"100 to 612 in 0/1"};
    }
    void jumpsAreShownUntilNo()
    {
        QFETCH(bool, goOn);
        QFETCH(QStringList, jumps);
        m_listener.goOn = goOn;
        UsgsDemFile file;
        file.profiles = {{-411, 100, 612, 100, 9000},
                         {-9999, -512, -512, -1, 9},
                         {0, 9000, 0, 9000, 0}};
        QVERIFY(importOne(file));
        QCOMPARE(m_listener.jumps, jumps);
        QCOMPARE(gridOf(m_image), (Grid{{100, -1}, {612, -512}, {100, -512}, {-411, 0}}));
    }

    void everyFileStartsWithChecking()
    {
        m_listener.goOn = false;
        UsgsDemFile file;
        file.profiles = {{0, 600, 0, 0}, {0, 0, 0, 0}};
        file.write(path("a.dem"));
        file.write(path("b.dem"));
        QVERIFY(import({"a.dem", "b.dem"}));
        QCOMPARE(m_listener.jumps.size(), 2);
    }

    void cancelEndsTheImport()
    {
        UsgsDemFile file;
        file.profiles = {{1, 2}, {3, 4}};
        file.write(path("a.dem"));
        file.write(path("b.dem"));
        m_listener.cancelAt = 2;
        QVERIFY(!import({"a.dem", "b.dem"}));
        QCOMPARE(m_listener.shown.size(), 2);
        QCOMPARE(m_listener.reading, (QStringList{path("a.dem"), QString()}));
    }

    void missingFilesContributeNothing()
    {
        UsgsDemFile file;
        file.profiles = {{1, 2}, {3, 4}};
        file.write(path("a.dem"));
        QVERIFY(QDir(m_dir.path()).mkpath("folder"));
        QVERIFY(import({"a.dem", "missing.dem", "folder"}));
        QCOMPARE(gridOf(m_image), (Grid{{1}}));
        QCOMPARE(m_listener.shown, (QStringList{"TILE", "TILE", "TILE"}));
    }

    void sizesThatAreNoneGiveNoImage_data()
    {
        QTest::addColumn<double>("resolution");
        QTest::addColumn<double>("step");
        QTest::newRow("spacing 0") << 0.0 << 30.0;
        QTest::newRow("negative spacing") << -30.0 << 30.0;
        QTest::newRow("beyond memory") << 1e-5 << 30.0;
        QTest::newRow("beyond int") << 1e-30 << 30.0;
        QTest::newRow("no extent") << 30.0 << 0.0;
        QTest::newRow("infinite extent") << 30.0 << 1e308;
    }
    void sizesThatAreNoneGiveNoImage()
    {
        QFETCH(double, resolution);
        QFETCH(double, step);
        UsgsDemFile file;
        file.stepInHeader = resolution;
        file.step = step;
        file.profiles = {{1, 2}, {1000, 4}, {3, 3}};
        QVERIFY(importOne(file));
        QVERIFY(m_image.isNull());
    }

    void fortranExponentsGiveNoImage()
    {
        UsgsDemFile file;
        file.exponent = 'D';
        file.profiles = {{1, 2, 3}, {1000, 4, 5}, {3, 3, 3}};
        QVERIFY(importOne(file));
        QVERIFY(m_image.isNull());
    }

    void noFilesGiveNoImage()
    {
        QVERIFY(import({}));
        QVERIFY(m_image.isNull());
    }

    void junkCountsEndWithTheFile_data()
    {
        QTest::addColumn<QByteArray>("count");
        QTest::addColumn<int>("stored");
        // The second sample stands one row above the image, which counts as row 0.
        QTest::newRow("highest") << QByteArray("2147483647") << 8;
        QTest::newRow("negative") << QByteArray("-5") << 7;
        QTest::newRow("beyond int") << QByteArray("99999999999999999999") << 8;
        QTest::newRow("word") << QByteArray("abc") << 0;
    }
    void junkCountsEndWithTheFile()
    {
        QFETCH(QByteArray, count);
        QFETCH(int, stored);
        UsgsDemFile file;
        file.layout = UsgsDemFile::Trimmed;
        file.columnsInHeader = 999999;
        file.profiles = {{7, 8}};
        QByteArray bytes = file.bytes();
        const qsizetype head = file.header().size() + 1;
        bytes.replace(head + 12, 6, " " + count);
        QFile out(path("one.dem"));
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        out.close();
        QVERIFY(import({"one.dem"}));
        QCOMPARE(m_image.size(), QSize(999998, 1));
        QCOMPARE(ElevationImage::stepsOf(m_image.pixel(0, 0)), stored);
    }

    void aFileCutAnywhereStoresWhatIsThere()
    {
        UsgsDemFile file;
        file.layout = UsgsDemFile::Trimmed;
        file.profiles = {{11, 12, 13}, {21, 22, 23}, {31, 32, 33}};
        const QByteArray whole = file.bytes();
        UsgsDemImport import(-9999, m_listener);
        file.write(path("one.dem"));
        NoProgress unwatched;
        QVERIFY(import.run({path("one.dem")}, unwatched).has_value());
        UsgsDemData data;
        QVERIFY(import.parseDataHeader(data, path("one.dem")));

        const Grid complete = {{12, 22}, {11, 21}};
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            QBuffer in;
            in.setData(whole.left(length));
            QVERIFY(in.open(QIODevice::ReadOnly));
            ElevationImage image = import.mosaic().makeImage();
            const Result<qint64> positive =
                import.readProfiles(in, data, image, unwatched);
            const Grid grid = gridOf(image);
            int stored = 0;
            for (int row = 0; row < 2; ++row)
                for (int column = 0; column < 2; ++column) {
                    const int value = grid[row][column];
                    const int full = complete[row][column];
                    QVERIFY(value == 0 || value == full || value == full / 10);
                    stored += value > 0;
                }
            QCOMPARE(positive.value(), stored);
        }
    }

    void theDataBeginBehindTheFirstLineFeed()
    {
        UsgsDemFile file;
        file.profiles = {{11, 12}, {21, 22}, {31, 32}};
        QByteArray bytes = file.bytes();
        bytes[2047] = '\n'; // the first profile is lost
        QFile out(path("one.dem"));
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        out.close();
        QVERIFY(import({"one.dem"}));
        QCOMPARE(gridOf(m_image), (Grid{{0, 21}}));
        bytes[2047] = ' ';
        bytes[2048] = '\n'; // too far to count
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        out.close();
        QVERIFY(import({"one.dem"}));
        QCOMPARE(gridOf(m_image), (Grid{{11, 21}}));
    }

    void numbersStandApartByAnything_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<double>>("numbers");
        QTest::newRow("blanks") << QByteArray("  12   -3") << QVector<double>{12, -3};
        QTest::newRow("letters") << QByteArray("a1b2") << QVector<double>{1, 2};
        QTest::newRow("zero byte") << QByteArray("1\0002", 3) << QVector<double>{1, 2};
        QTest::newRow("exponent") << QByteArray("1.5E+03") << QVector<double>{1.5, 3};
        QTest::newRow("two points") << QByteArray("1.2.3 4") << QVector<double>{1.2, 4};
        QTest::newRow("touching minus") << QByteArray("12-34") << QVector<double>{12, 34};
        QTest::newRow("lone minus") << QByteArray("- 5") << QVector<double>{0, 5};
        QTest::newRow("point") << QByteArray(". 5") << QVector<double>{0, 5};
        QTest::newRow("byte 255") << QByteArray("\xFF"
                                                "5 6")
                                  << QVector<double>{0, 5};
        QTest::newRow("many digits")
            << QByteArray(5000, '0') + " 5" << QVector<double>{0, 5};
        QTest::newRow("end") << QByteArray("7") << QVector<double>{7, 0};
    }
    void numbersStandApartByAnything()
    {
        QFETCH(QByteArray, text);
        QFETCH(QVector<double>, numbers);
        QBuffer in(&text);
        QVERIFY(in.open(QIODevice::ReadOnly));
        UsgsDemReader reader(in);
        for (const double number : numbers)
            QCOMPARE(reader.ReadNumber(), number);
    }

    void theReaderIsExhaustedWhenItFindsNoNumber()
    {
        QBuffer in;
        in.setData("7 8 \n ");
        QVERIFY(in.open(QIODevice::ReadOnly));
        UsgsDemReader reader(in);
        QCOMPARE(reader.ReadNumber(), 7.0);
        QCOMPARE(reader.readInteger(), 8);
        QVERIFY(!reader.isExhausted());
        QCOMPARE(reader.ReadNumber(), 0.0);
        QVERIFY(reader.isExhausted());
    }
};

QTEST_APPLESS_MAIN(TestUsgsDemImport)
#include "test_usgsdemimport.moc"

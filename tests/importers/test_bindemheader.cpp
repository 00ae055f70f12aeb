#include "importers/bindemconversion.h"
#include "importers/bindemheaderfile.h"

#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

class Guesses : public BinDemHeaderListener {
public:
    void bitsGuessed(int bitsPerPixel) override { bits << bitsPerPixel; }
    QVector<int> bits;
};

BinDemHeader entriesOf(QByteArray text)
{
    BinDemHeader header;
    QBuffer in(&text);
    if (in.open(QIODevice::ReadOnly))
        header.readEntries(in);
    return header;
}

constexpr double NotSet = BinDemHeader::NotSet;

} // namespace

class TestBinDemHeader : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    Guesses m_guesses;
    BinDemHeaderFile m_file;

    void write(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_dir->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    bool read(const QByteArray &header)
    {
        write("a.b.hdr", header); // its complete base name is "a.b"
        return m_file.read(m_dir->filePath("a.b.hdr"), m_guesses);
    }
    const BinDemHeader &header() const { return m_file.header(); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_guesses = {};
        m_file = {};
    }

    void everyKeyBeginsWithAKnownWord_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("field");
        const QList<QStringList> keys = {
            {"rows", "nrows", "number_of_rows", "ROWS_IN_FILE"},
            {"cols", "ncols", "columns", "Number_Of_Columns"},
            {"bands", "nbands"},
            {"nbits"},
            {"ul_x_coordinate", "min. x", "ulxmap", "left_map_x"},
            {"ul_y_coordinate", "max. y", "ulymap", "upper_map_y"},
            {"lr_x_coordinate", "max. x", "right_map_x"},
            {"lr_y_coordinate", "min. y", "lower_map_y"},
            {"xllcorner"},
            {"yllcorner"},
            {"pixel_width", "xdim"},
            {"pixel_height", "ydim"},
            {"nodata", "NODATA_value"},
        };
        for (int field = 0; field < keys.size(); ++field)
            for (const QString &key : keys[field])
                QTest::newRow(qPrintable(key)) << key << field;
    }
    void everyKeyBeginsWithAKnownWord()
    {
        QFETCH(QString, key);
        QFETCH(int, field);
        BinDemHeader h;
        QVERIFY(h.insertEntry(key, "7"));
        const QVector<double> values = {double(h.numberOfRows),
                                        double(h.numberOfColumns),
                                        double(h.numberOfBands),
                                        double(h.bitsPerPixel),
                                        h.upperLeftX,
                                        h.upperLeftY,
                                        h.lowerRightX,
                                        h.lowerRightY,
                                        h.lowerLeftX,
                                        h.lowerLeftY,
                                        h.pixelWidth,
                                        h.pixelHeight,
                                        h.noDataValue};
        for (int i = 0; i < values.size(); ++i)
            QCOMPARE(values[i] == 7.0, i == field);
        QCOMPARE(h.hasNoDataValue, field == 12);
    }

    void textsAndTypesAreTaken()
    {
        BinDemHeader h;
        QVERIFY(h.insertEntry("CELLSIZE", "0.25"));
        QCOMPARE(h.pixelWidth, 0.25);
        QCOMPARE(h.pixelHeight, 0.25);
        QVERIFY(h.insertEntry("Ref. Units", "m"));
        QCOMPARE(h.mapUnits, QString("m"));
        QVERIFY(h.insertEntry("layout", "BSQ"));
        QCOMPARE(h.layout, QString("BSQ"));
        QVERIFY(h.insertEntry("byte_order", "Motorola"));
        QVERIFY(h.isBigEndian());
        QVERIFY(h.insertEntry("byteorder", "MSBFIRST"));
        QVERIFY(!h.isBigEndian());
        QVERIFY(!h.insertEntry("bandrowbytes", "480"));
        QVERIFY(!h.insertEntry("row", "480"));
    }

    void dataTypesGiveBits_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("bits");
        QTest::newRow("i8") << "i8" << 8;
        QTest::newRow("i16") << "i16" << 16;
        QTest::newRow("integer") << "integer" << 16;
        QTest::newRow("f32") << "f32" << 32;
        QTest::newRow("real") << "real" << 32;
        QTest::newRow("another") << "byte" << 24;
    }
    void dataTypesGiveBits()
    {
        QFETCH(QString, value);
        QFETCH(int, bits);
        BinDemHeader h;
        h.bitsPerPixel = 24;
        QVERIFY(h.insertEntry("Data Type", value));
        QCOMPARE(h.bitsPerPixel, bits);
    }

    void linesPartAtColonsThenEqualSignsThenBlanks()
    {
        const BinDemHeader h = entriesOf("rows : 18 : 5\n"
                                         "\n"
                                         "  ncols=20=3  \n"
                                         "comment\n"
                                         "BYTE_ORDER = LSB\n"
                                         "ulxmap \t 1.5 deg\n"
                                         "ulymap: 8.25deg\n"
                                         "max. x = 9\n"
                                         "min. y 4\n" // the key is "min."
                                         "lr_y_coordinate: 0.75deg\r\n"
                                         "map_units: a = b\n"
                                         "nbits 16");
        QCOMPARE(h.numberOfRows, 18);
        QCOMPARE(h.numberOfColumns, 20);
        QCOMPARE(h.byteOrder, QString("LSB"));
        QCOMPARE(h.upperLeftX, 1.5);
        QCOMPARE(h.upperLeftY, 8.25);
        QCOMPARE(h.lowerRightX, 9.0);
        QCOMPARE(h.lowerRightY, 0.0); // not wholly a number
        QCOMPARE(h.mapUnits, QString("a = b"));
        QCOMPARE(h.bitsPerPixel, 16);
    }

    void aHeaderCutAnywhereIsRead()
    {
        const QByteArray whole = "rows 18\ncols=20\nnbits: 16\nulxmap 1\nulymap 2\n"
                                 "cellsize 0.5\nnodata -9999\n";
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            QVERIFY(read(whole.left(length)));
            // Complete with the digit of "ulymap": the rest can be worked out.
            QCOMPARE(header().faults().isEmpty(), length >= 43);
        }
    }

    void junkIsRead()
    {
        QByteArray junk;
        for (unsigned i = 0; i < 300000; ++i)
            junk += char(i * i >> 3);
        QVERIFY(read(junk));
        QVERIFY(read(QByteArray(300000, 'x') + "\nrows 5\n"));
        QCOMPARE(header().numberOfRows, 5);
    }

    void missingHeadersChangeNothing()
    {
        QVERIFY(read("rows 5"));
        QVERIFY(!m_file.read(m_dir->filePath("missing.hdr"), m_guesses));
        QVERIFY(!m_file.read(m_dir->path(), m_guesses));
        QCOMPARE(header().numberOfRows, 5);
    }

    void aHeaderResetsTheOneBefore()
    {
        QVERIFY(read("rows 5\nnodata 3\nnbands 2\nbyteorder M\nmap_units m"));
        QVERIFY(read("cols 5"));
        QCOMPARE(header().numberOfRows, -1);
        QCOMPARE(header().numberOfBands, 1);
        QVERIFY(!header().hasNoDataValue);
        QVERIFY(!header().isBigEndian());
        QCOMPARE(header().mapUnits, QString("pixel"));
    }

    void lowerLeftCornersGiveUpperLeftOnes()
    {
        QVERIFY(read("ncols 4\nnrows 5\nnbits 8\nxllcorner 10\nyllcorner 20\n"
                     "cellsize 0.5"));
        QCOMPARE(header().upperLeftX, 10.0);
        QCOMPARE(header().upperLeftY, 22.0); // 20 + 4 * 0.5
        QCOMPARE(header().faults(), QString());
    }

    void cornersGiveThePixelSize()
    {
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\nulxmap 1\nlr_x_coordinate 3\n"
                     "ulymap 9\nlr_y_coordinate 6"));
        QCOMPARE(header().pixelWidth, 0.5);
        QCOMPARE(header().pixelHeight, 1.5);
    }

    void theWorldFileGivesPositionAndSize_data()
    {
        QTest::addColumn<QString>("end");
        QTest::newRow("lower case") << ".blw";
        QTest::newRow("upper case") << ".BLW";
    }
    void theWorldFileGivesPositionAndSize()
    {
        QFETCH(QString, end);
        write("a.b" + end, "0.5 east\n1\n2\n-0.25\n-10.25\n20.75\n");
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\nxdim 7\nydim 7"));
        QCOMPARE(header().pixelWidth, 0.5);
        QCOMPARE(header().pixelHeight, 0.25);
        QCOMPARE(header().upperLeftX, -10.25);
        QCOMPARE(header().upperLeftY, 21.25); // 20.75 + 2 * 0.25
    }

    void theWorldFileIsReadForTheMissingYOnly()
    {
        write("a.b.blw", "0.5\n0\n0\n-0.25\n-10\n20\n");
        write("a.b.stx", "1 -9999 200 0 0");
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\nulxmap 7\n"));
        QCOMPARE(header().upperLeftX, -10.0);
        QCOMPARE(header().upperLeftY, 20.5);
        QVERIFY(!header().hasNoDataValue); // no statistics here
        QCOMPARE(m_file.statisticsMaximum(), 9999);
    }

    void aShortOrUnreadableWorldFileReadsAsZero()
    {
        write("a.b.blw", "0.5\n");
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\n"));
        QCOMPARE(header().pixelWidth, 0.5);
        QCOMPARE(header().upperLeftY, 0.0);
        init();
        QVERIFY(QDir(m_dir->path()).mkdir("a.b.blw"));
        QVERIFY(QDir(m_dir->path()).mkdir("a.b.stx"));
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\n"));
        QCOMPARE(header().upperLeftX, NotSet);
    }

    void statisticsGiveRangeAndNoData_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("minimum");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<bool>("noData");
        QTest::newRow("full") << QByteArray("1 3 200 63.5 12.25") << 3 << 200 << false;
        QTest::newRow("no data") << QByteArray("1 -9999 4535") << -9999 << 4535 << true;
        QTest::newRow("lowest") << QByteArray("1 -32768 9") << -32768 << 9 << true;
        QTest::newRow("two numbers") << QByteArray("1 3") << 3 << 9999 << false;
        QTest::newRow("word") << QByteArray("1 x 200") << -9999 << 9999 << true;
        QTest::newRow("empty") << QByteArray() << -9999 << 9999 << true;
    }
    void statisticsGiveRangeAndNoData()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, minimum);
        QFETCH(int, maximum);
        QFETCH(bool, noData);
        write("a.b.STX", text);
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\n"));
        QCOMPARE(m_file.statisticsMinimum(), minimum);
        QCOMPARE(m_file.statisticsMaximum(), maximum);
        QCOMPARE(header().hasNoDataValue, noData);
        QCOMPARE(header().noDataValue, noData ? minimum : 0.0);
        // The next header resets all but the statistics.
        QVERIFY(QFile::remove(m_dir->filePath("a.b.STX")));
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8\n"));
        QCOMPARE(m_file.statisticsMaximum(), maximum);
        QVERIFY(!header().hasNoDataValue);
    }

    void bitsAreGuessedFromTheFirstRaster_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QVector<int>>("sizes");
        QTest::addColumn<int>("bits");
        using S = QStringList;
        using V = QVector<int>;
        QTest::newRow("8") << S{"a.b.bil"} << V{15} << 8;
        QTest::newRow("16") << S{"a.b.BIL"} << V{30} << 16;
        QTest::newRow("32") << S{"a.b.flt"} << V{60} << 32;
        QTest::newRow("upper case") << S{"a.b.FLT"} << V{60} << 32;
        QTest::newRow("first counts") << S{"a.b.bil", "a.b.flt"} << V{14, 60} << -1;
        QTest::newRow("odd size") << S{"a.b.bil"} << V{31} << -1;
        QTest::newRow("none") << S{"a.b.img"} << V{15} << -1;
    }
    void bitsAreGuessedFromTheFirstRaster()
    {
        QFETCH(QStringList, names);
        QFETCH(QVector<int>, sizes);
        QFETCH(int, bits);
        for (int i = 0; i < names.size(); ++i)
            write(names[i], QByteArray(sizes[i], 'x'));
        QVERIFY(read("ncols 5\nnrows 3\n"));
        QCOMPARE(header().bitsPerPixel, bits);
        QCOMPARE(m_guesses.bits, bits < 0 ? QVector<int>() : QVector<int>{bits});
        QVERIFY(read("ncols 5\nnrows 3\nnbits 8"));
        QVERIFY(m_guesses.bits.size() < 2);
    }

    void enormousSizesAreNoGuess()
    {
        write("a.b.bil", "x");
        QVERIFY(read("ncols 2147483647\nnrows 2147483647\n"));
        QVERIFY(read("ncols -2147483648\nnrows -2147483648\n"));
        QVERIFY(read("ncols -2147483648\nnrows 1\nulxmap 1\nulymap 1\n"));
        QCOMPARE(m_guesses.bits, QVector<int>());
    }

    void faultsAreListedInOrder()
    {
        BinDemHeader h;
        h.numberOfBands = 0;
        QCOMPARE(
            h.faults(),
            QString("ROWS - Number of rows missing or invalid. Valid: 16 to 32768.\n"
                    "COLS - Number of columns missing or invalid. Valid: 16 to 32768.\n"
                    "BANDS - Number of spectral bands missing or invalid. Valid: 1 "
                    "only.\n"
                    "Datatype - Number of bits per pixel missing or invalid. Valid: 8, "
                    "16, 32.\n"
                    "UL_X_COORDINATE - x coordinate of the center of the upper-left "
                    "pixel missing or invalid.\n"
                    "UL_Y_COORDINATE - y coordinate of the center of the upper-left "
                    "pixel missing or invalid.\n"
                    "PIXEL_WIDTH - missing or invalid. Valid: any non-zero positive "
                    "floating point number.\n"
                    "PIXEL_HEIGHT - missing or invalid. Valid: any non-zero positive "
                    "floating point number.\n"));
        // Ranges are named and not enforced.
        h.numberOfRows = h.numberOfColumns = h.numberOfBands = 1;
        h.bitsPerPixel = 8;
        h.upperLeftX = h.upperLeftY = h.pixelWidth = h.pixelHeight = 0.0;
        QCOMPARE(h.faults(), QString());
    }

    void aFullTileKeepsItsGrid()
    {
        QVERIFY(read("BYTEORDER M\nNROWS 6000\nNCOLS 4800\nNBITS 16\nNODATA -9999\n"
                     "ULXMAP -19.99583333333333\nULYMAP 89.99583333333334\n"
                     "XDIM 0.00833333333333\nYDIM 0.00833333333333\n"));
        QCOMPARE(header().faults(), QString());
        QVERIFY(header().hasNoDataValue);
        QVERIFY(header().isBigEndian());
        // 4799 * 0.00833333333333 = 39.991666666650...
        QCOMPARE(snappedCoordinate(header().extentX()), 39.991667);
        QCOMPARE(snappedCoordinate(header().upperLeftX), -19.995833);
    }
};

QTEST_APPLESS_MAIN(TestBinDemHeader)
#include "test_bindemheader.moc"

#include "importers/bindemconversion.h"
#include "raster/elevationimage.h"

#include <QTemporaryFile>
#include <QTest>
#include <QtEndian>

#include <cmath>
#include <limits>

namespace {

class Questions : public BinDemQuestions {
public:
    bool proceedWithoutKeyword() override
    {
        ++asked;
        return proceed;
    }
    int asked = 0;
    bool proceed = true;
};

// A raster of a unit grid whose upper left pixel is at (0, rows - 1).
BinDemHeader headerOf(int columns, int rows, int bits)
{
    BinDemHeader h;
    h.numberOfColumns = columns;
    h.numberOfRows = rows;
    h.bitsPerPixel = bits;
    h.upperLeftX = 0.0;
    h.upperLeftY = rows - 1.0;
    h.pixelWidth = h.pixelHeight = 1.0;
    return h;
}

BinDemOptions wholeOf(const BinDemHeader &header)
{
    BinDemOptions options;
    options.upperLeftX = header.upperLeftX;
    options.upperLeftY = header.upperLeftY;
    options.extentX = header.numberOfColumns;
    options.extentY = header.numberOfRows;
    options.zScale = 1.0;
    return options;
}

template <typename Word> QByteArray little(const QVector<Word> &words)
{
    QByteArray bytes;
    for (const Word word : words) {
        const Word swapped = qToLittleEndian(word);
        bytes.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
    }
    return bytes;
}

template <typename Word> QByteArray big(const QVector<Word> &words)
{
    QByteArray bytes = little(words);
    for (qsizetype i = 0; i < bytes.size(); i += qsizetype(sizeof(Word)))
        std::reverse(bytes.begin() + i, bytes.begin() + i + qsizetype(sizeof(Word)));
    return bytes;
}

} // namespace

class TestBinDemConversion : public QObject {
    Q_OBJECT

private:
    Questions m_questions;
    ElevationImage m_image;
    StoredRange m_range;

    bool convert(QIODevice &file, const BinDemHeader &header,
                 const BinDemOptions &options)
    {
        NoProgress unwatched;
        const Result<BinDem> dem =
            convertBinDem(file, header, options, m_questions, unwatched);
        if (dem) {
            m_image = dem->image;
            m_range = dem->range;
        }
        return dem.has_value();
    }
    bool convert(const QByteArray &bytes, const BinDemHeader &header,
                 const BinDemOptions &options)
    {
        QTemporaryFile file;
        if (!file.open())
            return false;
        file.write(bytes);
        file.close();
        file.open();
        return convert(file, header, options);
    }

    QVector<int> pixels() const
    {
        QVector<int> all;
        for (int row = 0; row < m_image.height(); ++row)
            for (int column = 0; column < m_image.width(); ++column)
                all << ElevationImage::stepsOf(m_image.pixel(column, row));
        return all;
    }

private slots:
    void init()
    {
        m_questions = {};
        m_image = {};
        m_range = {};
    }

    void wordsAreReadInBothByteOrders_data()
    {
        QTest::addColumn<QString>("order");
        QTest::addColumn<bool>("bigEndian");
        QTest::newRow("default") << "I" << false;
        QTest::newRow("M") << "M" << true;
        QTest::newRow("Motorola") << "MOTOROLA" << true;
        QTest::newRow("unknown") << "msbfirst" << false;
    }
    void wordsAreReadInBothByteOrders()
    {
        QFETCH(QString, order);
        QFETCH(bool, bigEndian);
        BinDemHeader h = headerOf(2, 2, 16);
        h.byteOrder = order;
        const QVector<qint16> words = {1, -2, 300, -32768};
        QVERIFY(convert(bigEndian ? big(words) : little(words), h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{1, -2, 300, -32768}));
        QCOMPARE(m_range.text(), QString("minimum -32768\nmaximum 300"));
    }

    void floatsAreReadInBothByteOrders()
    {
        BinDemHeader h = headerOf(2, 2, 32);
        const QVector<float> words = {1.5f, -2.5f, 0.25f, 1588.75f};
        QVERIFY(convert(little(words), h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{2, -3, 0, 1589}));
        QCOMPARE(m_range.text(), QString("minimum -2.5\nmaximum 1588.75"));
        h.byteOrder = "m";
        QVERIFY(convert(big(words), h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{2, -3, 0, 1589}));
    }

    void bytesAboveTheStatisticsMaximumAreNegative()
    {
        BinDemHeader h = headerOf(4, 1, 8);
        h.noDataValue = 7; // means nothing to bytes
        BinDemOptions options = wholeOf(h);
        QVERIFY(convert(QByteArray("\x07\xC8\xC9\xFF", 4), h, options));
        QCOMPARE(pixels(), (QVector<int>{7, 200, 201, 255}));
        options.statisticsMaximum = 200;
        QVERIFY(convert(QByteArray("\x07\xC8\xC9\xFF", 4), h, options));
        QCOMPARE(pixels(), (QVector<int>{7, 200, -55, -1}));
        options.statisticsMaximum = -1;
        QVERIFY(convert(QByteArray("\x00\xC8\xC9\xFF", 4), h, options));
        QCOMPARE(pixels(), (QVector<int>{-256, -56, -55, -1}));
    }

    void noDataBecomesZeroUnlessKept_data()
    {
        QTest::addColumn<double>("noData");
        QTest::addColumn<bool>("keep");
        QTest::addColumn<int>("stored");
        QTest::newRow("dropped") << -9999.0 << false << 0;
        QTest::newRow("kept") << -9999.0 << true << -9999 * 256;
        QTest::newRow("another") << -32768.0 << false << -9999 * 256;
        QTest::newRow("fraction") << -9999.9 << false << 0;
        QTest::newRow("low bits") << 65536.0 * 7 - 9999 << false << 0;
        QTest::newRow("enormous") << -3.4e38 << false << -9999 * 256;
        QTest::newRow("infinite") << -HUGE_VAL << false << -9999 * 256;
    }
    void noDataBecomesZeroUnlessKept()
    {
        QFETCH(double, noData);
        QFETCH(bool, keep);
        QFETCH(int, stored);
        BinDemHeader h = headerOf(2, 1, 16);
        h.noDataValue = noData;
        BinDemOptions options = wholeOf(h);
        options.zScale = 256.0;
        options.keepNoDataValues = keep;
        QVERIFY(convert(little(QVector<qint16>{-9999, 3}), h, options));
        QCOMPARE(pixels(), (QVector<int>{stored, 768}));
    }

    void noDataFloatsCompareInSinglePrecision()
    {
        BinDemHeader h = headerOf(2, 1, 32);
        h.noDataValue = -3.4028235e38;
        BinDemOptions options = wholeOf(h);
        const QByteArray bytes =
            little(QVector<float>{std::numeric_limits<float>::lowest(), 5.0f});
        QVERIFY(convert(bytes, h, options));
        QCOMPARE(pixels(), (QVector<int>{0, 5}));
        options.keepNoDataValues = true;
        QVERIFY(convert(bytes, h, options));
        QCOMPARE(pixels(), (QVector<int>{-8388608, 5}));
    }

    void elevationsAreClamped_data()
    {
        QTest::addColumn<double>("zScale");
        QTest::addColumn<QVector<qint16>>("words");
        QTest::addColumn<QVector<int>>("stored");
        using W = QVector<qint16>;
        using V = QVector<int>;
        QTest::newRow("default scale")
            << 256.0 << W{32767, -32768} << V{8388352, -8388608};
        QTest::newRow("reversed") << -256.0 << W{32767, -32768} << V{-8388352, 8388607};
        QTest::newRow("beyond") << 300.0 << W{32767, -32768} << V{8388607, -8388608};
        QTest::newRow("rounded") << 0.5 << W{5, -5} << V{3, -3};
        QTest::newRow("zero") << 0.0 << W{5, -5} << V{0, 0};
    }
    void elevationsAreClamped()
    {
        QFETCH(double, zScale);
        QFETCH(QVector<qint16>, words);
        QFETCH(QVector<int>, stored);
        BinDemHeader h = headerOf(2, 1, 16);
        BinDemOptions options = wholeOf(h);
        options.zScale = zScale;
        QVERIFY(convert(little(words), h, options));
        QCOMPARE(pixels(), stored);
    }

    void floatsThatAreNoNumbersAreHarmless()
    {
        BinDemHeader h = headerOf(4, 1, 32);
        BinDemOptions options = wholeOf(h);
        options.zScale = 16777200.0;
        constexpr float Infinite = std::numeric_limits<float>::infinity();
        QVERIFY(convert(little(QVector<float>{std::nanf(""), Infinite, -Infinite, 3e38f}),
                        h, options));
        QCOMPARE(pixels(), (QVector<int>{0, 8388607, -8388608, 8388607}));
        QCOMPARE(m_range.text(), QString("minimum -8.38861e+06\nmaximum 8.38861e+06"));
    }

    void aRectangleIsCutOut()
    {
        const BinDemHeader h = headerOf(4, 4, 8);
        BinDemOptions options = wholeOf(h);
        options.upperLeftX = 1.0;
        options.upperLeftY = 2.0; // the second row
        options.extentX = 2.0;
        options.extentY = 2.0;
        QVERIFY(convert("abcdefghijklmnop", h, options));
        QCOMPARE(pixels(), (QVector<int>{'f', 'g', 'j', 'k'}));
        options.upperLeftX = -1.0; // -0.5 truncates to column 0
        QVERIFY(convert("abcdefghijklmnop", h, options));
        QCOMPARE(pixels(), (QVector<int>{'e', 'f', 'i', 'j'}));
        options.upperLeftX = -2.0; // begins in the row before
        QVERIFY(convert("abcdefghijklmnop", h, options));
        QCOMPARE(pixels(), (QVector<int>{'d', 'e', 'h', 'i'}));
    }

    void shortReadsLeaveTheEarlierBytes()
    {
        const BinDemHeader h = headerOf(3, 3, 8);
        BinDemOptions options = wholeOf(h);
        options.upperLeftY = 1.0; // ends one row below the file
        QVERIFY(convert("abcdefghi", h, options));
        QCOMPARE(pixels(), (QVector<int>{'d', 'e', 'f', 'g', 'h', 'i', 0, 0, 0}));
        // Rows are read from the bottom upward.
        QVERIFY(convert("abcdefgh", h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 0}));
        QVERIFY(convert("abcde", h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{'a', 'b', 'c', 'd', 'e', 0, 0, 0, 0}));
    }

    void aRectangleAboveTheFileReadsOn()
    {
        const BinDemHeader h = headerOf(2, 4, 8);
        BinDemOptions options = wholeOf(h);
        options.upperLeftY = 6.0; // -2.5 truncates to two rows above the first
        options.extentY = 3.0;
        QVERIFY(convert("abcdefgh", h, options));
        // The first row, then what follows it, upward.
        QCOMPARE(pixels(), (QVector<int>{'e', 'f', 'c', 'd', 'a', 'b'}));
    }

    void aFileCutAnywhereConverts()
    {
        const BinDemHeader h = headerOf(3, 3, 16);
        const QByteArray whole = little(QVector<qint16>{1, 2, 3, 4, 5, 6, 7, 8, 9});
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            init();
            QVERIFY(convert(whole.left(length), h, wholeOf(h)));
            for (int i = 0; i < length / 2; ++i)
                QCOMPARE(pixels()[i], i + 1);
        }
    }

    void tiffStartsNeedTheKeyword()
    {
        const BinDemHeader h = headerOf(2, 1, 8);
        const QByteArray start("II*\0xy", 6);
        const QByteArray keyword("#WGS 84|\0", 9);
        QVERIFY(convert(start + keyword + "ab", h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{'a', 'b'}));
        QCOMPARE(m_questions.asked, 0);
        QVERIFY(convert(start + "ab", h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{'I', 'I'}));
        QCOMPARE(m_questions.asked, 1);
        m_questions.proceed = false;
        m_image = {};
        QVERIFY(!convert(start + keyword.left(8) + "|", h, wholeOf(h)));
        QVERIFY(m_image.isNull());
        QVERIFY(convert("II* ", h, wholeOf(h))); // another fourth byte
        QCOMPARE(m_questions.asked, 2);
    }

    void theKeywordIsSearchedInAMillionBytes()
    {
        const BinDemHeader h = headerOf(2, 1, 8);
        const QByteArray keyword("#WGS 84|\0", 9);
        QByteArray bytes("II*\0", 4);
        bytes += QByteArray(999996 - 9, 'x') + keyword + "ab";
        QVERIFY(convert(bytes, h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{'a', 'b'}));
        bytes.insert(4, 'x'); // the last byte is out of reach
        QVERIFY(convert(bytes, h, wholeOf(h)));
        QCOMPARE(m_questions.asked, 1);
    }

    void sizesThatAreNoneStoreNothing_data()
    {
        QTest::addColumn<double>("extent");
        QTest::addColumn<double>("pixel");
        QTest::newRow("none") << 0.0 << 1.0;
        QTest::newRow("negative") << -5.0 << 1.0;
        QTest::newRow("not a number") << 0.0 << 0.0;
        QTest::newRow("infinite") << 5.0 << 0.0;
        QTest::newRow("beyond memory") << 360.0 << 0.001;
        QTest::newRow("beyond int") << 360.0 << 1e-300;
        QTest::newRow("negative pixels") << 5.0 << -1.0;
    }
    void sizesThatAreNoneStoreNothing()
    {
        QFETCH(double, extent);
        QFETCH(double, pixel);
        BinDemHeader h = headerOf(2, 2, 16);
        h.pixelWidth = h.pixelHeight = pixel;
        BinDemOptions options = wholeOf(h);
        options.extentX = options.extentY = extent;
        QVERIFY(convert("abcdefgh", h, options));
        QVERIFY(m_image.isNull());
        QCOMPARE(m_range.text(), QString("minimum 3.40282e+38\nmaximum -3.40282e+38"));
    }

    void otherSampleSizesStoreNothing_data()
    {
        QTest::addColumn<int>("bits");
        for (const int bits : {-2147483647, -8, -1, 0, 7, 24, 64, 2147483647})
            QTest::addRow("%d", bits) << bits;
    }
    void otherSampleSizesStoreNothing()
    {
        QFETCH(int, bits);
        const BinDemHeader h = headerOf(2, 2, bits);
        QVERIFY(convert("abcdefgh", h, wholeOf(h)));
        QCOMPARE(pixels(), (QVector<int>{0, 0, 0, 0}));
        QCOMPARE(m_range.text(), QString("minimum 3.40282e+38\nmaximum -3.40282e+38"));
    }

    // Four bytes are read ahead, the lower row comes first, and a row that the file does
    // not have repeats the one that was read before, of zeros at first.
    void rowsBeyondTheFileRepeatTheLast_data()
    {
        constexpr int Abcd[] = {25185, 25699}; // two words of each four letters
        constexpr int Efgh[] = {26213, 26727};
        QTest::addColumn<int>("columns");
        QTest::addColumn<double>("upperLeft");
        QTest::addColumn<QVector<int>>("stored");
        QTest::newRow("the lower row lies far behind the end")
            << 2147483647 << 0.0 << QVector<int>{Abcd[0], Abcd[1], 0, 0};
        QTest::newRow("the lower row lies before the beginning")
            << -2147483647 << 0.0 << QVector<int>{Abcd[0], Abcd[1], Efgh[0], Efgh[1]};
        const QVector<int> readOn = {Efgh[0], Efgh[1], Efgh[0], Efgh[1]};
        QTest::newRow("far away") << 2 << 1e300 << readOn;
        QTest::newRow("far the other way") << 2147483647 << -1e300 << readOn;
        QTest::newRow("not a number") << 2 << std::nan("") << readOn;
    }
    void rowsBeyondTheFileRepeatTheLast()
    {
        QFETCH(int, columns);
        QFETCH(double, upperLeft);
        BinDemHeader h = headerOf(2, 2, 16);
        const BinDemOptions options = wholeOf(h);
        h.numberOfColumns = columns;
        h.upperLeftX = h.upperLeftY = upperLeft;
        QVERIFY(convert("abcdefgh", h, options));
        QCOMPARE(m_image.size(), QSize(2, 2));
        QTEST(pixels(), "stored");
    }

    void offsetsGoBeyondFourGibibytes()
    {
        // A file with a hole: only its last row takes room.
        constexpr int Columns = 65536;
        constexpr int Rows = 65537;
        QTemporaryFile file;
        QVERIFY(file.open());
        if (!file.resize(qint64(Columns) * Rows))
            QSKIP("no room for a file with a hole");
        QVERIFY(file.seek(qint64(Columns) * (Rows - 1) + 5));
        file.write("ab");
        file.flush();
        file.seek(0);
        const BinDemHeader h = headerOf(Columns, Rows, 8);
        BinDemOptions options = wholeOf(h);
        options.upperLeftX = 5.0;
        options.upperLeftY = 1.0;
        options.extentX = options.extentY = 2.0;
        QVERIFY(convert(file, h, options));
        QCOMPARE(pixels(), (QVector<int>{0, 0, 'a', 'b'}));
    }

    void kilobytesAreThreeBytesAPixel()
    {
        BinDemHeader h = headerOf(4800, 6000, 16);
        BinDemOptions options;
        options.extentX = 100.0;
        options.extentY = 50.0;
        QCOMPARE(binDemKilobytes(h, options), QString("14")); // 15000 / 1024
        h.pixelWidth = 0.5;
        QCOMPARE(binDemKilobytes(h, options), QString("29"));
        h.pixelWidth = 1e-12;
        QCOMPARE(binDemKilobytes(h, options), QString("14648437500000"));
        h.pixelWidth = 0.0;
        QCOMPARE(binDemKilobytes(h, options), QString("0"));
    }

    void coordinatesSnapToMillionths_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("snapped");
        QTest::newRow("rounded up") << 1.2345678 << 1.234568;
        QTest::newRow("rounded down") << 1.2345674 << 1.234567;
        QTest::newRow("negative") << -1.9958333333 << -1.995833;
        QTest::newRow("projected") << 512345.5 << 512345.5;
        QTest::newRow("infinite") << -HUGE_VAL << -HUGE_VAL;
        QTest::newRow("not a number") << std::nan("") << 0.0;
    }
    void coordinatesSnapToMillionths()
    {
        QFETCH(double, value);
        QFETCH(double, snapped);
        QCOMPARE(snappedCoordinate(value), snapped);
    }
};

QTEST_APPLESS_MAIN(TestBinDemConversion)
#include "test_bindemconversion.moc"

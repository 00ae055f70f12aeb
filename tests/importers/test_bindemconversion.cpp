#include "importers/bindemfixture.h"

#include <QTemporaryFile>
#include <QTest>

#include <cmath>
#include <limits>

class TestBinDemConversion : public QObject, private BinDemFixture {
    Q_OBJECT

private slots:
    void init() { reset(); }

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

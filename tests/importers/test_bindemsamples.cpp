#include "importers/bindemfixture.h"

#include <QTemporaryFile>
#include <QTest>

#include <cmath>
#include <limits>

class TestBinDemSamples : public QObject, private BinDemFixture {
    Q_OBJECT

private slots:
    void init() { reset(); }

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
};

QTEST_APPLESS_MAIN(TestBinDemSamples)
#include "test_bindemsamples.moc"

#include "importers/numbers.h"

#include <QTest>

#include <cmath>
#include <limits>

class TestNumbers : public QObject {
    Q_OBJECT

private slots:
    void aNumberMayHaveAnythingBehindIt_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("plain") << QByteArray("12.5") << 12.5;
        QTest::newRow("blanks before") << QByteArray(" \t-3e2 x") << -300.0;
        QTest::newRow("plus") << QByteArray("+7") << 7.0;
        QTest::newRow("two signs") << QByteArray("+-7") << 0.0;
        QTest::newRow("Fortran exponent") << QByteArray("0.5001D+06") << 0.5001;
        QTest::newRow("two points") << QByteArray("1.2.3") << 1.2;
        QTest::newRow("comma") << QByteArray("1,5") << 1.0;
        QTest::newRow("hexadecimal") << QByteArray("0x1A") << 26.0;
        QTest::newRow("x without digits") << QByteArray("0xg") << 0.0;
        QTest::newRow("word") << QByteArray("abc") << 0.0;
        QTest::newRow("sign only") << QByteArray("-") << 0.0;
        QTest::newRow("empty") << QByteArray() << 0.0;
        QTest::newRow("too large") << QByteArray("-1e999") << -HUGE_VAL;
        QTest::newRow("too small") << QByteArray("1e-999") << 0.0;
    }
    void aNumberMayHaveAnythingBehindIt()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, number);
        QCOMPARE(leadingNumber(text), number);
    }

    void truncationHoldsWithinInt_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("truncated");
        const int lowest = std::numeric_limits<int>::min();
        const int highest = std::numeric_limits<int>::max();
        QTest::newRow("toward zero") << -1.9 << -1;
        QTest::newRow("highest") << 2147483647.0 << highest;
        QTest::newRow("beyond") << 2147483648.0 << highest;
        QTest::newRow("infinite") << -HUGE_VAL << lowest;
        QTest::newRow("no number") << std::nan("") << lowest;
    }
    void truncationHoldsWithinInt()
    {
        QFETCH(double, value);
        QFETCH(int, truncated);
        QCOMPARE(truncatedToInt(value), truncated);
    }

    void wholeNumbersShowNoFraction()
    {
        QCOMPARE(wholeNumberText(612.9), QString("612"));
        QCOMPARE(wholeNumberText(-0.5), QString("0"));
        QCOMPARE(wholeNumberText(1e15), QString("1000000000000000"));
    }
};

QTEST_APPLESS_MAIN(TestNumbers)
#include "test_numbers.moc"

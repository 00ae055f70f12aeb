#include "importers/numbers.h"

#include <QTest>

#include <cmath>

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

    void wholeNumbersShowNoFraction()
    {
        QCOMPARE(wholeNumberText(612.9), QString("612"));
        QCOMPARE(wholeNumberText(-0.5), QString("0"));
        QCOMPARE(wholeNumberText(1e15), QString("1000000000000000"));
    }
};

QTEST_APPLESS_MAIN(TestNumbers)
#include "test_numbers.moc"

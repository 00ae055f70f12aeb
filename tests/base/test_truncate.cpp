#include "base/pi.h"
#include "base/truncate.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();
constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double None = std::numeric_limits<double>::quiet_NaN();

// What the rule says, by arithmetic that no number is too large for.
quint32 lowBits(double v, int bits)
{
    const double modulus = std::ldexp(1.0, bits);
    const double rest = std::fmod(std::trunc(v), modulus);
    return rest < 0.0 ? quint32(rest + modulus) : quint32(rest);
}

} // namespace

class TestTruncate : public QObject {
    Q_OBJECT

private slots:
    void eachRuleHasItsOwnEnds_data();
    void eachRuleHasItsOwnEnds();
    void halvesAreAddedAndCut_data();
    void halvesAreAddedAndCut();
    void lowBitsAreThoseOfTheWholePart();
    void whatIsNoNumberHasNoLowBits();
    void largeNumbersAreHeldBy32Bits();
    void piIsTheNearestDouble();
};

void TestTruncate::eachRuleHasItsOwnEnds_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("orLowest");
    QTest::addColumn<int>("orNearest");
    QTest::addColumn<int>("orNearestNanLowest");
    const auto same = [](const char *name, double value, int result) {
        QTest::newRow(name) << value << result << result << result;
    };
    same("zero", 0.0, 0);
    same("toward zero", 1.9, 1);
    same("toward zero from below", -1.9, -1);
    same("nearly zero", -0.9, 0);
    same("highest", 2147483647.0, Highest);
    same("highest and a part", 2147483647.9, Highest);
    same("lowest", -2147483648.0, Lowest);
    same("lowest and a part", -2147483648.9, Lowest);
    QTest::newRow("beyond") << 2147483648.0 << Lowest << Highest << Highest;
    QTest::newRow("beyond from below") << -2147483649.0 << Lowest << Lowest << Lowest;
    QTest::newRow("infinite") << Infinite << Lowest << Highest << Highest;
    QTest::newRow("infinite from below") << -Infinite << Lowest << Lowest << Lowest;
    QTest::newRow("no number") << None << Lowest << 0 << Lowest;
}

void TestTruncate::eachRuleHasItsOwnEnds()
{
    QFETCH(double, value);
    QTEST(truncatedOrLowest(value), "orLowest");
    QTEST(truncatedOrNearest(value), "orNearest");
    QTEST(truncatedOrNearestNanLowest(value), "orNearestNanLowest");
}

void TestTruncate::halvesAreAddedAndCut_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("plusHalf");
    QTest::addColumn<int>("awayFromZero");
    QTest::newRow("zero") << 0.0 << 0 << 0;
    QTest::newRow("below a half") << 2.25 << 2 << 2;
    QTest::newRow("a half") << 2.5 << 3 << 3;
    QTest::newRow("minus a half") << -0.5 << 0 << -1;
    QTest::newRow("minus one and a half") << -1.5 << -1 << -2;
    QTest::newRow("minus one and a quarter") << -1.25 << 0 << -1;
    QTest::newRow("no number") << None << 0 << 0;
    QTest::newRow("too large") << 3e9 << Highest << Highest;
}

void TestTruncate::halvesAreAddedAndCut()
{
    QFETCH(double, value);
    QTEST(truncatedPlusHalf(value), "plusHalf");
    QTEST(truncatedOrNearest(halfAwayFromZero(value)), "awayFromZero");
}

void TestTruncate::lowBitsAreThoseOfTheWholePart()
{
    for (const double size :
         {0.0, 0.99, 1.5, 255.0, 256.0, 65535.9, 65536.0, 8388608.0, 16777215.5, 2e9, 5e9,
          1e15 + 3, 4611686018427387904.0, 9e18, 1.2345e22, 1e300})
        for (const double v : {size, -size}) {
            QCOMPARE(lowBitsOfTruncated<8>(v), lowBits(v, 8));
            QCOMPARE(lowBitsOfTruncated<16>(v), lowBits(v, 16));
            QCOMPARE(lowBitsOfTruncated<24>(v), lowBits(v, 24));
        }
    QCOMPARE(lowBitsOfTruncated<24>(-1.0), 0xFFFFFFu);
    QCOMPARE(lowBitsOfTruncated<8>(-256.0), 0u);
}

void TestTruncate::whatIsNoNumberHasNoLowBits()
{
    for (const double odd : {None, Infinite, -Infinite})
        QCOMPARE(lowBitsOfTruncated<24>(odd), 0u);
}

void TestTruncate::largeNumbersAreHeldBy32Bits()
{
    QCOMPARE(saturated(-7), -7);
    QCOMPARE(saturated(qint64(Highest) + 1), Highest);
    QCOMPARE(saturated(qint64(Lowest) - 1), Lowest);
}

void TestTruncate::piIsTheNearestDouble() { QCOMPARE(Pi, std::acos(-1.0)); }

QTEST_APPLESS_MAIN(TestTruncate)
#include "test_truncate.moc"

#include "tools/optimization.h"

#include "tools/points.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

int calls = 0;

double bowl(double x, double y)
{
    ++calls;
    return (x - 3.3) * (x - 3.3) + (y + 1.7) * (y + 1.7) + 2.0;
}

double zeroAtTheThirdPoint(double x, double y)
{
    ++calls;
    return x == 2.0 && y == 0.0 ? 0.0 : 1.0 + x;
}

double notANumber(double, double)
{
    ++calls;
    return std::numeric_limits<double>::quiet_NaN();
}

// A square of side 10 seen from its own picture, turned over or not.
constexpr Points Square{0, 0, 10, 0, 0, 10, 10, 10};

} // namespace

class TestOptimization : public QObject {
    Q_OBJECT

private slots:
    void init() { calls = 0; }
    void theLeastValueIsFoundToAMillionth();
    void aValueOfZeroEndsTheSearchAtOnce();
    void whereThereIsNoValueNothingIsFound();
    void rangesOfOnePointAndBackwardRangesEnd();
    void hugeRangesEnd();
    void distancesDifferByWhatThePointIsAway();
    void anglesAreEqualAtThePointItself();
    void anglesCountTheFourthFromTheOtherThree();
};

void TestOptimization::theLeastValueIsFoundToAMillionth()
{
    Optimization optimization;
    double x = 0.0;
    double y = 0.0;
    QVERIFY(optimization.findMinimum(bowl, x, y, 0.0, 8.0, -4.0, 4.0));
    QVERIFY(std::abs(x - 3.3) < 1e-5);
    QVERIFY(std::abs(y + 1.7) < 1e-5);
    // 25 points, then 25 for each of the 20 halvings of a step of 2 down to 2e-6.
    QCOMPARE(calls, 25 + 25 * 20);
}

void TestOptimization::aValueOfZeroEndsTheSearchAtOnce()
{
    Optimization optimization;
    double x = 7.0;
    double y = 7.0;
    QVERIFY(optimization.findMinimum(zeroAtTheThirdPoint, x, y, 0.0, 4.0, 0.0, 4.0));
    QCOMPARE(calls, 3);
    QCOMPARE(x, 2.0);
    QCOMPARE(y, 0.0);
}

void TestOptimization::whereThereIsNoValueNothingIsFound()
{
    Optimization optimization;
    double x = 7.0;
    double y = 8.0;
    QVERIFY(!optimization.findMinimum(notANumber, x, y, 0.0, 4.0, 0.0, 4.0));
    QCOMPARE(x, 7.0);
    QCOMPARE(y, 8.0);
}

void TestOptimization::rangesOfOnePointAndBackwardRangesEnd()
{
    Optimization optimization;
    double x = 0.0;
    double y = 0.0;
    QVERIFY(optimization.findMinimum(bowl, x, y, 2.0, 2.0, 5.0, 5.0));
    QCOMPARE(calls, 1);
    QCOMPARE(x, 2.0);
    QCOMPARE(y, 5.0);
    QVERIFY(!optimization.findMinimum(bowl, x, y, 3.0, 2.0, 5.0, 4.0));
}

void TestOptimization::hugeRangesEnd()
{
    constexpr double Huge = std::numeric_limits<double>::max();
    Optimization optimization;
    double x = 1e300;
    double y = 1e300;
    QVERIFY(!optimization.findMinimum(notANumber, x, y, 0.0, 1.0, 0.0, 1.0));
    QVERIFY(!optimization.findMinimum(bowl, x, y, -Huge, Huge, -Huge, Huge));
}

void TestOptimization::distancesDifferByWhatThePointIsAway()
{
    setCorrectedPoints(Square);
    setDistortedPoints(Square);
    Px_ = 4.0;
    Py_ = 3.0;
    QCOMPARE(distanceFunction1(4.0, 3.0), 0.0);
    // From (0, 0): 5, |10 - sqrt 45|, |10 - sqrt 65| and |sqrt 200 - sqrt 85|.
    QCOMPARE(distanceFunction1(0.0, 0.0), 5 + (10 - std::sqrt(45.0)) +
                                              (10 - std::sqrt(65.0)) +
                                              (std::sqrt(200.0) - std::sqrt(85.0)));
}

void TestOptimization::anglesAreEqualAtThePointItself()
{
    setCorrectedPoints(Square);
    setDistortedPoints(Square);
    Px_ = 4.0;
    Py_ = 3.0;
    QCOMPARE(angularFunction1(4.0, 3.0), 0.0);
    QVERIFY(angularFunction1(6.0, 5.0) > 0.01);
}

void TestOptimization::anglesCountTheFourthFromTheOtherThree()
{
    // The pixel in hand lies on point A: its angle to A and B counts as 0. At the
    // square's centre A to B is a quarter, B to C a half and C to D a quarter.
    setCorrectedPoints(Square);
    setDistortedPoints(Square);
    Px_ = 0.0;
    Py_ = 0.0;
    const double quarter = std::acos(0.0);
    // From (0, 0): B to C is a quarter, C to D an eighth.
    const double d1 = quarter;
    const double d2 = 2 * quarter - quarter;
    const double d3 = quarter - quarter / 2;
    const double d4 = d1 + d2 + d3;
    const double wanted = d1 * d1 + d2 * d2 + d3 * d3 + d4 * d4;
    QVERIFY(std::abs(angularFunction1(5.0, 5.0) - wanted) < 1e-6);
}

QTEST_GUILESS_MAIN(TestOptimization)
#include "test_optimization.moc"

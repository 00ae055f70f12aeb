#include "flight/nurbs.h"

#include <QTest>

#include <array>
#include <cmath>
#include <vector>

namespace {

using Net = std::vector<double>;

void curve(NURBS &nurbs, const Net &net, int samples)
{
    const int count = static_cast<int>(net.size() / 3);
    nurbs.fill3D(count, 1, net.data());
    nurbs.rbspsurf(4, 4, count, 1, samples, 1);
}

// Basis values as the recursion states them, over the whole knot vector.
std::vector<double> plainBasis(int c, double t, int npts, const std::vector<qint32> &x)
{
    const int all = npts + c;
    std::vector<double> w(std::size_t(all), 0.0);
    const auto at = [&w](int i) -> double & { return w[std::size_t(i)]; };
    const auto k0 = [&x](int i) { return x[std::size_t(i)]; };
    for (int i = 0; i < all - 1; ++i)
        at(i) = k0(i) <= t && t < k0(i + 1) ? 1.0 : 0.0;
    for (int k = 2; k <= c; ++k)
        for (int i = 0; i < all - k; ++i) {
            const double d =
                at(i) != 0.0 ? at(i) * (t - k0(i)) / (k0(i + k - 1) - k0(i)) : 0.0;
            const double e = at(i + 1) != 0.0
                                 ? at(i + 1) * (k0(i + k) - t) / (k0(i + k) - k0(i + 1))
                                 : 0.0;
            at(i) = d + e;
        }
    if (t == x.back())
        at(npts - 1) = 1.0;
    w.resize(std::size_t(npts));
    return w;
}

} // namespace

class TestNurbs : public QObject {
    Q_OBJECT

private slots:
    void fourPointsHaveTheKnotsOfOneSegment();
    void sevenPointsCountTheKnotsUp();
    void oneKnotIsLeftAlone();
    void fourPointsAreOneBezierSegment();
    void sevenPointsFollowTheUniformSplineInside();
    void endsLieOnTheNetExactly_data();
    void endsLieOnTheNetExactly();
    void basisIsThatOfTheWholeKnotVector();
    void parameterNearTheEndMovesOntoIt();
    void valuesBeforeAResultAreZero();
    void aSecondNetReplacesTheFirst();
    void surfaceOfTwoDirectionsMeetsItsCorners();
    void coincidingPointsGiveThatPoint();
};

void TestNurbs::fourPointsHaveTheKnotsOfOneSegment()
{
    std::array<qint32, 8> x;
    NURBS::knot(4, 4, x.data());
    QCOMPARE(x, (std::array<qint32, 8>{0, 0, 0, 0, 1, 1, 1, 1}));
}

void TestNurbs::sevenPointsCountTheKnotsUp()
{
    std::array<qint32, 11> x;
    NURBS::knot(7, 4, x.data());
    QCOMPARE(x, (std::array<qint32, 11>{0, 0, 0, 0, 1, 2, 3, 4, 4, 4, 4}));
}

void TestNurbs::oneKnotIsLeftAlone()
{
    std::array<qint32, 2> x{9, 9};
    NURBS::knot(1, 0, x.data());
    QCOMPARE(x, (std::array<qint32, 2>{0, 9}));
}

void TestNurbs::fourPointsAreOneBezierSegment()
{
    NURBS nurbs;
    curve(nurbs, {0, 0, 100, 0, 80, 120, 80, 80, 140, 80, 0, 180}, 5);
    // At 1/2 the Bernstein weights are 1, 3, 3, 1 eighths.
    QCOMPARE(nurbs.getResultingSurface(6, 0), 40.0);
    QCOMPARE(nurbs.getResultingSurface(6, 1), 60.0);
    QCOMPARE(nurbs.getResultingSurface(6, 2), (100 + 3 * 120 + 3 * 140 + 180) / 8.0);
    // At 1/4 they are 27, 27, 9, 1 parts of 64.
    QCOMPARE(nurbs.getResultingSurface(3, 0), (9 * 80 + 80) / 64.0);
    QCOMPARE(nurbs.getResultingSurface(3, 1), (27 * 80 + 9 * 80) / 64.0);
}

void TestNurbs::sevenPointsFollowTheUniformSplineInside()
{
    // Over the knots 0 0 0 0 1 2 3 4 4 4 4 the middle is a plain uniform joint of
    // the points 2, 3, 4 with weights 1/6, 4/6, 1/6.
    NURBS nurbs;
    curve(nurbs, {0, 0, 0, 0, 0, 0, 6, 0, 0, 12, 0, 6, 24, 0, 0, 0, 0, 0, 0, 0, 0}, 9);
    QVERIFY(std::abs(nurbs.getResultingSurface(12, 0) - 13.0) < 1e-12);
    QVERIFY(std::abs(nurbs.getResultingSurface(12, 2) - 4.0) < 1e-12);
}

void TestNurbs::endsLieOnTheNetExactly_data()
{
    QTest::addColumn<int>("samples");
    for (const int samples : {2, 3, 61, 121, 1000, 3841, 32769})
        QTest::addRow("%d samples", samples) << samples;
}

void TestNurbs::endsLieOnTheNetExactly()
{
    QFETCH(int, samples);
    NURBS nurbs;
    Net net;
    for (int i = 0; i < 20; ++i)
        net.insert(net.end(), {i * 7.25, -3.0 * i * i, 100.0 + i});
    curve(nurbs, net, samples);
    for (int axis = 0; axis < 3; ++axis) {
        QCOMPARE(nurbs.getResultingSurface(0, axis), net[std::size_t(axis)]);
        QVERIFY(nurbs.getResultingSurface(3 * (samples - 1), axis) ==
                net[net.size() - 3 + std::size_t(axis)]);
    }
}

void TestNurbs::basisIsThatOfTheWholeKnotVector()
{
    NURBS nurbs;
    for (const int npts : {4, 5, 9, 20}) {
        std::vector<qint32> x(std::size_t(npts + 4));
        NURBS::knot(npts, 4, x.data());
        std::vector<double> n(std::size_t(npts), -1.0);
        for (int step = 0; step <= 200; ++step) {
            const double t = step * (npts - 3) / 200.0;
            nurbs.basis(4, t, npts, x.data(), n.data());
            QVERIFY(n == plainBasis(4, t, npts, x));
        }
        nurbs.basis(4, npts - 2.0, npts, x.data(), n.data());
        QVERIFY(n == std::vector<double>(std::size_t(npts), 0.0));
    }
}

void TestNurbs::parameterNearTheEndMovesOntoIt()
{
    // Steps of 5 / 600 added up miss 5 by some 1e-13; a sample short of the end
    // would lie off the last point, which here weighs a great deal.
    NURBS nurbs;
    Net net(8 * 3, 0.0);
    net[21] = 1e15;
    curve(nurbs, net, 601);
    QVERIFY(nurbs.getResultingSurface(1800, 0) == 1e15);
}

void TestNurbs::valuesBeforeAResultAreZero()
{
    NURBS nurbs;
    QCOMPARE(nurbs.getResultingSurface(0, 0), 0.0);
    QCOMPARE(nurbs.getResultingSurface(300, 2), 0.0);
    const Net net(12, 1.0);
    nurbs.fill3D(4, 1, net.data());
    QCOMPARE(nurbs.getResultingSurface(3, 1), 0.0);
}

void TestNurbs::aSecondNetReplacesTheFirst()
{
    NURBS nurbs;
    curve(nurbs, Net(30, 5.0), 50);
    curve(nurbs, {1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3}, 3);
    QCOMPARE(nurbs.getResultingSurface(6, 0), 1.0);
    QCOMPARE(nurbs.getResultingSurface(6, 1), 2.0);
    QCOMPARE(nurbs.getResultingSurface(6, 2), 3.0);
}

void TestNurbs::surfaceOfTwoDirectionsMeetsItsCorners()
{
    NURBS nurbs;
    Net net;
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 4; ++j)
            net.insert(net.end(), {double(i), double(j), double(i * j)});
    nurbs.fill3D(5, 4, net.data());
    nurbs.rbspsurf(4, 4, 5, 4, 3, 3);
    QCOMPARE(nurbs.getResultingSurface(3 * 2, 1), 3.0);
    QCOMPARE(nurbs.getResultingSurface(3 * 8, 0), 4.0);
    QCOMPARE(nurbs.getResultingSurface(3 * 8, 2), 12.0);
}

void TestNurbs::coincidingPointsGiveThatPoint()
{
    NURBS nurbs;
    curve(nurbs, {7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7}, 121);
    for (int i = 0; i < 121; ++i)
        QVERIFY(std::abs(nurbs.getResultingSurface(3 * i, 1) - 7.0) < 1e-12);
}

QTEST_APPLESS_MAIN(TestNurbs)
#include "test_nurbs.moc"

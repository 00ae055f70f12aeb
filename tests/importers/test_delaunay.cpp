#include "importers/plaindelaunay.h"
#include "importers/triangulate.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

double determinant(const Triangulation<2> &result, std::size_t t)
{
    const auto &row = result.triangles[t];
    const auto &a = result.perturbed[row[0]];
    const auto &b = result.perturbed[row[1]];
    const auto &c = result.perturbed[row[2]];
    return (a[0] - c[0]) * (b[1] - c[1]) - (a[1] - c[1]) * (b[0] - c[0]);
}

template <int D> Cloud<D> randomCloud(int count, double scale = 1000)
{
    std::mt19937 generator(count);
    std::uniform_real_distribution<double> uniform(0, scale);
    Cloud<D> cloud(count);
    for (auto &p : cloud)
        for (double &v : p)
            v = uniform(generator);
    return cloud;
}

Cloud<2> grid(int columns, int rows)
{
    Cloud<2> cloud;
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            cloud.push_back({double(x), double(y)});
    return cloud;
}

Cloud<2> shuffled(Cloud<2> cloud)
{
    std::shuffle(cloud.begin(), cloud.end(), std::mt19937(7));
    return cloud;
}

Cloud<2> clusters(int count)
{
    std::mt19937 generator(3);
    std::normal_distribution<double> normal(0, 1e-3);
    Cloud<2> cloud = randomCloud<2>(count, 100);
    for (std::size_t i = 8; i < cloud.size(); ++i)
        for (int c = 0; c < 2; ++c)
            cloud[i][c] = cloud[i % 8][c] + normal(generator);
    return cloud;
}

Cloud<2> circle(int count)
{
    Cloud<2> cloud;
    for (int i = 0; i < count; ++i)
        cloud.push_back({std::cos(i * 0.01), std::sin(i * 0.01)});
    return shuffled(cloud);
}

Cloud<2> scaled(Cloud<2> cloud, double x, double y, double offset = 0)
{
    for (auto &p : cloud)
        p = {p[0] * x + offset, p[1] * y + offset};
    return cloud;
}

Cloud<2> repeated(const Cloud<2> &cloud)
{
    Cloud<2> twice = cloud;
    twice.insert(twice.end(), cloud.begin(), cloud.end());
    return twice;
}

} // namespace

class TestDelaunay : public QObject {
    Q_OBJECT

private slots:
    void init() { restartGenerator(); }
    void threePointsGiveOneTriangleOfPositiveOrientation();
    void fewerPointsGiveNoTriangle_data();
    void fewerPointsGiveNoTriangle();
    void otherDimensionsAreRefused();
    void tooManyFacesAroundOnePointAreTold();
    void theSecondCallGoesOnWithTheGenerator();
    void theEnclosingCornersStandFiftyExtentsAway();
    void pointsStayWithinHalfAJitter();
    void everyTriangleIsOrientedAndNoneIsFlat();
    void collinearPointsGiveThinTrianglesOrNone();
    void equalPointsGiveNoTriangle();
    void givesWhatThePlainWalkGives_data();
    void givesWhatThePlainWalkGives();
    void givesWhatThePlainWalkGivesInSpace_data();
    void givesWhatThePlainWalkGivesInSpace();
    void enormousCoordinatesEnd();
    void tablesHaveAtLeastTwoRowsAndColumns();
};

void TestDelaunay::threePointsGiveOneTriangleOfPositiveOrientation()
{
    const Triangulation<2> result = triangulate<2>({{0, 0}, {10, 0}, {0, 10}});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.triangles.size(), 1u);
    QVERIFY(determinant(result, 0) > 99);
    QCOMPARE(result.maxSimplices, 40006); // (2 * 10000 + 3) * 2
    // One simplex at the start and two more with each point.
    QCOMPARE(result.maxUsed, 6);
}

void TestDelaunay::fewerPointsGiveNoTriangle_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
}

void TestDelaunay::fewerPointsGiveNoTriangle()
{
    QFETCH(int, count);
    const Triangulation<2> result = triangulate<2>(randomCloud<2>(count));
    QCOMPARE(result.code, 0);
    QCOMPARE(result.triangles.size(), 0u);
    QCOMPARE(result.maxUsed, 2 * count);
}

void TestDelaunay::otherDimensionsAreRefused()
{
    CDoubleMatrix points;
    NoProgress unwatched;
    for (const int dimension : {1, 4}) {
        const auto none = Delaunay(points, 0, dimension, unwatched);
        QCOMPARE(none.error().code, 1);
        QCOMPARE(none.error().text, "The built-in Delaunay function can only handle 2 or "
                                    "3 dimensions.");
    }
}

void TestDelaunay::tooManyFacesAroundOnePointAreTold()
{
    // A row of points, then one above it that sees the whole row.
    Cloud<2> cloud = grid(400, 1);
    cloud.push_back({200, 1});
    const Triangulation<2> result = triangulate<2>(shuffled(cloud));
    Cloud<2> sunlit = circle(400);
    sunlit.push_back({0, 0});
    restartGenerator();
    const Triangulation<2> star = triangulate<2>(sunlit);
    QCOMPARE(star.code, 2);
    QCOMPARE(star.triangles.size(), 0u);
    QCOMPARE(star.notice, "Temporary Delaunay storage exceeded.");
    QVERIFY(result.code == 0 || result.code == 2);
}

void TestDelaunay::theSecondCallGoesOnWithTheGenerator()
{
    const Cloud<2> cloud = grid(3, 3);
    const Cloud<2> first = triangulate<2>(cloud).perturbed;
    const Cloud<2> second = triangulate<2>(cloud).perturbed;
    QVERIFY(first != second);
    restartGenerator();
    QVERIFY(triangulate<2>(cloud).perturbed == first);
}

void TestDelaunay::theEnclosingCornersStandFiftyExtentsAway()
{
    const Triangulation<2> result = triangulate<2>({{2, 3}, {12, 3}, {2, 23}});
    // Extents 10 and 20 from (2, 3).
    QCOMPARE(result.perturbed[3][0], 502.0);
    QCOMPARE(result.perturbed[3][1], -197.0);
    QCOMPARE(result.perturbed[4][0], -98.0);
    QCOMPARE(result.perturbed[4][1], 1003.0);
    QCOMPARE(result.perturbed[5][0], -98.0);
    QCOMPARE(result.perturbed[5][1], -197.0);
}

void TestDelaunay::pointsStayWithinHalfAJitter()
{
    const Cloud<2> cloud = randomCloud<2>(200, 100);
    const Triangulation<2> result = triangulate<2>(cloud);
    for (std::size_t i = 0; i < cloud.size(); ++i)
        for (int c = 0; c < 2; ++c)
            QVERIFY(std::fabs(result.perturbed[i][c] - cloud[i][c]) <= 0.000501);
    // The generator's first number is 1804289383.
    restartGenerator();
    const Triangulation<2> pair = triangulate<2>({{0, 0}, {1, 1}});
    QCOMPARE(pair.perturbed[0][0],
             ((1804289383 / -2147483647.0) + 0.5) * (1.0 * 0.00001) + 0.0);
}

void TestDelaunay::everyTriangleIsOrientedAndNoneIsFlat()
{
    const Triangulation<2> result = triangulate<2>(shuffled(grid(20, 20)));
    QVERIFY(result.triangles.size() >= 2 * 19 * 19);
    for (std::size_t t = 0; t < result.triangles.size(); ++t)
        QVERIFY(determinant(result, t) > 0.00001);
}

void TestDelaunay::collinearPointsGiveThinTrianglesOrNone()
{
    // Extent 1: the shift lifts no triangle of 10 points above the limit.
    QCOMPARE(triangulate<2>(scaled(grid(10, 1), 0.1, 1)).triangles.size(), 0u);
    // Extent 1000: what is left is beyond it.
    const Triangulation<2> wide = triangulate<2>(scaled(grid(10, 1), 100, 1));
    QCOMPARE(wide.code, 0);
    for (std::size_t t = 0; t < wide.triangles.size(); ++t)
        QVERIFY(determinant(wide, t) > 0.00001);
}

void TestDelaunay::equalPointsGiveNoTriangle()
{
    const Triangulation<2> result = triangulate<2>(Cloud<2>(5, {3, 4}));
    QCOMPARE(result.code, 0);
    QCOMPARE(result.triangles.size(), 0u);
    QCOMPARE(result.perturbed[4][0], 3.0); // no extent, no shift
}

void TestDelaunay::givesWhatThePlainWalkGives_data()
{
    QTest::addColumn<Cloud<2>>("cloud");
    QTest::newRow("random, 3000") << randomCloud<2>(3000);
    QTest::newRow("random, 50") << randomCloud<2>(50);
    QTest::newRow("grid in order, 50 by 60") << grid(50, 60);
    QTest::newRow("grid shuffled, 55 by 54") << shuffled(grid(55, 54));
    QTest::newRow("wide flat grid") << shuffled(scaled(grid(300, 5), 50, 0.001));
    QTest::newRow("line") << shuffled(grid(250, 1));
    QTest::newRow("line of 3000 in order") << scaled(grid(3000, 1), 5, 1);
    QTest::newRow("diagonal line") << [] {
        Cloud<2> cloud;
        for (int i = 0; i < 200; ++i)
            cloud.push_back({i * 0.7, i * 0.7});
        return shuffled(cloud);
    }();
    QTest::newRow("clusters, 3000") << clusters(3000);
    QTest::newRow("circle, 280") << circle(280);
    QTest::newRow("circle, 600") << circle(600);
    QTest::newRow("each point twice") << repeated(randomCloud<2>(1000));
    QTest::newRow("each grid point twice") << repeated(shuffled(grid(20, 20)));
    QTest::newRow("all equal") << Cloud<2>(300, {3, 4});
    QTest::newRow("all equal, not whole") << Cloud<2>(300, {0.1, 1e7 / 3});
    QTest::newRow("two places")
        << repeated(Cloud<2>({{1, 1}, {1, 1}, {5, 1}, {5, 1}, {5, 1}}));
    QTest::newRow("far from the origin")
        << scaled(randomCloud<2>(1000, 1), 1e-3, 1e-3, 1e6);
    QTest::newRow("too far for the digits") << scaled(randomCloud<2>(500, 1), 1, 1, 1e17);
    QTest::newRow("tiny") << scaled(randomCloud<2>(1000, 1), 1e-160, 1e-160);
    QTest::newRow("huge") << scaled(randomCloud<2>(500, 1), 1e70, 1e70);
    QTest::newRow("beyond float") << scaled(randomCloud<2>(200, 1), 1e160, 1e160);
    Cloud<2> sorted = randomCloud<2>(3000);
    std::sort(sorted.begin(), sorted.end());
    QTest::newRow("sorted") << sorted;
}

void TestDelaunay::givesWhatThePlainWalkGives()
{
    QFETCH(Cloud<2>, cloud);
    const Triangulation<2> quick = triangulate<2>(cloud);
    restartGenerator();
    PlainDelaunay<2> plain(cloud);
    QCOMPARE(quick.code, plain.run());
    QVERIFY(quick.triangles == plain.triangles);
    QCOMPARE(quick.maxUsed, plain.maxUsed);
}

void TestDelaunay::givesWhatThePlainWalkGivesInSpace_data()
{
    QTest::addColumn<Cloud<3>>("cloud");
    QTest::newRow("random, 600") << randomCloud<3>(600);
    QTest::newRow("four points") << randomCloud<3>(4);
    Cloud<3> lattice;
    for (int i = 0; i < 343; ++i)
        lattice.push_back({double(i % 7), double(i / 7 % 7), double(i / 49)});
    QTest::newRow("lattice") << lattice;
    Cloud<3> flat = randomCloud<3>(100);
    for (auto &p : flat)
        p[2] = 5;
    QTest::newRow("in a plane") << flat;
    QTest::newRow("all equal") << Cloud<3>(50, {3, 4, 5});
}

void TestDelaunay::givesWhatThePlainWalkGivesInSpace()
{
    QFETCH(Cloud<3>, cloud);
    const Triangulation<3> quick = triangulate<3>(cloud);
    restartGenerator();
    PlainDelaunay<3> plain(cloud);
    QCOMPARE(quick.code, plain.run());
    QVERIFY(quick.triangles == plain.triangles);
    QCOMPARE(quick.maxUsed, plain.maxUsed);
    QCOMPARE(quick.maxSimplices, (60000 + int(cloud.size())) * 6);
}

void TestDelaunay::enormousCoordinatesEnd()
{
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double big : {1e300, 1.7e308, infinite, std::nan("")}) {
        Cloud<2> cloud = randomCloud<2>(50);
        cloud[20] = {big, -big};
        cloud[30] = {-big, 3};
        const Triangulation<2> result = triangulate<2>(cloud);
        QVERIFY(result.code == 0 || result.code == 2);
    }
}

void TestDelaunay::tablesHaveAtLeastTwoRowsAndColumns()
{
    CIntMatrix matrix;
    QVERIFY(matrix.Allocate(0, 1));
    QCOMPARE(matrix.rowCount, 2);
    QCOMPARE(matrix.columns, 2);
    matrix.rows[1][1] = 7;
    matrix.Free();
    matrix.Free();
    QVERIFY(!matrix.rows);
    QCOMPARE(matrix.rowCount, 0);
    CDoubleVector vector;
    QVERIFY(vector.Allocate(3));
    QCOMPARE(vector.size, 3);
    QVERIFY(!vector.Allocate(-1));
    QVERIFY(!vector.data);
    QCOMPARE(vector.size, 0);
}

QTEST_APPLESS_MAIN(TestDelaunay)
#include "test_delaunay.moc"

#include "support/patience.h"
#include "terrain/meshraster.h"
#include "terrain/terrainmesh.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <random>

namespace {

using Points = std::vector<GroundPoint>;

constexpr double NoLimit = std::numeric_limits<double>::infinity();
NoProgress unwatched;

Points scattered(int count, double width, double height)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> x(0.0, width);
    std::uniform_real_distribution<double> y(0.0, height);
    Points points;
    for (int i = 0; i < count; ++i) {
        const double east = x(random);
        const double north = y(random);
        points.push_back({east, north, 2.0 * east - 3.0 * north + 5.0});
    }
    return points;
}

TerrainMesh meshOf(const Points &points, const PlaneScale &scale = {})
{
    auto mesh = triangulated(points, scale, QStringLiteral("\"p\""), unwatched);
    return mesh ? std::move(*mesh) : TerrainMesh();
}

double doubledArea(const GroundPoint &a, const GroundPoint &b, const GroundPoint &c)
{
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

// Whether a point lies in the circle through three others, clearly.
bool isInCircle(const GroundPoint &a, const GroundPoint &b, const GroundPoint &c,
                const GroundPoint &d)
{
    const auto square = [&](const GroundPoint &p) {
        return (p.x - d.x) * (p.x - d.x) + (p.y - d.y) * (p.y - d.y);
    };
    const auto cross = [&](const GroundPoint &p, const GroundPoint &q) {
        return (p.x - d.x) * (q.y - d.y) - (q.x - d.x) * (p.y - d.y);
    };
    const double value =
        square(a) * cross(b, c) + square(b) * cross(c, a) + square(c) * cross(a, b);
    const double sign = doubledArea(a, b, c) > 0.0 ? 1.0 : -1.0;
    return sign * value > 1e-3 * square(a);
}

} // namespace

class TestTerrainMesh : public QObject {
    Q_OBJECT

private slots:
    void noPointLiesInTheCircleOfATriangle()
    {
        const TerrainMesh mesh = meshOf(scattered(300, 1000, 600));
        QCOMPARE(mesh.points.size(), std::size_t(300));
        for (const auto &[a, b, c] : mesh.triangles)
            for (std::size_t d = 0; d < mesh.points.size(); ++d)
                QVERIFY(!isInCircle(mesh.points[std::size_t(a)],
                                    mesh.points[std::size_t(b)],
                                    mesh.points[std::size_t(c)], mesh.points[d]) ||
                        qint32(d) == a || qint32(d) == b || qint32(d) == c);
    }

    void trianglesOfAGridFillItOnce()
    {
        Points points;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                points.push_back({x * 10.0, y * 10.0, 1.0});
        const TerrainMesh mesh = meshOf(points);
        QCOMPARE(mesh.triangles.size(), std::size_t(2 * 39 * 29));
        double area = 0.0;
        for (const auto &[a, b, c] : mesh.triangles) {
            const double one = std::fabs(doubledArea(mesh.points[std::size_t(a)],
                                                     mesh.points[std::size_t(b)],
                                                     mesh.points[std::size_t(c)]));
            QCOMPARE(one, 100.0);
            area += one / 2;
        }
        QCOMPARE(area, 390.0 * 290.0);
    }

    void pointsAtOnePlaceBecomeTheirMean()
    {
        const TerrainMesh mesh =
            meshOf({{0, 0, 1}, {10, 0, 2}, {0, 10, 3}, {10, 0, 6}, {0, 0, std::nan("")}});
        QCOMPARE(mesh.points.size(), std::size_t(3));
        QCOMPARE(mesh.triangles.size(), std::size_t(1));
        double sum = 0.0;
        for (const GroundPoint &point : mesh.points)
            sum += point.z;
        QCOMPARE(sum, 1.0 + 4.0 + 3.0);
    }

    void whatMakesNoSurfaceIsRefused_data()
    {
        QTest::addColumn<QList<double>>("coordinates");
        QTest::addColumn<QString>("said");
        const QString few = "\"p\" has heights at %1 places; a surface needs three.";
        QTest::newRow("none") << QList<double>() << few.arg(0);
        QTest::newRow("two") << QList<double>{0, 0, 5, 5} << few.arg(2);
        QTest::newRow("one, often") << QList<double>{3, 3, 3, 3, 3, 3} << few.arg(1);
        QTest::newRow("a line")
            << QList<double>{0, 0, 5, 5, 10, 10, 20, 20}
            << QString("All points of \"p\" lie on one line, which makes no surface.");
        QTest::newRow("a row") << QList<double>{0, 7, 5, 7, 10, 7}
                               << QString("All points of \"p\" lie on one line, which "
                                          "makes no surface.");
    }
    void whatMakesNoSurfaceIsRefused()
    {
        QFETCH(QList<double>, coordinates);
        QFETCH(QString, said);
        Points points;
        for (qsizetype i = 0; i < coordinates.size(); i += 2)
            points.push_back({coordinates.at(i), coordinates.at(i + 1), 1.0});
        const auto mesh = triangulated(points, {}, QStringLiteral("\"p\""), unwatched);
        QVERIFY(!mesh);
        QCOMPARE(mesh.error().text, said);
    }

    void theSweepCanBeLeft()
    {
        Patience progress(1);
        const Points points = scattered(400000, 1000, 1000);
        const auto mesh = triangulated(points, {}, QStringLiteral("\"p\""), progress);
        QVERIFY(!mesh);
        QVERIFY(mesh.error().stopped);
    }

    void aPlaneIsFilledExactlyAndOnlyInside()
    {
        const TerrainMesh mesh = meshOf(scattered(2000, 300, 200));
        const SurfaceGrid grid{{-10, 1, 0, 210, 0, -1}, {320, 220}};
        const auto heights = rasterized(mesh, grid, NoLimit, unwatched);
        QVERIFY(heights);
        int filled = 0;
        for (int row = 0; row < grid.size.height(); ++row)
            for (int column = 0; column < grid.size.width(); ++column) {
                const float height = heights->row(row)[column];
                const double x = -10 + column + 0.5;
                const double y = 210 - row - 0.5;
                if (x < 0 || x > 300 || y < 0 || y > 200)
                    QVERIFY(std::isnan(height));
                if (x > 10 && x < 290 && y > 10 && y < 190)
                    QVERIFY(!std::isnan(height));
                if (std::isnan(height))
                    continue;
                ++filled;
                QVERIFY(std::fabs(height - (2 * x - 3 * y + 5)) < 1e-3);
            }
        QVERIFY(filled > 0.95 * 300 * 200);
    }

    void levelGroundStaysLevel()
    {
        Points points = scattered(500, 100, 100);
        for (GroundPoint &point : points)
            point.z = 123.4567;
        const auto heights = rasterized(
            meshOf(points), {{0, 1, 0, 100, 0, -1}, {100, 100}}, NoLimit, unwatched);
        for (const float height : heights->metres)
            QVERIFY(std::isnan(height) || height == 123.4567f);
    }

    void pointsOnCellsKeepTheirHeights()
    {
        // Corners in the middles of cells, edges through middles of others.
        const TerrainMesh mesh =
            meshOf({{0.5, 0.5, 1}, {8.5, 0.5, 9}, {0.5, 8.5, 17}, {8.5, 8.5, 25}});
        const auto heights =
            rasterized(mesh, {{0, 1, 0, 9, 0, -1}, {9, 9}}, NoLimit, unwatched);
        for (int row = 0; row < 9; ++row)
            for (int column = 0; column < 9; ++column)
                QCOMPARE(heights->row(row)[column], float(1 + column + 2 * (8 - row)));
    }

    void longTrianglesAreLeftOut()
    {
        Points points;
        for (const double east : {0.0, 100.0})
            for (int i = 0; i < 9; ++i)
                points.push_back({east + i % 3 * 5.0, double(i / 3) * 5.0, 7.0});
        const SurfaceGrid grid{{0, 1, 0, 10, 0, -1}, {110, 10}};
        const auto all = rasterized(meshOf(points), grid, NoLimit, unwatched);
        QCOMPARE(countVoids(*all), qint64(0));
        const auto some = rasterized(meshOf(points), grid, 8.0, unwatched);
        QCOMPARE(countVoids(*some), qint64(90 * 10));
        // The limit is in metres, whatever the coordinates are.
        const auto degrees =
            rasterized(meshOf(points, {100.0, 100.0}), grid, 8.0, unwatched);
        QCOMPARE(countVoids(*degrees), qint64(1100));
    }

    void cellsAreAsDenseAsThePoints()
    {
        const TerrainMesh mesh = meshOf(scattered(10000, 1000, 500));
        const SurfaceGrid grid = proposedGrid(mesh, 4096);
        QCOMPARE(grid.transform[1], 5.0); // the points are 7 m apart
        QCOMPARE(grid.transform[5], -5.0);
        QCOMPARE(std::fmod(grid.transform[0], 5.0), 0.0);
        QCOMPARE(grid.size, QSize(200, 100));
        const SurfaceGrid few = proposedGrid(mesh, 50);
        QVERIFY(few.size.width() <= 50 && few.size.width() >= 48);
    }

    void lengthsOfDegreesAreThoseOfTheEarth()
    {
        QVERIFY(std::fabs(metresOfDegrees(0).x - 111319.5) < 1.0);
        QVERIFY(std::fabs(metresOfDegrees(0).y - 110574.0) < 1.0);
        QVERIFY(std::fabs(metresOfDegrees(60).x - 55800.0) < 1.0);
        QVERIFY(std::fabs(metresOfDegrees(90).y - 111694.0) < 1.0);
    }
};

QTEST_GUILESS_MAIN(TestTerrainMesh)
#include "test_terrainmesh.moc"

#include "support/patience.h"
#include "terrain/points.h"

#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace {

NoProgress unwatched;

float heightAt(int column, int row) { return 100.25f + float(column * 7 - row * 3) / 8; }

// The lines of a grid; `place` writes the coordinates of a cell.
using Place = std::function<QByteArray(int column, int row)>;

QByteArrayList linesOf(const QSize &size, const Place &place)
{
    QByteArrayList lines;
    for (int row = 0; row < size.height(); ++row)
        for (int column = 0; column < size.width(); ++column)
            lines << place(column, row) + ' ' +
                         QByteArray::number(double(heightAt(column, row)), 'g', 9);
    return lines;
}

QByteArray tenMetres(int column, int row)
{
    return QByteArray::number(500005 + 10 * column) + ' ' +
           QByteArray::number(5800995 - 10 * row);
}

constexpr QSize Size(40, 30);

} // namespace

class TestPoints : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString written(const QString &name, const QByteArray &text) const
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test's file");
        return path;
    }
    Result<std::vector<PointSheet>> read(const QByteArrayList &lines,
                                         const PointOptions &options = {}) const
    {
        return readPointFiles({written("p.xyz", lines.join('\n') + '\n')}, options,
                              unwatched);
    }

private slots:
    void aGridBecomesItselfInAnyOrder_data()
    {
        QTest::addColumn<QByteArrayList>("lines");
        QByteArrayList lines = linesOf(Size, tenMetres);
        QTest::newRow("rows southward") << lines;
        std::reverse(lines.begin(), lines.end());
        QTest::newRow("rows northward, from the east") << lines;
        std::shuffle(lines.begin(), lines.end(), std::mt19937(5));
        QTest::newRow("no order") << lines;
        std::sort(lines.begin(), lines.end());
        QTest::newRow("columns") << lines;
    }
    void aGridBecomesItselfInAnyOrder()
    {
        QFETCH(QByteArrayList, lines);
        const auto sheets = read(lines);
        QVERIFY(sheets);
        QCOMPARE(sheets->size(), std::size_t(1));
        const PointSheet &sheet = sheets->front();
        QVERIFY(sheet.isGrid);
        QVERIFY(!sheet.isGeographic);
        QCOMPARE(sheet.heights.size, Size);
        QCOMPARE(sheet.transform, (GeoTransform{500000, 10, 0, 5801000, 0, -10}));
        QCOMPARE(sheet.pointsRead, qint64(1200));
        QCOMPARE(sheet.pointsUsed, qint64(1200));
        QVERIFY(sheet.notes.isEmpty());
        for (int row = 0; row < Size.height(); ++row)
            for (int column = 0; column < Size.width(); ++column)
                QCOMPARE(sheet.heights.row(row)[column], heightAt(column, row));
    }

    void missingPointsAreVoids()
    {
        QByteArrayList lines = linesOf(Size, tenMetres);
        // A corner, a whole row, a whole column, and one that stands there without
        // height.
        lines[43] = tenMetres(3, 1) + " -9999";
        for (int i = int(lines.size()) - 1; i >= 0; --i)
            if (i == 0 || i / 40 == 7 || i % 40 == 11)
                lines.removeAt(i);
        const auto sheets = read(lines);
        QVERIFY(sheets);
        const PointSheet &sheet = sheets->front();
        QVERIFY(sheet.isGrid);
        QCOMPARE(sheet.heights.size, Size);
        QCOMPARE(countVoids(sheet.heights), qint64(1 + 40 + 30 - 1 + 1));
        QCOMPARE(sheet.pointsRead, qint64(lines.size()));
        QCOMPARE(sheet.pointsUsed, qint64(lines.size() - 1));
        QCOMPARE(sheet.notes.size(), 1);
        QVERIFY(sheet.notes.first().startsWith("1 points of "));
        QVERIFY(std::isnan(sheet.heights.row(7)[20]));
        QCOMPARE(sheet.heights.row(8)[20], heightAt(20, 8));
    }

    void roundedCoordinatesAreAGrid()
    {
        // A third of an arc second; the text has six decimals, and noise in some rows.
        const auto sheets = read(linesOf({300, 50}, [](int column, int row) {
            const double noise = (column + row) % 3 == 0 ? 0.000001 : 0.0;
            return QByteArray::number(7.5 + column / 10800.0 + noise, 'f', 6) + ' ' +
                   QByteArray::number(46.25 - row / 10800.0 - noise, 'f', 6);
        }));
        QVERIFY(sheets);
        const PointSheet &sheet = sheets->front();
        QVERIFY(sheet.isGrid);
        QVERIFY(sheet.isGeographic); // by the height of the ground
        QCOMPARE(sheet.heights.size, QSize(300, 50));
        QVERIFY(std::fabs(sheet.transform[1] - 1 / 10800.0) < 1e-8);
        QCOMPARE(sheet.heights.row(49)[299], heightAt(299, 49));
    }

    void anIslandIsAGrid()
    {
        QByteArrayList lines;
        for (int row = 0; row < 100; ++row)
            for (int column = 0; column < 100; ++column)
                if (std::hypot(column - 50, row - 50) < 24 || (column == row))
                    lines << tenMetres(column, row) + " 5";
        const auto sheets = read(lines);
        QVERIFY(sheets);
        QVERIFY(sheets->front().isGrid);
        QCOMPARE(sheets->front().heights.size, QSize(100, 100));
    }

    void scatteredWholeMetresAreNoGrid()
    {
        std::mt19937 random(9);
        QByteArrayList lines;
        for (int i = 0; i < 5000; ++i)
            lines << QByteArray::number(500000 + int(random() % 200)) + ' ' +
                         QByteArray::number(int(random() % 200)) + " 12.5";
        const auto sheets = read(lines);
        QVERIFY(sheets);
        QVERIFY(!sheets->front().isGrid);
        QVERIFY(sheets->front().pointsUsed < 5000); // some at one place
        PointOptions options;
        options.surface = PointSurface::Grid;
        const auto forced = read(lines, options);
        QVERIFY(forced);
        QVERIFY(forced->front().isGrid);
        QCOMPARE(forced->front().heights.size, QSize(200, 200));
    }

    void aGridThatIsNoneIsRefusedWhereItIsAskedFor()
    {
        PointOptions options;
        options.surface = PointSurface::Grid;
        const auto sheets =
            read({"0.37 1 1", "10.91 7.7 2", "33.3 5.123 3", "47.01 11.9 4"}, options);
        QVERIFY(!sheets);
        QVERIFY(sheets.error().text.endsWith("p.xyz\" do not lie on a grid."));
    }

    void trianglesAreTakenWhereTheyAreAskedFor()
    {
        PointOptions options;
        options.surface = PointSurface::Triangles;
        const auto sheets = read(linesOf(Size, tenMetres), options);
        QVERIFY(sheets);
        QVERIFY(!sheets->front().isGrid);
        QCOMPARE(sheets->front().pointsUsed, qint64(1200));
        QVERIFY(countVoids(sheets->front().heights) <
                qint64(sheets->front().heights.metres.size()) / 10);
    }

    void oneRowIsAGrid()
    {
        const auto sheets = read({"0 5 1", "10 5 2", "20 5 3"});
        QVERIFY(sheets);
        QCOMPARE(sheets->front().heights.size, QSize(3, 1));
        QCOMPARE(sheets->front().transform, (GeoTransform{-5, 10, 0, 10, 0, -10}));
    }

    void aFlatSurveyInMetresIsNotTheWholeEarth()
    {
        const auto sheets = read(linesOf({50, 40}, [](int column, int row) {
            return QByteArray::number(column) + ' ' + QByteArray::number(row);
        }));
        QVERIFY(sheets);
        QVERIFY(!sheets->front().isGeographic);
    }

    void severalFilesAreSheetsAndOneSurface()
    {
        const QByteArray grid = linesOf(Size, tenMetres).join('\n');
        const QString a = written("a.xyz", grid);
        const QString b = written("b.csv", "x;y;z\n0,5;0;1\n10;0,25;2\n0;9,5;3\n");
        const QString c = written("c.txt", "30.1\t0\t1\n41\t0.3\t2\n30\t9.9\t7\n");
        const auto sheets = readPointFiles({b, a, c}, {}, unwatched);
        QVERIFY(sheets);
        QCOMPARE(sheets->size(), std::size_t(2));
        QCOMPARE(sheets->front().files, QStringList{a});
        QCOMPARE(sheets->back().files, (QStringList{b, c}));
        QCOMPARE(sheets->back().pointsRead, qint64(6));
        QCOMPARE(sheets->back().pointsUsed, qint64(6));
    }

    void whatCannotBeReadIsNamed()
    {
        const QString none = m_folder.filePath("none.xyz");
        const auto missing = readPointFiles({none}, {}, unwatched);
        QVERIFY(!missing);
        QCOMPARE(missing.error().text, QString("Could not open file \"%1\": No such file "
                                               "or directory.")
                                           .arg(none));
        const auto line = read({"0.5 0.5 1", "1.5 1.5 2", "7.5 7.5 3", "9.25 9.25 3"});
        QVERIFY(!line);
        QVERIFY(line.error().text.endsWith("lie on one line, which makes no surface."));
        QVERIFY(holdsPoints(written("p.dat", "1 2 3\n")));
        QVERIFY(!holdsPoints(written("p.png", "\x89PNG\r\n")));
        QVERIFY(!holdsPoints(none));
    }

    void readingCanBeStoppedAtAnyStep()
    {
        std::mt19937 random(2);
        QByteArray text;
        for (int i = 0; i < 30000; ++i)
            text += QByteArray::number(double(random() % 1000003) / 7, 'f', 3) + ' ' +
                    QByteArray::number(double(random() % 1000003) / 7, 'f', 3) + " 9\n";
        const QString path = written("s.xyz", text);
        for (int steps = 0; steps <= 2900; steps += 100) {
            Patience progress(steps);
            const auto sheets = readPointFiles({path}, {}, progress);
            QVERIFY(!sheets);
            QVERIFY(sheets.error().stopped);
        }
        QVERIFY(readPointFiles({path}, {}, unwatched));
    }

    void otherDevicesAreReadAsWell()
    {
        const OpenText open = [](const QString &) -> Result<std::unique_ptr<QIODevice>> {
            auto device = std::make_unique<QBuffer>();
            device->setData("0 0 1\n1 0 2\n0 1 3\n1 1 4\n");
            (void)device->open(QIODevice::ReadOnly);
            return device;
        };
        const auto sheets = readPointFiles({"any"}, {}, unwatched, open);
        QVERIFY(sheets);
        QCOMPARE(sheets->front().heights.metres, (std::vector<float>{3, 4, 1, 2}));
    }

    void tooLittleMemoryIsSaid()
    {
        qputenv("ZEPHRANT_MEMORY_BUDGET", "1000");
        const auto sheets = read(linesOf(Size, tenMetres));
        qunsetenv("ZEPHRANT_MEMORY_BUDGET");
        QVERIFY(!sheets);
        QVERIFY2(sheets.error().text.contains(" of memory; the budget is "),
                 qPrintable(sheets.error().text));
    }
};

QTEST_GUILESS_MAIN(TestPoints)
#include "test_points.moc"

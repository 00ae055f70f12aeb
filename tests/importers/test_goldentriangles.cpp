// The triangulations and filled triangles of a larger collection of cases, where there is
// one: in the folder raster/ of the one that ZEPHRANT_GOLDEN names.

#include "importers/scantriangles.h"
#include "importers/triangulate.h"
#include "raster/elevationimage.h"
#include "support/goldenfolder.h"
#include "support/standardoutput.h"

#include <QFile>
#include <QTest>
#include <QTextStream>

namespace {

// One row for each folder of the cases whose name begins so.
void addCases(const QString &prefix)
{
    QTest::addColumn<QString>("folder");
    const QDir raster = goldenFolder("raster");
    const QStringList names = raster.entryList({prefix + '*'}, QDir::Dirs);
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << raster.filePath(name);
}

// All rows of `Columns` numbers in a file.
template <class Number, std::size_t Columns>
std::vector<std::array<Number, Columns>> rowsOf(const QString &fileName)
{
    std::vector<std::array<Number, Columns>> rows;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    QTextStream in(&file);
    std::array<Number, Columns> row;
    while (true) {
        for (Number &number : row)
            in >> number;
        if (in.status() != QTextStream::Ok)
            return rows;
        rows.push_back(row);
    }
}

} // namespace

class TestGoldenTriangles : public QObject {
    Q_OBJECT

private slots:
    void listsAreMet_data() { addCases("delaunay-"); }
    void listsAreMet();
    void picturesAndLinesAreMet_data() { addCases("scan-"); }
    void picturesAndLinesAreMet();
};

void TestGoldenTriangles::listsAreMet()
{
    QFETCH(QString, folder);
    if (folder.endsWith("dimension-4"))
        QSKIP("nothing but planes and spaces are triangulated");
    Cloud<2> cloud;
    for (const auto &[x, y, z] : rowsOf<double, 3>(folder + "/p.txt"))
        cloud.push_back({x, y});
    QVERIFY(!cloud.empty());
    const auto expected = rowsOf<std::int32_t, 3>(folder + "/triangles.txt");
    restartGenerator();
    QVERIFY(triangulate<2>(cloud).triangles == expected);
}

void TestGoldenTriangles::picturesAndLinesAreMet()
{
    QFETCH(QString, folder);
    const QImage expected(folder + "/expected.png");
    QFile lines(folder + "/stdout.txt");
    QVERIFY(!expected.isNull());
    QVERIFY(lines.open(QIODevice::ReadOnly));
    ElevationImage image(expected.size(), QImage::Format_RGB888);
    image.clear(0xFF000000u);
    const auto triangles = rowsOf<double, 9>(folder + "/tri.txt");
    QVERIFY(!triangles.empty());
    const QByteArray written = standardOutputOf([&] {
        for (const auto &c : triangles)
            scanOneTriangle(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], &image);
    });
    QCOMPARE(written, lines.readAll());
    QVERIFY(image.convertToFormat(QImage::Format_RGB32) ==
            expected.convertToFormat(QImage::Format_RGB32));
}

int main(int argc, char **argv)
{
    return runWithGoldenFolder<TestGoldenTriangles>("raster", argc, argv);
}
#include "test_goldentriangles.moc"

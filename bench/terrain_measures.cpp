// Compares terrain of given files and folders, cell by cell, with what gdal_translate and
// gdalwarp make of the same request, and prints a row for each file:
//
//     build/release/bench/terrain_measures FILE_OR_FOLDER...
//
// Ends with 1 where more than one cell of a thousand differs by more than half a
// centimetre, or any where nothing is resampled.
#include "geodata/compare.h"
#include "geodata/geodata.h"
#include "geodata/geofile.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>

#include <cstdio>

namespace {

struct Row {
    Difference difference;
    OutputGrid grid;
    qint64 milliseconds = 0;
    qint64 milliseconds2 = 0; // of GDAL
};

Result<Row> measured(const QString &file, const GridRequest &request)
{
    NoProgress progress;
    Row row;
    QElapsedTimer clock;
    clock.start();
    const auto terrain = makeGeodata()->open({file}, {}, progress);
    if (!terrain)
        return tl::unexpected(terrain.error());
    const auto grid = (*terrain)->plan(request);
    if (!grid)
        return tl::unexpected(grid.error());
    const auto heights = (*terrain)->heights(*grid, progress);
    if (!heights)
        return tl::unexpected(heights.error());
    row.milliseconds = clock.restart();
    row.grid = *grid;
    const bool isWhole = grid->cells && grid->size == (*terrain)->facts().size;
    const Heights judged =
        isWhole ? judgedByTranslate(file, {}) : judgedByWarp({file}, argumentsFor(*grid));
    row.milliseconds2 = clock.elapsed();
    row.difference = differenceOf(*heights, judged);
    return row;
}

bool report(const QString &file, const char *name, const GridRequest &request)
{
    const Result<Row> row = measured(file, request);
    const QByteArray shown = QFileInfo(file).fileName().toUtf8();
    if (!row) {
        std::printf("%-36s %-8s %s\n", shown.constData(), name,
                    qPrintable(row.error().text));
        return true;
    }
    const Difference &found = row->difference;
    const bool isJudged = found.cells > 0; // gdalwarp takes nothing without a place
    const bool good = !isJudged         ? true
                      : row->grid.cells ? found.isNone()
                                        : found.isSmall();
    const QByteArray size = QByteArray::number(row->grid.size.width()) + "x" +
                            QByteArray::number(row->grid.size.height());
    std::printf("%-36s %-8s %-11s %-5s %8lld ms, GDAL %8lld ms  %s\n", shown.constData(),
                name, size.constData(),
                !isJudged ? "alone"
                : good    ? "same"
                          : "OTHER",
                static_cast<long long>(row->milliseconds),
                static_cast<long long>(row->milliseconds2), qPrintable(found.told()));
    return good;
}

QStringList filesOf(const QString &name)
{
    if (!QFileInfo(name).isDir())
        return {name};
    QStringList files;
    QDirIterator each(name, QDir::Files, QDirIterator::Subdirectories);
    while (each.hasNext())
        files.append(each.next());
    files.sort();
    return files;
}

} // namespace

int main(int count, char **arguments)
{
    bool good = true;
    const auto source = makeGeodata();
    GridRequest kept;
    kept.crs = QStringLiteral("keep");
    GridRequest smaller;
    smaller.size = QSize(100, 80);
    GridRequest larger;
    larger.size = QSize(900, 700);
    for (int i = 1; i < count; ++i)
        for (const QString &file : filesOf(QString::fromLocal8Bit(arguments[i]))) {
            if (!source->canOpen(file))
                continue;
            good = report(file, "default", {}) && good;
            good = report(file, "kept", kept) && good;
            good = report(file, "smaller", smaller) && good;
            good = report(file, "larger", larger) && good;
        }
    return good ? 0 : 1;
}

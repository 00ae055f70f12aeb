#include "commands/arguments.h"
#include "commands/commandparts.h"
#include "commands/commandwork.h"
#include "commands/progressprinter.h"
#include "commands/toldcommands.h"
#include "importers/asciiirregular.h"
#include "importers/asciiregular.h"

#include <QFile>

#include <utility>

namespace {

constexpr int MostSide = 16384;
constexpr double ScanShare = 0.4; // of the whole work

void tellRows(CommandWork &work, const QStringList &rows)
{
    for (const QString &row : rows)
        work.console().message(row);
}

// A file that is open as the imports read it.
bool openText(QFile &file) { return file.open(QIODevice::ReadOnly | QIODevice::Text); }

Result<MeshScan> scanFile(const Arguments &arguments, CommandWork &work,
                          MeshBoundaries &boundaries)
{
    QFile file(arguments.text("FROM"));
    if (!openText(file))
        return failed(couldNotOpenMessage(file.fileName()));
    PartOfProgress progress(work.progress(), 0.0, ScanShare);
    return scanTextMesh(file, arguments.integer("skip"), boundaries, progress);
}

Failure noPoints(const Arguments &arguments)
{
    return {QStringLiteral("\"%1\" holds no point that can be used; nothing was written.")
                .arg(arguments.text("FROM"))};
}

Report withPoints(Report report, qint64 read, qint64 used, const ImportLosses &losses)
{
    report.add("pointsRead", read);
    report.add("pointsUsed", used);
    return withCut(std::move(report), losses.cut);
}

AsciiRegularOptions regularOptions(const Arguments &arguments, const MeshBoundaries &b)
{
    AsciiRegularOptions options;
    options.boundaries = b;
    options.width = arguments.has("width") ? arguments.integer("width")
                                           : proposedSide(b.minX, b.maxX, MostSide);
    options.height = arguments.has("height") ? arguments.integer("height")
                                             : proposedSide(b.minY, b.maxY, MostSide);
    options.skip = arguments.integer("skip");
    options.zScale = arguments.real("z-scale");
    return options;
}

Result<Report> asciiRegular(const Arguments &arguments, CommandWork &work)
{
    MeshBoundaries boundaries;
    const Result<MeshScan> scan = scanFile(arguments, work, boundaries);
    if (!scan)
        return tl::unexpected(scan.error());
    tellRows(work, zeroTripleWarnings(*scan, arguments.integer("skip")));
    QFile file(arguments.text("FROM"));
    if (!openText(file))
        return failed(couldNotOpenMessage(file.fileName()));
    PartOfProgress progress(work.progress(), ScanShare, 1.0);
    const Result<AsciiRegularMesh> mesh =
        convertAsciiRegular(file, regularOptions(arguments, boundaries), progress);
    if (!mesh)
        return tl::unexpected(mesh.error());
    tellRows(work, mesh->rows);
    if (!mesh->hasPoints)
        return tl::unexpected(noPoints(arguments));
    return saveElevations(mesh->image, arguments.text("TO"))
        .map([&](const Report &report) {
            return withPoints(report, mesh->pointsRead, mesh->pointsUsed, mesh->losses);
        });
}

AsciiIrregularOptions irregularOptions(const Arguments &arguments,
                                       const MeshBoundaries &boundaries)
{
    AsciiIrregularOptions options;
    options.boundaries = boundaries;
    options.width = arguments.integer("width");
    options.height = arguments.integer("height");
    options.skip = arguments.integer("skip");
    options.zScale = arguments.real("z-scale");
    options.nodalPointEstimate = arguments.integer("nodal-point-estimate");
    return options;
}

Result<ScatteredMesh> readPoints(const AsciiIrregularOptions &options,
                                 const Arguments &arguments, CommandWork &work)
{
    QFile file(arguments.text("FROM"));
    if (!openText(file))
        return failed(couldNotOpenMessage(file.fileName()));
    PartOfProgress progress(work.progress(), ScanShare, 2 * ScanShare);
    return readScatteredPoints(file, options, progress);
}

Result<Report> asciiIrregular(const Arguments &arguments, CommandWork &work)
{
    MeshBoundaries boundaries;
    const Result<MeshScan> scan = scanFile(arguments, work, boundaries);
    if (!scan)
        return tl::unexpected(scan.error());
    tellRows(work, irregularScanRows(*scan, arguments.integer("skip")));
    const AsciiIrregularOptions options = irregularOptions(arguments, boundaries);
    Result<ScatteredMesh> mesh = readPoints(options, arguments, work);
    if (!mesh)
        return tl::unexpected(mesh.error());
    tellRows(work, mesh->rows);
    const int used = mesh->scattered.count;
    if (used == 0)
        return tl::unexpected(noPoints(arguments));
    PartOfProgress progress(work.progress(), 2 * ScanShare, 1.0);
    const DelaunayResult<ElevationImage> image =
        fillScatteredPoints(mesh->scattered, options, progress);
    if (!image) {
        const DelaunayFailure &failure = image.error();
        if (failure.stopped)
            return stopped();
        if (!failure.text.isEmpty())
            work.console().error(failure.text);
        return failed(triangulationFailedText(failure.code));
    }
    return saveElevations(*image, arguments.text("TO")).map([&](const Report &report) {
        return withPoints(report, mesh->pointsRead, used, mesh->losses);
    });
}

Option widthOption()
{
    return integerOption("width", "Columns of the output.", 1, MostSide, 512);
}

Option heightOption()
{
    return integerOption("height", "Rows of the output.", 1, MostSide, 512);
}

Option skipOption()
{
    return integerOption("skip", "Lines at the beginning that are no points.", 0, 99, 0);
}

} // namespace

std::vector<Command> meshCommands()
{
    const QString text = "A text file with x, y and z in each line, blanks between.";
    return {{.name = "ascii-regular",
             .summary = "Imports points on a regular grid.",
             .positionals = fromAndTo(text),
             .options = {foundInFile(widthOption()), foundInFile(heightOption()),
                         skipOption(), zScaleOption()},
             .examples = {"zephrant-terrain ascii-regular --skip 1 grid.txt dem.png",
                          "    A grid with steps of 1 behind one line of titles."},
             .run = asciiRegular},
            {.name = "ascii-irregular",
             .summary = "Imports scattered points, with triangles between them.",
             .positionals = fromAndTo(text),
             .options = {widthOption(), heightOption(), skipOption(), zScaleOption(),
                         integerOption("nodal-point-estimate",
                                       "No more points than these are read.", 1, 10000000,
                                       10000)},
             .examples = {"zephrant-terrain ascii-irregular --width 1024 --height 1024 "
                          "--nodal-point-estimate 50000 points.txt dem.png",
                          "    Up to 50,000 points over 1024 by 1024 pixels."},
             .run = asciiIrregular}};
}

#include "terrainbatch/terraincommands.h"

#include "commands/arguments.h"
#include "commands/commandwork.h"
#include "commands/progressprinter.h"
#include "geodata/geodata.h"
#include "terrain/maketexture.h"
#include "terrain/terrainsource.h"
#include "terrain/writeterrain.h"
#include "terrainbatch/terrainoptions.h"

namespace {

// In the order in which they are told.
constexpr const char *Keys[] = {
    "file",       "written",    "columns", "rows",     "cellX", "cellY",
    "crs",        "unit",       "minimum", "maximum",  "voids", "type",
    "pointsRead", "pointsUsed", "cut",     "overlaps", "gaps",  "approximate"};

// Notes are no part of what scripts read.
Report told(const TerrainReport &found, CommandWork &work)
{
    for (const QString &note : found.notes)
        work.console().message(note);
    const QJsonObject object = found.asJson();
    Report report;
    for (const char *const key : Keys)
        if (object.contains(QLatin1String(key)))
            report.add(key, object.value(QLatin1String(key)));
    return report;
}

Result<Report> told(const Result<TerrainReport> &found, CommandWork &work)
{
    if (!found)
        return tl::unexpected(found.error());
    return told(*found, work);
}

Result<Report> info(const Arguments &arguments, CommandWork &work)
{
    const std::unique_ptr<TerrainSource> source = makeGeodata();
    PartOfProgress opening(work.progress(), 0.0, 0.2);
    const Result<std::unique_ptr<Terrain>> terrain =
        source->open(arguments.texts("FILE"), pointsOf(arguments), opening);
    if (!terrain)
        return tl::unexpected(terrain.error());
    PartOfProgress scanning(work.progress(), 0.2, 1.0);
    const Result<TerrainScan> scan = (*terrain)->scan(scanning);
    if (!scan)
        return tl::unexpected(scan.error());
    return told(reportOf((*terrain)->facts(), *scan), work);
}

Result<Report> open(const Arguments &arguments, CommandWork &work)
{
    TerrainRequest request;
    request.files = arguments.texts("FILE");
    request.out = arguments.text("out");
    request.grid = gridOf(arguments);
    request.points = pointsOf(arguments);
    request.fill = fillOf(arguments);
    if (arguments.has("unit"))
        request.unit = arguments.real("unit");
    request.exaggeration = arguments.real("exaggerate");
    request.texture = textureOf(arguments);
    request.texture.photos = arguments.texts("photo");
    if (arguments.has("texture-size"))
        request.texture.size = arguments.size("texture-size");
    const std::unique_ptr<TerrainSource> source = makeGeodata();
    return told(writeTerrain(*source, request, work.progress()), work);
}

Result<Report> texture(const Arguments &arguments, CommandWork &work)
{
    TextureFromElevation job;
    job.elevation = arguments.text("ELEVATION");
    job.out = arguments.text("out");
    if (arguments.has("unit"))
        job.unit = arguments.real("unit");
    if (const QList<double> cell = arguments.numbers("cell"); cell.size() == 2)
        job.cell = QSizeF(cell[0], cell[1]);
    job.texture = textureOf(arguments);
    return told(makeTexture(job, work.progress()), work);
}

std::vector<Option> joined(std::initializer_list<std::vector<Option>> lists)
{
    std::vector<Option> all;
    for (const std::vector<Option> &list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

Positional terrainFiles()
{
    return {.name = "FILE",
            .help = "Files, folders or archives with terrain or points; several are one "
                    "mosaic.",
            .several = true};
}

} // namespace

std::vector<Command> terrainCommands()
{
    return {{.name = "info",
             .summary = "Tells what terrain files hold.",
             .positionals = {terrainFiles()},
             .options = pointOptions(),
             .examples = {"zephrant-terrain info alps.tif",
                          "    Size, cells, reference system, range and voids.",
                          "zephrant-terrain info --json n46e007.hgt n46e008.hgt",
                          "    The same of two tiles as one mosaic, for a script."},
             .run = info,
             .complaint = complaintOfPoints},
            {.name = "open",
             .summary = "Makes a scenery of terrain files: heights, texture, camera.",
             .positionals = {terrainFiles()},
             .options = joined(
                 {openOptions(), gridOptions(), textureOptions("none"), pointOptions()}),
             .examples = {"zephrant-terrain open alps.tif --out alps && zephrant-render "
                          "alps.zph",
                          "    A picture of a downloaded file.",
                          "zephrant-terrain open dem.tif --out part --cells 500,500,2000,"
                          "2000 --photo photo.tif",
                          "    A part of it under a photograph."},
             .run = open,
             .complaint = complaintOfOpen},
            {.name = "texture",
             .summary = "Makes a texture from an elevation file of this program.",
             .positionals = {{.name = "ELEVATION", .help = "The elevation file."}},
             .options = joined({scaleOptions(), textureOptions("sun")}),
             .examples = {"zephrant-terrain texture alps_elevation.png --out alps.png "
                          "--palette alpine --shade sky",
                          "    With shadows and the light of the sky."},
             .run = texture,
             .complaint = complaintOfTexture}};
}

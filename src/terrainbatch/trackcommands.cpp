#include "terrainbatch/trackcommands.h"

#include "base/wholefile.h"
#include "commands/arguments.h"
#include "commands/commandwork.h"
#include "geodata/geodata.h"
#include "scene/inputfile.h"
#include "scene/sceneryfile.h"
#include "scene/scenerywriter.h"
#include "terrain/pathtrack.h"
#include "terrain/progressshare.h"
#include "terrain/trackpath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QTextStream>

#include <cmath>

namespace {

QString folderOf(const QString &file) { return QFileInfo(file).absolutePath(); }

Result<SceneryDocument> loadScenery(const QString &name, Console &console)
{
    QFile file(QFileInfo(name).absoluteFilePath());
    const auto refuse = [&name](const QString &reason) {
        return failed(QObject::tr("Cannot open file \"%1\": %2.").arg(name, reason));
    };
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return refuse(file.errorString());
    const Result<SceneryReading> reading = readScenery(file, {});
    if (!reading)
        return refuse(reading.error().text);
    if (!reading->complaint.isEmpty())
        return refuse(reading->complaint);
    for (const QString &sentence : reading->extrasTold)
        console.message(sentence);
    return reading->document;
}

Result<void> saveScenery(const SceneryDocument &document, const QString &name)
{
    QString reason;
    const auto write = [&document](QIODevice &device) {
        QTextStream stream(&device);
        writeScenery(stream, document);
        stream.flush();
        return stream.status() == QTextStream::Ok;
    };
    if (writeWholeFile(name, write, &reason))
        return {};
    return failed(QObject::tr("Could not write file \"%1\": %2.").arg(name, reason));
}

// Names of files that were found beside one scenery stay found from another folder.
void moveTo(SceneryDocument &document, const QString &from, const QString &to)
{
    if (QDir(from) == QDir(to))
        return;
    SceneryData &data = document.parameters;
    for (QString *const name : {&data.HDateiname, &data.TDateiname})
        if (!name->isEmpty() && QFileInfo(*name).isRelative())
            *name = QFileInfo(findInputFile(*name, from)).absoluteFilePath();
}

TrackPathOptions optionsFrom(const Arguments &arguments)
{
    TrackPathOptions options;
    options.points = arguments.integer("points");
    if (arguments.has("height"))
        options.heights = arguments.text("height") == QLatin1String("track")
                              ? PathHeights::Track
                              : PathHeights::Ground;
    if (arguments.has("clearance"))
        options.clearance = arguments.real("clearance");
    return options;
}

Report reportOn(const QString &file, const Track &track, const TrackPath &path)
{
    constexpr double Centimetres = 100.0;
    Report report;
    report.add("file", file);
    report.add("pointsRead", qint64(track.points.size()));
    report.add("controlPoints", qint64(path.controlPoints.size()));
    report.add("waypoints", qint64(path.waypoints.size()));
    report.add("frames", path.frames);
    report.add("heights", path.hasTrackHeights ? "track" : "ground");
    report.add("greatestDistance",
               std::round(path.greatestDistance * Centimetres) / Centimetres);
    return report;
}

Result<Report> runTrack(const Arguments &arguments, CommandWork &work)
{
    const QString scenery = arguments.text("scenery");
    auto document = loadScenery(scenery, work.console());
    if (!document)
        return tl::unexpected(document.error());
    const auto ground = loadGround(*document, folderOf(scenery));
    if (!ground)
        return tl::unexpected(ground.error());
    const auto world = SceneryWorld::of(*document, *ground);
    if (!world)
        return tl::unexpected(world.error());
    ProgressShare reading(work.progress(), 0, 50, 100);
    const auto track =
        makeGeodata()->track(arguments.text("TRACK"), world->crs(), reading);
    if (!track)
        return tl::unexpected(track.error());
    ProgressShare fitting(work.progress(), 50, 100, 100);
    const auto path =
        pathAlong(*track, *document, *ground, optionsFrom(arguments), fitting);
    if (!path)
        return tl::unexpected(path.error());
    for (const QString &note : path->notes)
        work.console().message(note);
    const QString out = arguments.text("out");
    flyAlong(*document, *path);
    moveTo(*document, folderOf(scenery), folderOf(out));
    if (const auto saved = saveScenery(*document, out); !saved)
        return tl::unexpected(saved.error());
    return reportOn(out, *track, *path);
}

Result<Report> runPath(const Arguments &arguments, CommandWork &work)
{
    const QString scenery = arguments.text("SCENERY");
    const QString out = arguments.text("out");
    const auto document = loadScenery(scenery, work.console());
    if (!document)
        return tl::unexpected(document.error());
    const auto source = makeGeodata();
    const auto written = writePathTrack(*document, folderOf(scenery),
                                        QFileInfo(scenery).completeBaseName(), out,
                                        source.get(), work.progress());
    if (!written)
        return tl::unexpected(written.error());
    Report report;
    report.add("file", out);
    report.add("frames", document->parameters.Bildanzahl);
    return report;
}

QString wrongPath(const Arguments &arguments)
{
    const QString suffix = QFileInfo(arguments.text("out")).suffix().toLower();
    const QStringList known{"gpx", "kml", "csv"};
    return known.contains(suffix)
               ? QString()
               : QObject::tr("The file of --out must end in .gpx, .kml or .csv.");
}

} // namespace

Command trackCommand()
{
    return {
        .name = "track",
        .summary = "Makes a track the curved flight of a scenery.",
        .positionals = {{.name = "TRACK",
                         .help = "GPX, KML, KMZ, GeoJSON, a shape file, or a table."}},
        .options = {{.name = "scenery",
                     .kind = OptionKind::InputFile,
                     .valueName = "FILE",
                     .help =
                         "The scenery; a georeference lies beside its elevation file.",
                     .required = true},
                    {.name = "out",
                     .kind = OptionKind::OutputFile,
                     .valueName = "FILE",
                     .help = "The scenery with the flight.",
                     .required = true},
                    {.name = "points",
                     .kind = OptionKind::Integer,
                     .valueName = "N",
                     .help = "Most control points of the flight.",
                     .lowest = TrackPathOptions::FewestPoints,
                     .highest = TrackPathOptions::MostPoints,
                     .defaultValue = "40"},
                    {.name = "height",
                     .kind = OptionKind::Choice,
                     .help = "Heights of the track, or of the ground plus the clearance.",
                     .choices = {"track", "ground"},
                     .defaultNote = "track where it has heights, else ground"},
                    {.name = "clearance",
                     .kind = OptionKind::Real,
                     .valueName = "METRES",
                     .help =
                         "No frame is nearer to the ground; of heights of the track only "
                         "where it is given.",
                     .lowest = 0.0,
                     .highest = 100000.0,
                     .defaultNote = "100 above the ground"}},
        .examples = {"zephrant-terrain track tour.gpx --scenery alps.zph --out tour.zph",
                     "    A flight along the tour at the heights that were recorded.",
                     "zephrant-terrain track tour.gpx --scenery alps.zph --out tour.zph "
                     "--height ground --clearance 150",
                     "    The same 150 m above the ground."},
        .run = runTrack};
}

Command pathCommand()
{
    return {
        .name = "path",
        .summary = "Writes the flight of a scenery as GPX, KML or a table.",
        .positionals = {{.name = "SCENERY", .help = "The scenery."}},
        .options = {{.name = "out",
                     .kind = OptionKind::OutputFile,
                     .valueName = "FILE",
                     .help = "Ends in .gpx or .kml (longitude, latitude, metres), or "
                             "in .csv (every frame in units of the scenery, degrees).",
                     .required = true}},
        .examples = {"zephrant-terrain path tour.zph --out tour.gpx",
                     "    The flight for a map.",
                     "zephrant-terrain path tour.zph --out tour.csv",
                     "    Place, heading, pitch and roll of every frame."},
        .run = runPath,
        .complaint = wrongPath};
}

#include "geodata/tracks.h"

#include "geodata/crs.h"
#include "geodata/vectorfile.h"
#include "terrain/filekind.h"
#include "terrain/points.h"

#include <QFileInfo>
#include <QObject>

#include <ogr_srs_api.h>

#include <algorithm>
#include <cmath>

namespace {

using Places = std::vector<VectorPlace>;

double distance(const VectorPlace &a, const VectorPlace &b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

double lengthOf(const Places &places)
{
    double length = 0.0;
    for (std::size_t i = 1; i < places.size(); ++i)
        length += distance(places[i - 1], places[i]);
    return length;
}

// Whether a line goes on where another ends, which may have to be turned for it.
bool append(VectorShape &line, VectorShape next)
{
    constexpr double Touching = 1e-6; // of the length of both
    const double near = Touching * (lengthOf(line.places) + lengthOf(next.places));
    if (distance(line.places.back(), next.places.front()) > near) {
        if (distance(line.places.back(), next.places.back()) > near)
            return false;
        std::reverse(next.places.begin(), next.places.end());
    }
    line.places.insert(line.places.end(), next.places.begin() + 1, next.places.end());
    return true;
}

std::vector<VectorShape> joinedLines(const std::vector<VectorShape> &shapes)
{
    std::vector<VectorShape> lines;
    for (const VectorShape &shape : shapes) {
        if (!shape.isLine)
            continue;
        const bool isNext = !lines.empty() && lines.back().name == shape.name;
        if (!isNext || !append(lines.back(), shape))
            lines.push_back(shape);
    }
    return lines;
}

// All points as one line.
VectorShape lineOfPoints(std::vector<VectorShape> shapes)
{
    const bool hasTimes =
        std::all_of(shapes.begin(), shapes.end(),
                    [](const VectorShape &shape) { return shape.time.has_value(); });
    if (hasTimes)
        std::stable_sort(
            shapes.begin(), shapes.end(),
            [](const VectorShape &a, const VectorShape &b) { return *a.time < *b.time; });
    VectorShape line;
    for (const VectorShape &shape : shapes)
        line.places.insert(line.places.end(), shape.places.begin(), shape.places.end());
    return line;
}

Track trackOf(const VectorShape &line, const QString &file)
{
    Track track;
    track.name = line.name.isEmpty() ? QFileInfo(file).completeBaseName() : line.name;
    track.points.reserve(qsizetype(line.places.size()));
    for (const VectorPlace &place : line.places)
        track.points.append({place.x, place.y, place.metres});
    return track;
}

Result<VectorShape> trackLine(const VectorFile &read, const QString &file)
{
    const std::vector<VectorShape> lines = joinedLines(read.shapes);
    const auto longest = std::max_element(
        lines.begin(), lines.end(), [](const VectorShape &a, const VectorShape &b) {
            return lengthOf(a.places) < lengthOf(b.places);
        });
    VectorShape line = longest == lines.end() ? lineOfPoints(read.shapes) : *longest;
    if (line.places.size() < 2)
        return failed(
            QObject::tr("\"%1\" holds neither a line nor two points.").arg(file));
    return line;
}

bool isText(const QString &file)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    return suffix == QLatin1String("csv") || suffix == QLatin1String("txt") ||
           suffix == QLatin1String("xyz") || suffix == QLatin1String("tsv");
}

struct WayDeleter {
    void operator()(void *way) const { OCTDestroyCoordinateTransformation(way); }
};

// Brings longitudes and latitudes to another system.
Result<void> transform(Places &places, const QString &crs, const QString &file)
{
    const Srs from = systemOf(QStringLiteral("EPSG:4326"));
    const Srs to = systemOf(crs);
    const std::unique_ptr<void, WayDeleter> way(
        from && to ? OCTNewCoordinateTransformation(from.get(), to.get()) : nullptr);
    for (VectorPlace &place : places)
        if (!way || OCTTransform(way.get(), 1, &place.x, &place.y, nullptr) == 0)
            return failed(QObject::tr("The places of \"%1\" cannot be brought to the "
                                      "terrain's reference system.")
                              .arg(file));
    return {};
}

// Degrees, though no name says so: all numbers could be, and in metres the terrain would
// be at the corner of its system.
bool areDegrees(const Places &places)
{
    constexpr double MostLongitude = 180.0;
    constexpr double MostLatitude = 90.0;
    return std::all_of(places.begin(), places.end(), [](const VectorPlace &place) {
        return std::fabs(place.x) <= MostLongitude && std::fabs(place.y) <= MostLatitude;
    });
}

Result<VectorShape> tableLine(const QString &file, const PointFormat &format,
                              const QString &crs, Progress &progress)
{
    auto device = openTextFile(file);
    if (!device)
        return tl::unexpected(device.error());
    PointReader reader(**device, QLatin1Char('"') + file + QLatin1Char('"'), format);
    VectorShape line;
    std::vector<GroundPoint> batch;
    do {
        if (const auto read = reader.next(batch); !read)
            return tl::unexpected(read.error());
        for (const GroundPoint &point : batch)
            line.places.push_back(
                {point.x, point.y,
                 std::isnan(point.z) ? std::nullopt : std::optional(point.z)});
        if (!progress.step(0, 0))
            return stopped();
    } while (!batch.empty());
    const bool moves = !crs.isEmpty() && (format.isGeographic || areDegrees(line.places));
    if (moves)
        if (const auto moved = transform(line.places, crs, file); !moved)
            return tl::unexpected(moved.error());
    return line;
}

} // namespace

Result<Track> readTrack(const QString &file, const QString &crs, Progress &progress)
{
    if (!QFileInfo::exists(file))
        return failed(QObject::tr("There is no file \"%1\".").arg(file));
    if (const QString other = notAFileText(file);
        !other.isEmpty() && !QFileInfo(file).isDir())
        return failed(other);
    startGdal();
    const GdalMessages messages;
    const auto preview = isText(file) ? previewPointFile(file, {}) : failed(QString());
    if (preview) {
        const auto line = tableLine(file, preview->format, crs, progress);
        if (!line)
            return tl::unexpected(line.error());
        Track track = trackOf(*line, file);
        track.hasSystem = preview->format.isGeographic;
        return track;
    }
    const auto read = readVector(file, crs, progress);
    if (!read)
        return tl::unexpected(read.error());
    const auto line = trackLine(*read, file);
    if (!line)
        return tl::unexpected(line.error());
    Track track = trackOf(*line, file);
    track.hasSystem = read->hasSystem;
    return track;
}

#include "terrain/maketexture.h"

#include "base/memorybudget.h"
#include "base/workerpool.h"
#include "raster/heightkinds.h"
#include "raster/imagefile.h"
#include "terrain/elevationpicture.h"
#include "terrain/filekind.h"
#include "terrain/rowwork.h"
#include "terrain/terrainfiles.h"
#include "terrain/terraintexture.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <new>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Terrain", source);
}

// What is known of an elevation file, and what was taken instead of what is not.
struct Elevation {
    FilledHeights filled;
    Georeference place;
    bool hasPlace = false; // on the earth
    double unit = 1.0;     // metres
    QStringList notes;
};

void takeScales(const TextureFromElevation &job, Elevation &elevation)
{
    Georeference &place = elevation.place;
    elevation.hasPlace = place.transform[1] != 0.0;
    if (job.cell) {
        place.metresX = job.cell->width();
        place.metresY = job.cell->height();
    } else if (place.metresX <= 0.0 || place.metresY <= 0.0) {
        place.metresX = place.metresY = 1.0;
        elevation.notes << text("No file beside \"%1\" tells the size of its cells; they "
                                "count as 1 m.")
                               .arg(job.elevation);
    }
    if (!job.unit && !place.metresPerHeightUnit)
        elevation.notes
            << text("No file beside \"%1\" tells its height unit; it counts as "
                    "1 m.")
                   .arg(job.elevation);
    elevation.unit = job.unit.value_or(place.metresPerHeightUnit.value_or(1.0));
}

// Whoever reads a picture gets none, whatever the reason.
QString whyUnread(const QString &picture)
{
    const QSize size = QImageReader(picture).size();
    const qint64 bytes = qint64(size.width()) * size.height() * 4;
    if (size.isEmpty() ||
        (fitsMemory(bytes) && !QImage(size, QImage::Format_RGB32).isNull()))
        return text("\"%1\" is no picture that can be read.").arg(picture);
    return text("There is not enough memory for the %1 x %2 pixels of \"%3\".")
        .arg(size.width())
        .arg(size.height())
        .arg(picture);
}

Result<Elevation> readElevation(const TextureFromElevation &job, WorkerPool &pool,
                                const Stretch &stretch)
{
    if (const QString other = notAFileText(job.elevation); !other.isEmpty())
        return failed(other);
    QFile file(job.elevation);
    if (!file.open(QIODevice::ReadOnly))
        return failed(
            text("Cannot read \"%1\": %2.").arg(job.elevation, file.errorString()));
    file.close();
    if (const QString other = otherHeightsNotice(job.elevation); !other.isEmpty())
        return failed(other);
    const QImage image = loadImageFile(job.elevation);
    if (image.isNull())
        return failed(whyUnread(job.elevation));
    Elevation elevation;
    Result<Georeference> place = readSidecars(job.elevation, image.size());
    if (!place)
        return tl::unexpected(place.error());
    elevation.place = std::move(*place);
    takeScales(job, elevation);
    Result<Heights> heights =
        heightsOfPicture(image, elevation.unit, pool, stretch.part(0.0, 0.8));
    if (!heights)
        return tl::unexpected(heights.error());
    Result<FilledHeights> filled =
        fillWithLowest(std::move(*heights), pool, stretch.part(0.8, 1.0));
    if (!filled)
        return tl::unexpected(filled.error());
    elevation.filled = std::move(*filled);
    return elevation;
}

TerrainReport report(const TextureFromElevation &job, const Elevation &elevation)
{
    TerrainReport told;
    told.files = {job.elevation};
    told.size = elevation.filled.heights.size;
    told.cellX = elevation.place.metresX;
    told.cellY = elevation.place.metresY;
    told.crs = crsNameOf(elevation.place.crs);
    told.heightUnit = elevation.unit;
    told.range = elevation.filled.range;
    told.type = QStringLiteral("Int24");
    told.notes = elevation.notes;
    return told;
}

QString projectionBeside(const QString &picture)
{
    QFile file(projectionFileName(picture));
    constexpr qint64 Most = 1 << 20;
    return file.open(QIODevice::ReadOnly) && file.size() <= Most
               ? QString::fromUtf8(file.readAll()).trimmed()
               : QString();
}

// Other kinds of pictures than PNG are the business of the writer that all pictures
// share.
Result<QStringList> write(const TextureFromElevation &job, const Elevation &elevation,
                          const QImage &texture, const Stretch &stretch)
{
    const OutputGrid grid{elevation.place.crs,
                          elevation.place.transform,
                          elevation.filled.heights.size,
                          Resampling::Nearest,
                          std::nullopt,
                          elevation.place.metresX,
                          elevation.place.metresY};
    const Georeference place = georeferenceOf(grid, texture.size());
    const QString projection = projectionBeside(job.elevation);
    FileGroup group;
    Result<void> done;
    if (QFileInfo(job.out).suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) ==
        0) {
        done = addPicture(group, job.out, texture, elevation.hasPlace ? &place : nullptr,
                          projection, stretch);
    } else {
        StretchProgress progress(stretch);
        done = saveImageFile(texture, job.out, progress);
        if (!done && !done.error().stopped)
            return failed(
                text("Cannot write \"%1\": %2.").arg(job.out, done.error().text));
        if (done && elevation.hasPlace)
            done = addSidecars(group, job.out, place, projection);
    }
    if (done)
        done = group.takePlaces();
    if (!done)
        return tl::unexpected(done.error());
    return QStringList(job.out) + group.names();
}

Result<TerrainReport> make(const TextureFromElevation &job, Progress &progress)
{
    WorkerPool pool(usualThreads());
    const Stretch whole{progress};
    const Result<GroundColours> colours = groundColours(job.texture.palette);
    if (!colours)
        return tl::unexpected(colours.error());
    const Result<Elevation> elevation = readElevation(job, pool, whole.part(0.1, 0.15));
    if (!elevation)
        return tl::unexpected(elevation.error());
    const Ground ground{elevation->filled.heights, elevation->place.metresX,
                        elevation->place.metresY};
    const QSize size = job.texture.size.value_or(ground.heights.size);
    const Result<QImage> texture =
        terrainTexture({elevation->filled, ground, *colours, job.texture, size}, pool,
                       whole.part(0.15, 0.8));
    if (!texture)
        return tl::unexpected(texture.error());
    const Result<QStringList> written =
        write(job, *elevation, *texture, whole.part(0.8, 1.0));
    if (!written)
        return tl::unexpected(written.error());
    TerrainReport told = report(job, *elevation);
    told.written = *written;
    told.written.removeDuplicates();
    return told;
}

} // namespace

Result<TerrainReport> makeTexture(const TextureFromElevation &job, Progress &progress)
{
    try {
        return make(job, progress);
    } catch (const std::bad_alloc &) {
        return failed(text("There is not enough memory for this texture."));
    }
}

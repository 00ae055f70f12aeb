#include "terrain/writeterrain.h"

#include "base/memorybudget.h"
#include "base/workerpool.h"
#include "terrain/elevationpicture.h"
#include "terrain/groundtexture.h"
#include "terrain/rowwork.h"
#include "terrain/terrainfiles.h"
#include "terrain/terrainscenery.h"
#include "terrain/terrainsource.h"
#include "terrain/terraintexture.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cmath>
#include <new>

namespace {

constexpr int LargestTexture = 8192; // pixels of a side, unless it is asked for

QString text(const char *source)
{
    return QCoreApplication::translate("Terrain", source);
}

// One terrain on its way to its files.
class Writer {
public:
    Writer(TerrainSource &source, Terrain &terrain, const TerrainRequest &request,
           Progress &progress)
        : m_source(source), m_terrain(terrain), m_request(request), m_whole{progress},
          m_names(request.out), m_pool(usualThreads())
    {
    }

    [[nodiscard]] Result<TerrainReport> run()
    {
        for (const auto step :
             {&Writer::check, &Writer::readHeights, &Writer::fill, &Writer::makeElevation,
              &Writer::makeTexture, &Writer::writeFiles}) {
            const Result<void> done = (this->*step)();
            if (!done)
                return tl::unexpected(done.error());
        }
        m_report.written = m_group.names();
        return m_report;
    }

private:
    Result<void> check();
    Result<void> checkNames() const;
    Result<void> readHeights();
    Result<void> fill();
    Result<void> makeElevation();
    Result<void> makeTexture();
    Result<QSize> textureSize();
    Result<void> writeFiles();
    Result<void> writePictures(const Stretch &stretch);
    [[nodiscard]] TerrainScene scene() const;

    TerrainSource &m_source;
    Terrain &m_terrain;
    const TerrainRequest &m_request;
    const Stretch m_whole;
    const TerrainNames m_names;
    WorkerPool m_pool;

    GroundColours m_colours;
    OutputGrid m_grid;
    FilledHeights m_filled;
    double m_unit = 0.0;
    ElevationPicture m_picture;
    QImage m_texture;
    FileGroup m_group;
    TerrainReport m_report;
};

// What can be known to fail is told before anything takes long.
Result<void> Writer::check()
{
    Result<void> good = checkNames();
    if (!good)
        return good;
    Result<GroundColours> colours = groundColours(m_request.texture.palette);
    if (!colours)
        return tl::unexpected(colours.error());
    m_colours = std::move(*colours);
    Result<OutputGrid> grid = m_terrain.plan(m_request.grid);
    if (!grid)
        return tl::unexpected(grid.error());
    m_grid = std::move(*grid);
    // Heights, their picture and a texture.
    const qint64 cells = qint64(m_grid.size.width()) * m_grid.size.height();
    if (!fitsMemory(cells * 12))
        return failed(
            text("%1 x %2 cells would take %3 of memory; choose a smaller part or "
                 "fewer cells.")
                .arg(m_grid.size.width())
                .arg(m_grid.size.height())
                .arg(memoryText(cells * 12)));
    return {};
}

Result<void> Writer::checkNames() const
{
    if (m_names.name.isEmpty())
        return failed(text("The files need a name."));
    for (const QString &file : m_request.files + m_request.texture.photos)
        for (const QString &made : {m_names.elevation, m_names.texture, m_names.scenery})
            if (QFileInfo::exists(made) && QFileInfo(made).canonicalFilePath() ==
                                               QFileInfo(file).canonicalFilePath())
                return failed(text("\"%1\" is read and would be replaced; choose another "
                                   "name.")
                                  .arg(file));
    return {};
}

Result<void> Writer::readHeights()
{
    StretchProgress progress(m_whole.part(0.05, 0.39));
    Result<Heights> heights = m_terrain.heights(m_grid, progress);
    if (!heights)
        return tl::unexpected(heights.error());
    m_filled.heights = std::move(*heights);
    m_report = reportOf(m_terrain.facts(), {});
    m_report.size = m_grid.size;
    m_report.cellX = m_grid.metresX;
    m_report.cellY = m_grid.metresY;
    m_report.crs = crsNameOf(m_grid.crs);
    const Result<HeightSurvey> survey =
        surveyHeights(m_filled.heights, m_pool, m_whole.part(0.39, 0.4));
    if (!survey)
        return tl::unexpected(survey.error());
    m_report.voids = survey->voids;
    if (!survey->range)
        return failed(text("This part holds no heights."));
    m_report.range.emplace(survey->range->first, survey->range->second);
    return {};
}

Result<void> Writer::fill()
{
    if (m_request.fill && m_report.voids > 0) {
        StretchProgress progress(m_whole.part(0.4, 0.49));
        const Result<qint64> filled =
            m_source.fillHoles(m_filled.heights, *m_request.fill, progress);
        if (!filled)
            return tl::unexpected(filled.error());
        m_report.filled = *filled;
    }
    Result<FilledHeights> filled =
        fillWithLowest(std::move(m_filled.heights), m_pool, m_whole.part(0.49, 0.5));
    if (!filled)
        return tl::unexpected(filled.error());
    m_filled = std::move(*filled);
    return {};
}

TerrainScene Writer::scene() const
{
    TerrainScene scene;
    scene.name = m_names.name;
    scene.elevation = m_grid.size;
    scene.texture = m_texture.size();
    scene.cellX = m_grid.metresX;
    scene.cellY = m_grid.metresY;
    scene.unit = m_unit;
    scene.exaggeration = m_request.exaggeration;
    return scene;
}

Result<void> Writer::makeTexture()
{
    const Result<QSize> size = textureSize();
    if (!size)
        return tl::unexpected(size.error());
    const Ground ground{m_filled.heights, m_grid.metresX, m_grid.metresY};
    Result<QImage> texture =
        terrainTexture({m_filled, ground, m_colours, m_request.texture, *size},
                       {m_source, m_grid}, m_pool, m_whole.part(0.55, 0.75));
    if (!texture)
        return tl::unexpected(texture.error());
    m_texture = std::move(*texture);
    return {};
}

Result<QSize> Writer::textureSize()
{
    if (m_request.texture.size)
        return *m_request.texture.size;
    const QSize square =
        squareTexture(m_grid.size, m_grid.metresX, m_grid.metresY, LargestTexture);
    if (m_request.texture.photos.isEmpty())
        return square;
    // As fine as the photographs, its pixels square on the ground as well.
    const Result<QSize> photo = m_source.photoSize(m_request.texture.photos, m_grid);
    if (!photo)
        return photo;
    const double finer = std::max(double(photo->width()) / square.width(),
                                  double(photo->height()) / square.height());
    const double most =
        double(LargestTexture) / std::max(square.width(), square.height());
    return (QSizeF(square) * std::min(finer, most)).toSize().expandedTo(QSize(1, 1));
}

Result<void> Writer::makeElevation()
{
    const double metres = std::min(m_grid.metresX, m_grid.metresY);
    m_unit = m_request.unit.value_or(unitFor(metres, m_request.exaggeration));
    Result<ElevationPicture> picture =
        elevationPicture(m_filled.heights, m_unit, m_pool, m_whole.part(0.5, 0.55));
    if (!picture)
        return tl::unexpected(picture.error());
    m_picture = std::move(*picture);
    m_report.heightUnit = m_unit;
    m_report.cut = m_picture.cut;
    if (m_report.cut > 0)
        m_report.notes
            << text("%1 heights are beyond what the elevation file holds at a unit "
                    "of %2 m, and were cut.")
                   .arg(m_report.cut)
                   .arg(m_unit);
    return {};
}

Result<void> Writer::writeFiles()
{
    const TerrainScene shown = scene();
    StretchProgress progress(m_whole.part(0.75, 0.77));
    const Result<SceneryDocument> document =
        sceneryOf(shown, m_picture.image, m_filled.isVoid, progress);
    if (!document)
        return tl::unexpected(document.error());
    if (document->parameters.HDateiSkalaZA == 0.0 && m_request.exaggeration != 0.0)
        return failed(text("A height unit of %1 m is too small for a world unit of %2 m; "
                           "choose a larger one.")
                          .arg(m_unit)
                          .arg(metresPerUnit(shown)));
    Result<void> done = writePictures(m_whole.part(0.77, 0.98));
    if (done)
        done = addScenery(m_group, m_names.scenery, *document);
    if (done && !m_whole.tell(0.99))
        return stopped();
    return done ? m_group.takePlaces() : done;
}

Result<void> Writer::writePictures(const Stretch &stretch)
{
    const QString projection =
        m_grid.crs.isEmpty() ? QString() : m_source.projectionText(m_grid.crs);
    Georeference place = georeferenceOf(m_grid, m_grid.size);
    place.metresPerHeightUnit = m_unit;
    const Result<void> added = addPicture(m_group, m_names.elevation, m_picture.image,
                                          &place, projection, stretch.part(0.0, 0.5));
    if (!added)
        return added;
    place = georeferenceOf(m_grid, m_texture.size());
    return addPicture(m_group, m_names.texture, m_texture, &place, projection,
                      stretch.part(0.5, 1.0));
}

} // namespace

Result<TerrainReport> writeTerrain(TerrainSource &source, Terrain &terrain,
                                   const TerrainRequest &request, Progress &progress)
{
    try {
        return Writer(source, terrain, request, progress).run();
    } catch (const std::bad_alloc &) {
        return failed(text("There is not enough memory for this terrain."));
    }
}

Result<TerrainReport> writeTerrain(TerrainSource &source, const TerrainRequest &request,
                                   Progress &progress)
{
    StretchProgress opening(Stretch{progress, 0.0, 0.05});
    const Result<std::unique_ptr<Terrain>> terrain =
        source.open(request.files, request.points, opening);
    if (!terrain)
        return tl::unexpected(terrain.error());
    return writeTerrain(source, **terrain, request, progress);
}

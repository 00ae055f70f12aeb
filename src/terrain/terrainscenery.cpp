#include "terrain/terrainscenery.h"

#include "raster/elevationimage.h"
#include "scene/fieldlimits.h"
#include "terrain/elevationpicture.h"
#include "terrain/firstcamera.h"

#include <QImage>

#include <algorithm>
#include <cmath>

namespace {

constexpr int FewestMeshCells = 2;
constexpr int MostMeshCells = 1024;
constexpr int HighQuality = 1;
constexpr int PictureWidth = 1280;
constexpr int PictureHeight = 960;
constexpr QRgb SkyBlue = 0xFF8FB9E3u;

// Light from the south-west, 50 degrees high.
constexpr double LightEast = 0.45;
constexpr double LightNorth = 0.45;
constexpr double LightUp = -0.77;

// Clear air shows about so far; a scenery has at least a little haze, or its depth does
// not show, and never so much that its far end fades.
constexpr double Visibility = 60000.0; // metres
constexpr double LeastRanges = 8.0;    // of the terrain's diagonal
constexpr double MostRanges = 40.0;

void setFiles(const TerrainScene &scene, SceneryData &data)
{
    data.TDateiVerwenden = true;
    data.TDateiname = scene.name + QLatin1String("_texture.png");
    data.HDateiname = scene.name + QLatin1String("_elevation.png");
    // The template is a format of numbers, in which a percent sign stands twice.
    QString frames = scene.name;
    frames.replace(QLatin1Char('%'), QLatin1String("%%"));
    data.AusDateiname = frames + QLatin1String("_%04d");
}

void setScales(const TerrainScene &scene, SceneryData &data)
{
    data.HDateiSkalaX = double(scene.texture.width()) / scene.elevation.width();
    data.HDateiSkalaY = double(scene.texture.height()) / scene.elevation.height();
    data.HDateiSkalaZA = zScaleOf(scene.unit, metresPerUnit(scene), scene.exaggeration);
    data.HDateiSkalaZE = data.HDateiSkalaZA;
}

void setPicture(const TerrainScene &scene, SceneryData &data)
{
    data.GenauRechnen = HighQuality;
    data.AusBreite = PictureWidth;
    data.AusHoehe = PictureHeight;
    data.AusAuflX = std::clamp(scene.elevation.width(), FewestMeshCells, MostMeshCells);
    data.AusAuflY = std::clamp(scene.elevation.height(), FewestMeshCells, MostMeshCells);
}

void setAir(const TerrainScene &scene, SceneryData &data)
{
    data.LichtX = LightEast;
    data.LichtY = LightNorth;
    data.LichtZ = LightUp;
    data.HintergrundVerwenden = true;
    data.Hintergrund = SkyBlue;
    const double diagonal = std::hypot(scene.texture.width(), scene.texture.height());
    data.NebelA = std::clamp(Visibility / metresPerUnit(scene), LeastRanges * diagonal,
                             MostRanges * diagonal);
    data.NebelE = data.NebelA;
}

} // namespace

QSize squareTexture(const QSize &elevation, double cellX, double cellY, int most)
{
    const double finer = std::min(cellX, cellY);
    const double width = elevation.width() * (cellX / finer);
    const double height = elevation.height() * (cellY / finer);
    const double fit = std::min(1.0, most / std::max(width, height));
    return QSize(std::max(static_cast<int>(std::lround(width * fit)), 1),
                 std::max(static_cast<int>(std::lround(height * fit)), 1));
}

double metresPerUnit(const TerrainScene &scene)
{
    const double x = scene.cellX * scene.elevation.width() / scene.texture.width();
    const double y = scene.cellY * scene.elevation.height() / scene.texture.height();
    return std::sqrt(x * y);
}

Result<SceneryDocument> sceneryOf(const TerrainScene &scene, const QImage &picture,
                                  const std::vector<bool> &isVoid, Progress &progress)
{
    SceneryDocument document;
    SceneryData &data = document.parameters;
    setFiles(scene, data);
    setScales(scene, data);
    setPicture(scene, data);
    setAir(scene, data);
    data = asShown(data); // the form shows the same as the file has
    const ElevationImage elevation(picture.constBits(), picture.width(), picture.height(),
                                   picture.bytesPerLine(), picture.format());
    const MeshSurface surface(elevation, isVoid, data);
    if (!setFirstCamera(surface, scene.texture, data, progress))
        return stopped();
    document.extras.MetresPerUnit = metresPerUnit(scene);
    return document;
}

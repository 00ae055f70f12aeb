// Writes the terrain and the texture of the examples into a folder. The same
// pictures come out each time; they are kept beside the sceneries.

#include "generator/terrain.h"
#include "generator/texture.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"

#include <QDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int TerrainSide = 512;
constexpr int TextureSide = 1024;
constexpr unsigned Seed = 4;
// Stored steps between the lake and the highest summit.
constexpr double Steps = 100000.0;
// Height of the summits in pixels of the terrain, for the steepness of slopes.
constexpr double Relief = 66.0;

ElevationImage elevationOf(const HeightField &terrain)
{
    ElevationImage image(terrain.side, terrain.side, QImage::Format_RGB888);
    for (int y = 0; y < terrain.side; ++y)
        for (int x = 0; x < terrain.side; ++x)
            image.setElevation(
                x, y, (std::max(terrain.at(x, y), LakeLevel) - LakeLevel) * Steps);
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: generate_examples FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const HeightField terrain = makeMountains(TerrainSide, Seed);
    const bool written =
        saveImageFile(elevationOf(terrain), folder.filePath("mountains_elevation.png")) &&
        saveImageFile(paintGround(terrain, TextureSide, Relief),
                      folder.filePath("mountains_texture.png"));
    if (!written)
        std::fputs("Could not write the pictures.\n", stderr);
    return written ? 0 : 1;
}

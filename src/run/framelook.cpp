#include "run/framelook.h"

#include "base/vectormath.h"
#include "raster/elevationimage.h"
#include "scene/scenerydata.h"

#include <algorithm>

C4Vector lightOf(const SceneryData &data)
{
    return normalized({data.LichtX, data.LichtY, data.LichtZ, 0.0});
}

FrameSetup frameSetup(const SceneryData &data, const ElevationImage &elevation,
                      bool preview)
{
    // A coarse grid has fewer cells than a preview divides it by.
    const auto cells = [preview](int wanted) {
        return preview ? std::max(wanted / 4, 1) : wanted;
    };
    FrameSetup setup;
    setup.elevation = &elevation;
    setup.light = lightOf(data);
    setup.meshCellsX = cells(data.AusAuflX);
    setup.meshCellsY = cells(data.AusAuflY);
    setup.terrainX = elevation.width() * data.HDateiSkalaX;
    setup.terrainY = elevation.height() * data.HDateiSkalaY;
    return setup;
}

void takeLook(FrameSetup &setup, const SceneryData &data)
{
    setup.useBackground = data.HintergrundVerwenden;
    setup.background = data.Hintergrund;
    setup.quality = data.GenauRechnen;
}

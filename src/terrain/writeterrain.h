#pragma once

#include "base/result.h"
#include "terrain/terrainreport.h"
#include "terrain/terrainrequest.h"

class Progress;
class Terrain;
class TerrainSource;

/// Makes a scenery of files of heights: the elevation file, its texture, what tells where
/// they lie on the earth, and the scenery last. All files are there at the end, or those
/// of an earlier run stay as they were.
[[nodiscard]] Result<TerrainReport>
writeTerrain(TerrainSource &source, const TerrainRequest &request, Progress &progress);

/// The same of a terrain that has been opened already, of the files of the request.
[[nodiscard]] Result<TerrainReport> writeTerrain(TerrainSource &source, Terrain &terrain,
                                                 const TerrainRequest &request,
                                                 Progress &progress);

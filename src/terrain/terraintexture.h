#pragma once

#include "base/result.h"
#include "terrain/groundtexture.h"
#include "terrain/terrainrequest.h"

class TerrainSource;
class WorkerPool;
struct OutputGrid;
struct Stretch;

/// What a texture shows, and what it is made of.
struct TextureJob {
    const FilledHeights &filled;
    const Ground &ground;
    const GroundColours &colours;
    const TextureRequest &request;
    QSize size; ///< pixels
};

/// Where photographs come from.
struct PhotoSource {
    TerrainSource &source;
    const OutputGrid &grid;
};

/// Makes a texture: photographs, and the colours of the ground where none lies, in the
/// light that is asked for. Fails where it is stopped, where a photograph cannot be read,
/// or where there is not enough memory.
[[nodiscard]] Result<QImage> terrainTexture(const TextureJob &job,
                                            const PhotoSource &photos, WorkerPool &pool,
                                            const Stretch &stretch);

/// The same without photographs.
[[nodiscard]] Result<QImage> terrainTexture(const TextureJob &job, WorkerPool &pool,
                                            const Stretch &stretch);

#pragma once

#include "base/vectors.h"
#include "render/framesetup.h"

struct SceneryData;

/// Incident light of a scenery, a unit vector along its travel.
[[nodiscard]] C4Vector lightOf(const SceneryData &data);
/// What the frames of a scenery have in common over an elevation: extent, mesh, light.
/// Target, texture and view are left to be set, as is what may change from frame to
/// frame, see takeLook(). Borrows the elevation. The mesh of a preview is coarser.
[[nodiscard]] FrameSetup frameSetup(const SceneryData &data,
                                    const ElevationImage &elevation, bool preview);
/// Background and quality of the next frame.
void takeLook(FrameSetup &setup, const SceneryData &data);

#pragma once

#include "base/vectors.h"

#include <QRgb>

#include <functional>

class ElevationImage;
class TextureImage;
class Transformation;

/// What a frame is made from and into: complete when it is made, and the same for as
/// long as the frame is drawn. Borrows everything.
struct FrameSetup {
    TextureImage *target = nullptr;
    const TextureImage *texture = nullptr;
    const ElevationImage *elevation = nullptr;
    const Transformation *view = nullptr; ///< of the size of the target
    C4Vector light;                       ///< unit vector, w = 0
    double meshCellsX = 1.0;              ///< cells over the whole terrain
    double meshCellsY = 1.0;
    double terrainX = 0.0; ///< extent in world units
    double terrainY = 0.0;
    bool useBackground = false; ///< otherwise the colour of flat land
    QRgb background = 0;
    int quality = 0;
    /// Nobody looks at the target before the frame is whole: it may be drawn near ones
    /// first, and what a stopped one shows is open.
    bool seenWholeOnly = false;
    int threads = 0; ///< that draw; 0 stands for all cores
    /// How many cores other work of this program takes at the moment; may be empty.
    std::function<int()> coresTaken;
};

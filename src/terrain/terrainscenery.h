#pragma once

#include "base/result.h"
#include "scene/scenerydocument.h"

#include <QSize>
#include <QString>

#include <vector>

class Progress;
class QImage;

/// What the scenery of a terrain is made of.
struct TerrainScene {
    QString name;     ///< of its files, without folder and endings
    QSize elevation;  ///< pixels
    QSize texture;    ///< pixels
    double cellX = 1; ///< metres of an elevation pixel, eastward
    double cellY = 1; ///< northward
    double unit = 1;  ///< metres of a height unit
    double exaggeration = 1;
};

/// The size of a texture over cells of an elevation file whose pixels are square on the
/// ground, so that the world of the scenery is true to scale: as the elevation where its
/// cells are, else larger along their longer side. No side has more than `most` pixels.
[[nodiscard]] QSize squareTexture(const QSize &elevation, double cellX, double cellY,
                                  int most);

/// Metres of a world unit, which is a pixel of the texture. Where these are not square,
/// of one with the same area.
[[nodiscard]] double metresPerUnit(const TerrainScene &scene);

/// A scenery that shows a terrain true to scale, but for the exaggeration: the mesh as
/// fine as the elevation file, a camera that has it in view, light from the south-west, a
/// blue background. `picture` is that of the heights, `isVoid` tells its pixels that had
/// none, and is empty where all had one. Fails only where it is stopped.
[[nodiscard]] Result<SceneryDocument> sceneryOf(const TerrainScene &scene,
                                                const QImage &picture,
                                                const std::vector<bool> &isVoid,
                                                Progress &progress);

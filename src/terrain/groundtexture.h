#pragma once

#include "base/result.h"
#include "terrain/colourramp.h"
#include "terrain/shading.h"

#include <QImage>

#include <optional>
#include <utility>
#include <vector>

class WorkerPool;
struct GroundPalette;
struct Stretch;

/// Heights of which every cell has one, and which of them had none.
struct FilledHeights {
    Heights heights;
    std::vector<bool> isVoid; ///< empty where there were no voids
    std::pair<float, float> range{0.0f, 0.0f};
    qint64 voids = 0;
};

/// How high heights are, and how many are missing.
struct HeightSurvey {
    std::optional<std::pair<float, float>> range; ///< nothing where all are void
    qint64 voids = 0;
};

/// Looks at all of them. Fails only where it is stopped.
[[nodiscard]] Result<HeightSurvey> surveyHeights(const Heights &heights, WorkerPool &pool,
                                                 const Stretch &stretch);

/// Gives voids the lowest height; 0 where all cells are void. Fails only where it is
/// stopped.
[[nodiscard]] Result<FilledHeights> fillWithLowest(Heights heights, WorkerPool &pool,
                                                   const Stretch &stretch);

/// Colours of ground: a palette of the program, or a table of a file where that is not
/// empty.
struct GroundColours {
    const GroundPalette *palette = nullptr;
    ColourTable table;
};

/// The colours that a request names: one of the program's palettes, or a file.
[[nodiscard]] Result<GroundColours> groundColours(const QString &nameOrFile);

/// Paints a texture of any size of ground. Fails where it is stopped, or where there is
/// not enough memory.
[[nodiscard]] Result<QImage> paintGround(const FilledHeights &filled,
                                         const Ground &ground,
                                         const GroundColours &colours, const QSize &size,
                                         WorkerPool &pool, const Stretch &stretch);

/// Lays a picture with an alpha channel over another of its size.
void layOver(const QImage &picture, QImage &texture);

/// Multiplies a texture's brightness by light, which may have another size. False if it
/// was stopped.
[[nodiscard]] bool shadeTexture(QImage &texture, const LightMap &light, WorkerPool &pool,
                                const Stretch &stretch);

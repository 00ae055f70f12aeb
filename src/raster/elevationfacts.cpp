#include "raster/elevationfacts.h"

#include "base/progress.h"
#include "raster/elevationimage.h"
#include "raster/pixelreader.h"

#include <algorithm>
#include <limits>
#include <vector>

Result<ElevationFacts> elevationFacts(const QImage &image, std::optional<int> voidSteps,
                                      Progress &progress)
{
    constexpr int None = std::numeric_limits<int>::min();
    const int missing = voidSteps.value_or(None);
    ElevationFacts facts{std::numeric_limits<int>::max(), None, 0};
    const PixelReader read(image);
    std::vector<QRgb> row(static_cast<std::size_t>(image.width()));
    for (int y = 0; y < image.height(); ++y) {
        if (y % 64 == 0 && !progress.step(y, image.height()))
            return stopped();
        read.readRow(y, row.data());
        for (const QRgb pixel : row) {
            const int steps = ElevationImage::stepsOf(pixel);
            if (steps == missing) {
                ++facts.voids;
                continue;
            }
            facts.lowest = std::min(facts.lowest, steps);
            facts.highest = std::max(facts.highest, steps);
        }
    }
    if (facts.lowest > facts.highest) // voids everywhere
        facts.lowest = facts.highest = missing == None ? 0 : missing;
    return facts;
}

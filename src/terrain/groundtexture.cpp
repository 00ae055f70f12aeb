#include "terrain/groundtexture.h"

#include "base/memorybudget.h"
#include "base/workerpool.h"
#include "terrain/colourfile.h"
#include "terrain/rowwork.h"
#include "terrain/scaledrows.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cmath>
#include <limits>
#include <mutex>

namespace {

constexpr int RowsOfPiece = 8;
constexpr int RowsOfSurvey = 64;

QRgb *pixelsOf(uchar *bits, qsizetype perLine, int y)
{
    return reinterpret_cast<QRgb *>(bits + y * perLine);
}

tl::unexpected<Failure> tooLarge(const QSize &size)
{
    return failed(
        QCoreApplication::translate(
            "Terrain", "There is not enough memory for a texture of %1 x %2 pixels.")
            .arg(size.width())
            .arg(size.height()));
}

void paintByRamp(const ColourRamp &ramp, const GroundRow &row, QRgb *pixels)
{
    std::size_t near = 0;
    for (int x = 0; x < row.width; ++x)
        pixels[x] = ramp.at(double(row.metres[x]), near);
}

// A pixel in whose middle lies a cell without a height.
void paintVoids(const FilledHeights &filled, const QSize &size, int y, QRgb colour,
                QRgb *pixels)
{
    const QSize cells = filled.heights.size;
    const qint64 row = qint64(y) * cells.height() / size.height();
    for (int x = 0; x < size.width(); ++x) {
        const qint64 column = qint64(x) * cells.width() / size.width();
        if (filled.isVoid[std::size_t(row * cells.width() + column)])
            pixels[x] = colour;
    }
}

QRgb colourOfVoids(const GroundPalette &palette)
{
    return qRgb(palette.ofVoids[0], palette.ofVoids[1], palette.ofVoids[2]);
}

unsigned int lit(unsigned int channel, float light)
{
    const float rounded = std::min(float(channel) * light, 255.0f) + 0.5f;
    return static_cast<unsigned int>(rounded);
}

void lightRow(const float *light, int width, QRgb *pixels)
{
    for (int x = 0; x < width; ++x) {
        const QRgb p = pixels[x];
        pixels[x] = 0xFF000000u | lit(p >> 16 & 0xFFu, light[x]) << 16 |
                    lit(p >> 8 & 0xFFu, light[x]) << 8 | lit(p & 0xFFu, light[x]);
    }
}

HeightSurvey surveyOf(const float *from, const float *end)
{
    constexpr float Beyond = std::numeric_limits<float>::infinity();
    HeightSurvey survey;
    float lowest = Beyond;
    float highest = -Beyond;
    for (const float *height = from; height != end; ++height) {
        // What is no number is neither lower nor higher.
        lowest = *height < lowest ? *height : lowest;
        highest = *height > highest ? *height : highest;
        survey.voids += std::isnan(*height) ? 1 : 0;
    }
    if (lowest <= highest)
        survey.range.emplace(lowest, highest);
    return survey;
}

} // namespace

Result<HeightSurvey> surveyHeights(const Heights &heights, WorkerPool &pool,
                                   const Stretch &stretch)
{
    HeightSurvey all;
    std::mutex mutex;
    const auto look = [&](int first, int last) {
        const float *const end = heights.row(last);
        const auto [range, voids] = surveyOf(heights.row(first), end);
        const std::lock_guard lock(mutex);
        all.voids += voids;
        if (!range)
            return;
        const auto known = all.range.value_or(*range);
        all.range.emplace(std::min(known.first, range->first),
                          std::max(known.second, range->second));
    };
    if (!workOnPieces(pool, heights.size.height(), RowsOfSurvey, stretch, look))
        return stopped();
    return all;
}

Result<FilledHeights> fillWithLowest(Heights heights, WorkerPool &pool,
                                     const Stretch &stretch)
{
    const Result<HeightSurvey> survey =
        surveyHeights(heights, pool, stretch.part(0.0, 0.5));
    if (!survey)
        return tl::unexpected(survey.error());
    FilledHeights filled;
    filled.heights = std::move(heights);
    filled.range = survey->range.value_or(std::pair{0.0f, 0.0f});
    filled.voids = survey->voids;
    if (filled.voids == 0)
        return filled;
    std::vector<float> &metres = filled.heights.metres;
    filled.isVoid.resize(metres.size());
    const auto width = std::size_t(filled.heights.size.width());
    // Pieces of 64 rows, for their bits are in words of their own.
    const auto fill = [&](int first, int last) {
        for (std::size_t i = std::size_t(first) * width; i < std::size_t(last) * width;
             ++i)
            if (std::isnan(metres[i])) {
                filled.isVoid[i] = true;
                metres[i] = filled.range.first;
            }
    };
    if (!workOnPieces(pool, filled.heights.size.height(), RowsOfSurvey,
                      stretch.part(0.5, 1.0), fill))
        return stopped();
    return filled;
}

Result<GroundColours> groundColours(const QString &nameOrFile)
{
    GroundColours colours;
    colours.palette = groundPalette(nameOrFile);
    if (colours.palette)
        return colours;
    if (!QFileInfo::exists(nameOrFile))
        return failed(
            QCoreApplication::translate(
                "Terrain", "\"%1\" is neither a palette (%2) nor a file of colours.")
                .arg(nameOrFile, groundPaletteNames().join(QStringLiteral(", "))));
    Result<ColourTable> table = readColourFile(nameOrFile);
    if (!table)
        return tl::unexpected(table.error());
    colours.table = std::move(*table);
    return colours;
}

Result<QImage> paintGround(const FilledHeights &filled, const Ground &ground,
                           const GroundColours &colours, const QSize &size,
                           WorkerPool &pool, const Stretch &stretch)
{
    QImage texture;
    if (fitsMemory(qint64(size.width()) * size.height() * 4))
        texture = QImage(size, QImage::Format_RGB32);
    if (texture.isNull())
        return tooLarge(size);
    uchar *const bits = texture.bits();
    const qsizetype perLine = texture.bytesPerLine();
    const bool isRamp = !colours.palette;
    std::optional<ColourRamp> ramp;
    if (isRamp)
        ramp.emplace(colours.table, filled.range);
    std::optional<GroundPlaces> places;
    if (!isRamp)
        places.emplace(filled, *colours.palette);
    const QRgb ofVoids = ramp ? ramp->ofVoids() : colourOfVoids(*colours.palette);
    const double cell = std::sqrt(ground.cellX * ground.cellY);
    const bool painted =
        workOnPieces(pool, size.height(), RowsOfPiece, stretch, [&](int first, int last) {
            ScaledGround rows(ground, size);
            std::optional<GroundPainter> painter;
            if (!isRamp)
                painter.emplace(*colours.palette, *places, filled.range.first, cell,
                                size.width());
            for (int y = first; y < last; ++y) {
                QRgb *const pixels = pixelsOf(bits, perLine, y);
                const GroundRow row = rows.row(y);
                if (painter)
                    painter->paint(y, row, pixels);
                else
                    paintByRamp(*ramp, row, pixels);
                if (!filled.isVoid.empty())
                    paintVoids(filled, size, y, ofVoids, pixels);
            }
        });
    if (!painted)
        return stopped();
    return texture;
}

void layOver(const QImage &picture, QImage &texture)
{
    for (int y = 0; y < texture.height(); ++y) {
        const auto *const above =
            reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        auto *const pixels = reinterpret_cast<QRgb *>(texture.scanLine(y));
        for (int x = 0; x < texture.width(); ++x) {
            const unsigned int share = qAlpha(above[x]);
            const auto mix = [share](int over, int under) {
                return (static_cast<unsigned int>(over) * share +
                        static_cast<unsigned int>(under) * (255u - share) + 127u) /
                       255u;
            };
            pixels[x] = 0xFF000000u | mix(qRed(above[x]), qRed(pixels[x])) << 16 |
                        mix(qGreen(above[x]), qGreen(pixels[x])) << 8 |
                        mix(qBlue(above[x]), qBlue(pixels[x]));
        }
    }
}

bool shadeTexture(QImage &texture, const LightMap &light, WorkerPool &pool,
                  const Stretch &stretch)
{
    uchar *const bits = texture.bits();
    const qsizetype perLine = texture.bytesPerLine();
    const QSize size = texture.size();
    const BetweenCells columns(size.width(), light.size.width());
    const BetweenCells rows(size.height(), light.size.height());
    return workOnPieces(
        pool, size.height(), RowsOfPiece, stretch, [&](int first, int last) {
            std::vector<float> mixed(std::size_t(size.width()));
            for (int y = first; y < last; ++y) {
                const BetweenCells::Place &place = rows.at(y);
                const float *row = light.row(place.first);
                if (size != light.size) {
                    columns.mix(row, light.row(place.second), place.share, mixed.data());
                    row = mixed.data();
                }
                lightRow(row, size.width(), pixelsOf(bits, perLine, y));
            }
        });
}

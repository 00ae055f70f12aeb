#include "geodata/holes.h"

#include "geodata/gdalruntime.h"

#include <QObject>
#include <QRect>

#include <cpl_string.h>
#include <gdal_alg.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <new>

namespace {

constexpr qint64 Steps = 1000;
// Cells that are looked at between two looks at the progress.
constexpr std::size_t CellsAtATime = std::size_t(1) << 20U;

// Which cells are known, and which voids are open: from them a way leads to the edge.
class HoleMap {
public:
    explicit HoleMap(const Heights &heights)
        : m_size(heights.size), m_width(std::size_t(heights.size.width())),
          m_known(heights.metres.size()), m_open(heights.metres.size(), false)
    {
    }
    /// How many are void.
    [[nodiscard]] Result<qint64> read(const Heights &heights, Progress &progress)
    {
        qint64 voids = 0;
        for (std::size_t i = 0; i < m_known.size(); ++i) {
            if (i % CellsAtATime == 0 && !progress.step(0, Steps))
                return stopped();
            const bool isVoid = std::isnan(heights.metres[i]);
            m_known[i] = isVoid ? 0 : 255;
            voids += isVoid ? 1 : 0;
        }
        return voids;
    }
    [[nodiscard]] Result<bool> openFromEdges(Progress &progress)
    {
        const std::size_t last = m_known.size() - m_width;
        for (std::size_t x = 0; x < m_width; ++x) {
            reach(x);
            reach(last + x);
        }
        for (std::size_t row = 0; row <= last; row += m_width) {
            reach(row);
            reach(row + m_width - 1);
        }
        for (std::size_t steps = 1; !m_reached.empty(); ++steps) {
            if (steps % CellsAtATime == 0 && !progress.step(0, Steps))
                return stopped();
            const std::size_t at = m_reached.back();
            m_reached.pop_back();
            reachNeighbours(at);
        }
        return true;
    }
    /// The smallest part that holds all holes; empty where there are none.
    [[nodiscard]] Result<QRect> holes(Progress &progress) const
    {
        constexpr int RowsAtATime = 64;
        QRect all;
        for (int y = 0; y < m_size.height(); ++y) {
            if (y % RowsAtATime == 0 && !progress.step(0, Steps))
                return stopped();
            int first = -1;
            int last = -1;
            for (int x = 0; x < m_size.width(); ++x) {
                const std::size_t at = std::size_t(y) * m_width + std::size_t(x);
                if (m_known[at] != 0 || m_open[at])
                    continue;
                first = first < 0 ? x : first;
                last = x;
            }
            if (first >= 0)
                all |= QRect(QPoint(first, y), QPoint(last, y));
        }
        return all;
    }
    [[nodiscard]] bool isOpen(std::size_t at) const { return m_open[at]; }
    /// 0 for voids.
    [[nodiscard]] std::uint8_t *known() { return m_known.data(); }

private:
    void reach(std::size_t at)
    {
        if (m_known[at] != 0 || m_open[at])
            return;
        m_open[at] = true;
        m_reached.push_back(at);
    }
    void reachNeighbours(std::size_t at)
    {
        const std::size_t x = at % m_width;
        if (x > 0)
            reach(at - 1);
        if (x + 1 < m_width)
            reach(at + 1);
        if (at >= m_width)
            reach(at - m_width);
        if (at + m_width < m_known.size())
            reach(at + m_width);
    }

    QSize m_size;
    std::size_t m_width;
    std::vector<std::uint8_t> m_known;
    std::vector<bool> m_open;
    std::vector<std::size_t> m_reached; // whose neighbours were not looked at yet
};

// A dataset over a part of memory that somebody else owns.
Dataset overMemory(void *memory, const QSize &whole, const QRect &part, GDALDataType type)
{
    const int cell = GDALGetDataTypeSizeBytes(type);
    const qint64 row = qint64(whole.width()) * cell;
    const QByteArray name =
        QStringLiteral(
            "MEM:::DATAPOINTER=%1,PIXELS=%2,LINES=%3,DATATYPE=%4,LINEOFFSET=%5")
            .arg(reinterpret_cast<quintptr>(memory) +
                 quintptr(part.y() * row + qint64(part.x()) * cell))
            .arg(part.width())
            .arg(part.height())
            .arg(QString::fromUtf8(GDALGetDataTypeName(type)))
            .arg(row)
            .toUtf8();
    return Dataset(GDALOpenEx(name.constData(), GDAL_OF_RASTER | GDAL_OF_UPDATE, nullptr,
                              nullptr, nullptr));
}

Result<bool> interpolate(Heights &heights, HoleMap &map, const QRect &part, double cells,
                         Progress &progress)
{
    const GdalMessages messages;
    const Dataset values =
        overMemory(heights.metres.data(), heights.size, part, GDT_Float32);
    const Dataset known = overMemory(map.known(), heights.size, part, GDT_Byte);
    if (!values || !known)
        return failed(QObject::tr("There is not enough memory to fill voids."));
    CPLStringList options;
    options.SetNameValue("TEMP_FILE_DRIVER", "MEM");
    GdalProgress watched(progress, 0, Steps, Steps);
    const CPLErr result = GDALFillNodata(GDALGetRasterBand(values.get(), 1),
                                         GDALGetRasterBand(known.get(), 1), cells, 0, 0,
                                         options.List(), GdalProgress::step, &watched);
    if (watched.stopped())
        return stopped();
    if (result != CE_None)
        return failed(QObject::tr("Could not fill voids: %1.")
                          .arg(messages.reason(QObject::tr("GDAL refuses"))));
    GDALFlushCache(values.get());
    return true;
}

// Voids that lie open stay; how many there are.
Result<qint64> clearOpen(Heights &heights, const HoleMap &map, Progress &progress)
{
    qint64 voids = 0;
    for (std::size_t i = 0; i < heights.metres.size(); ++i) {
        if (i % CellsAtATime == 0 && !progress.step(Steps, Steps))
            return stopped();
        if (map.isOpen(i))
            heights.metres[i] = std::numeric_limits<float>::quiet_NaN();
        voids += std::isnan(heights.metres[i]) ? 1 : 0;
    }
    return voids;
}

Result<qint64> fillInMemory(Heights &heights, double cells, Progress &progress)
{
    if (!(cells > 0.0))
        return qint64(0);
    HoleMap map(heights);
    const Result<qint64> before = map.read(heights, progress);
    if (!before || *before == 0)
        return before;
    Result<bool> opened = map.openFromEdges(progress);
    if (!opened)
        return tl::unexpected(opened.error());
    const Result<QRect> holes = map.holes(progress);
    if (!holes)
        return tl::unexpected(holes.error());
    if (holes->isEmpty())
        return qint64(0);
    // Cells further away have no say.
    const int reach = static_cast<int>(std::min(std::ceil(cells) + 1.0, 1e6));
    const QRect part =
        holes->adjusted(-reach, -reach, reach, reach) & QRect(QPoint(), heights.size);
    Result<bool> done = interpolate(heights, map, part, cells, progress);
    if (!done)
        return tl::unexpected(done.error());
    const Result<qint64> after = clearOpen(heights, map, progress);
    if (!after)
        return after;
    return *before - *after;
}

} // namespace

Result<qint64> fillHoles(Heights &heights, double cells, Progress &progress)
{
    try {
        return fillInMemory(heights, cells, progress);
    } catch (const std::bad_alloc &) {
        return failed(QObject::tr("There is not enough memory to fill voids."));
    }
}

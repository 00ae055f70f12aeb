#include "terrain/points.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

// Text of points, as a grid or as triangles. A failure without a text is a fault too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // More points than these take their time for triangles, not for the text.
    constexpr std::size_t MostBytes = 1 << 14;
    const QByteArray bytes(reinterpret_cast<const char *>(data),
                           qsizetype(std::min(size, MostBytes)));
    const OpenText open =
        [&bytes](const QString &) -> Result<std::unique_ptr<QIODevice>> {
        auto device = std::make_unique<QBuffer>();
        device->setData(bytes);
        (void)device->open(QIODevice::ReadOnly);
        return device;
    };
    NoProgress unwatched;
    for (const PointSurface surface : {PointSurface::Auto, PointSurface::Triangles}) {
        PointOptions options;
        options.surface = surface;
        const auto sheets =
            readPointFiles({QStringLiteral("p")}, options, unwatched, open);
        if (!sheets && sheets.error().text.isEmpty())
            std::abort();
    }
    return 0;
}

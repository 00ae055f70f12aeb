#include "importers/asciiirregular.h"
#include "importers/asciiregular.h"
#include "raster/elevationimage.h"

#include <QBuffer>

#include <cstdint>

namespace {

constexpr int Side = 32;
// Triangulating more points than these takes the time from reading.
constexpr int PointEstimate = 60;

void readRegular(QIODevice &in, const MeshBoundaries &boundaries)
{
    AsciiRegularOptions options;
    options.boundaries = boundaries;
    options.width = options.height = Side;
    options.zScale = 256.0;
    NoProgress unwatched;
    (void)convertAsciiRegular(in, options, unwatched);
}

void readIrregular(QIODevice &in, const MeshBoundaries &boundaries)
{
    AsciiIrregularOptions options;
    options.boundaries = boundaries;
    options.width = options.height = Side;
    options.nodalPointEstimate = PointEstimate;
    NoProgress unwatched;
    Result<ScatteredMesh> mesh = readScatteredPoints(in, options, unwatched);
    if (mesh && mesh->scattered.count > 0)
        (void)fillScatteredPoints(mesh->scattered, options, unwatched);
}

} // namespace

// The same text as a regular and as an irregular mesh.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer in(&bytes);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    MeshBoundaries boundaries;
    NoProgress unwatched;
    const MeshScan scan = scanTextMesh(in, 0, boundaries, unwatched).value_or(MeshScan());
    (void)zeroTripleWarnings(scan, 0);
    in.seek(0);
    readRegular(in, boundaries);
    in.seek(0);
    readIrregular(in, boundaries);
    return 0;
}

#include "importers/asciiirregular.h"

#include "importers/scantriangles.h"
#include "importers/xyzreader.h"
#include "raster/elevationimage.h"

namespace {

constexpr unsigned ZeroElevation = 0xFF000000u;
constexpr int EnclosingCorners = 3;

// Stores the point of a line unless it lies outside the boundaries, where a
// division by an extent of 0 puts it too.
void storePoint(const XyzReader::Line &line, const AsciiIrregularOptions &options,
                ScatteredPoints &out)
{
    const MeshBoundaries &b = options.boundaries;
    const double width = options.width;
    const double height = options.height;
    const double u = ((line.x - b.minX) * width) / (b.maxX - b.minX);
    if (!(0 <= u && u <= width))
        return;
    const double v = ((line.y - b.minY) * height) / (b.maxY - b.minY);
    if (!(0 <= v && v <= height))
        return;
    double *const point = out.points.rows[out.count];
    point[0] = u;
    point[1] = (height - v) - 1;
    out.z.data[out.count] = line.z * options.zScale;
    ++out.count;
}

} // namespace

bool ScatteredPoints::allocate(int estimate)
{
    count = 0;
    return points.Allocate(estimate + EnclosingCorners, 2) && z.Allocate(estimate);
}

bool readScatteredPoints(QIODevice &in, const AsciiIrregularOptions &options,
                         ScatteredPoints &out, QStringList *rows)
{
    XyzReader reader(in);
    for (int i = 0; i < options.skip; ++i)
        reader.skipLine();
    MeshMessages messages(options.skip);
    for (; !reader.atEnd(); messages.endLine()) {
        if (out.count >= options.nodalPointEstimate) {
            messages.addLimited(AsciiMesh::tr("Number of nodal points exceeded."));
            messages.closeIfFull();
            break;
        }
        const XyzReader::Line line = reader.readLine();
        if (line.empty)
            continue;
        if (line.items < 3)
            messages.addShortLine(line.items);
        else
            storePoint(line, options, out);
    }
    if (out.count == 0)
        messages.add(AsciiMesh::tr("Not a single valid line encountered."));
    *rows = messages.rows();
    return out.count > 0;
}

int fillScatteredPoints(ScatteredPoints &scattered, const AsciiIrregularOptions &options,
                        ElevationImage &image, const DelaunayNotice &notice)
{
    CIntMatrix triangles;
    std::int32_t numTriangles = 0;
    std::int32_t maxSimplices = 0;
    std::int32_t maxUsed = 0;
    const int code = Delaunay(&scattered.points, scattered.count, &triangles,
                              &numTriangles, 2, &maxSimplices, &maxUsed, notice);
    if (code != 0)
        return code;
    image = ElevationImage(options.width, options.height, QImage::Format_RGB888);
    image.clear(ZeroElevation);
    ScanTriangles(&scattered.points, &scattered.z, &triangles, numTriangles, &image);
    return 0;
}

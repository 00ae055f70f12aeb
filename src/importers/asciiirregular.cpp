#include "importers/asciiirregular.h"

#include "importers/scantriangles.h"
#include "importers/xyzreader.h"

#include <QCoreApplication>
#include <QIODevice>

namespace {

constexpr unsigned ZeroElevation = 0xFF000000u;
constexpr int EnclosingCorners = 3;

QString tr(const char *text)
{
    return QCoreApplication::translate("AsciiIrregularDialog", text);
}

// Stores the point of a line unless it lies outside the boundaries, where a
// division by an extent of 0 puts it too; false then.
bool storePoint(const XyzReader::Line &line, const AsciiIrregularOptions &options,
                ScatteredPoints &out)
{
    const MeshBoundaries &b = options.boundaries;
    const double width = options.width;
    const double height = options.height;
    const double u = ((line.x - b.minX) * width) / (b.maxX - b.minX);
    if (!(0 <= u && u <= width))
        return false;
    const double v = ((line.y - b.minY) * height) / (b.maxY - b.minY);
    if (!(0 <= v && v <= height))
        return false;
    double *const point = out.points.rows[out.count];
    point[0] = u;
    point[1] = (height - v) - 1;
    out.z.data[out.count] = line.z * options.zScale;
    ++out.count;
    return true;
}

} // namespace

bool ScatteredPoints::allocate(int estimate)
{
    count = 0;
    return points.Allocate(estimate + EnclosingCorners, 2) && z.Allocate(estimate);
}

Result<ScatteredMesh> readScatteredPoints(QIODevice &in,
                                          const AsciiIrregularOptions &options,
                                          Progress &progress)
{
    ScatteredMesh mesh;
    if (!mesh.scattered.allocate(options.nodalPointEstimate))
        return failed(tr("There is not enough memory for %1 nodal points.")
                          .arg(options.nodalPointEstimate));
    XyzReader reader(in);
    for (int i = 0; i < options.skip; ++i)
        reader.skipLine();
    MeshMessages messages(options.skip);
    LineProgress lines(in, progress);
    for (; !reader.atEnd(); messages.endLine()) {
        if (!lines.nextLine())
            return stopped();
        if (mesh.scattered.count >= options.nodalPointEstimate) {
            messages.addLimited(AsciiMesh::tr("Number of nodal points exceeded."));
            messages.closeIfFull();
            break;
        }
        const XyzReader::Line line = reader.readLine();
        if (line.empty)
            continue;
        if (line.items < 3) {
            messages.addShortLine(line.items);
            continue;
        }
        ++mesh.pointsRead;
        if (storePoint(line, options, mesh.scattered))
            mesh.losses.countHeight(line.z * options.zScale);
    }
    if (mesh.scattered.count == 0)
        messages.add(AsciiMesh::tr("Not a single valid line encountered."));
    mesh.rows = messages.rows();
    return mesh;
}

DelaunayResult<ElevationImage> fillScatteredPoints(ScatteredPoints &scattered,
                                                   const AsciiIrregularOptions &options,
                                                   Progress &progress)
{
    DelaunayResult<DelaunayTriangles> triangles =
        Delaunay(scattered.points, scattered.count, 2, progress);
    if (!triangles)
        return tl::unexpected(triangles.error());
    ElevationImage image(options.width, options.height, QImage::Format_RGB888);
    image.clear(ZeroElevation);
    ScanTriangles(&scattered.points, &scattered.z, &triangles->corners, triangles->count,
                  &image);
    return image;
}

QStringList irregularScanRows(const MeshScan &scan, int skip)
{
    QStringList rows;
    if (scan.lineCounter == 0)
        rows << AsciiMesh::tr("Not a single valid line encountered.");
    return rows << zeroTripleWarnings(scan, skip);
}

QString triangulationFailedText(int code)
{
    return tr("The triangulation routine\nreturned an error code: %1.").arg(code);
}

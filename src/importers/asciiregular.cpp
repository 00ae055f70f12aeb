#include "importers/asciiregular.h"

#include "importers/xyzreader.h"

#include <QIODevice>

#include <algorithm>

namespace {

constexpr unsigned ZeroElevation = 0xFF000000u;

} // namespace

int proposedSide(double lowestCoordinate, double highestCoordinate, int highest)
{
    const double side = (highestCoordinate - lowestCoordinate) + 1 + 0.5;
    // An empty file leaves boundaries that differ by more than an int holds.
    return side >= 1.0 ? static_cast<int>(std::min(side, double(highest))) : 1;
}

Result<AsciiRegularMesh>
convertAsciiRegular(QIODevice &in, const AsciiRegularOptions &options, Progress &progress)
{
    AsciiRegularMesh mesh;
    const MeshBoundaries &b = options.boundaries;
    const double width = options.width;
    const double height = options.height;
    mesh.image = ElevationImage(options.width, options.height, QImage::Format_RGB888);
    mesh.image.clear(ZeroElevation);

    XyzReader reader(in);
    for (int i = 0; i < options.skip; ++i)
        reader.skipLine();
    MeshMessages messages(options.skip);
    LineProgress lines(in, progress);
    for (; !reader.atEnd(); messages.endLine()) {
        if (!lines.nextLine())
            return stopped();
        const XyzReader::Line line = reader.readLine();
        if (line.empty)
            continue;
        if (line.items < 3) {
            messages.addShortLine(line.items);
            continue;
        }
        ++mesh.pointsRead;
        const double u = ((line.x - b.minX) * width) / ((b.maxX - b.minX) + 1);
        if (!(0 <= u && u <= width))
            continue;
        const double v = ((line.y - b.minY) * height) / ((b.maxY - b.minY) + 1);
        if (!(0 <= v && v <= height))
            continue;
        // Truncated toward zero, which keeps the half row above the image in row 0.
        const double column = u + 0.5;
        const double row = ((height - v) - 1) + 0.5;
        const double elevation = line.z * options.zScale;
        mesh.image.setElevation(static_cast<int>(column), static_cast<int>(row),
                                elevation);
        mesh.losses.countHeight(elevation);
        ++mesh.pointsUsed; // also where u = width put it beside the image
    }
    mesh.hasPoints = mesh.pointsUsed > 0;
    if (!mesh.hasPoints) {
        messages.add(AsciiMesh::tr("Not a single valid line encountered."));
        messages.add(AsciiMesh::tr("No output file was written."));
    }
    mesh.rows = messages.rows();
    return mesh;
}

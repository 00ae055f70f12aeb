#include "render/plain/terrainsweep.h"

#include "base/truncate.h"
#include "base/vectormath.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"
#include "render/plain/screentrigon.h"
#include "render/plain/transformation.h"

#include <algorithm>
#include <cmath>

namespace plain {

namespace {

// Keeps the observer from falling on a mesh line.
constexpr double ObserverOffset = 8e-05;
// Beyond this many dust ranges a cell is not drawn at all.
constexpr double FarthestRange = 7.0;

// Mesh steps of the stencil's points from the lower left corner of the cell.
constexpr std::array<std::array<int, 2>, 12> StencilSteps{{
    {0, -1},
    {1, -1}, // 0, 1
    {-1, 0},
    {0, 0},
    {1, 0},
    {2, 0}, // 2 to 5
    {-1, 1},
    {0, 1},
    {1, 1},
    {2, 1}, // 6 to 9
    {0, 2},
    {1, 2}, // 10, 11
}};

// The points at which the four normals stand, and their neighbours.
struct NormalPoints {
    int centre, south, east, north, west;
};
constexpr std::array<NormalPoints, 4> NormalStencil{{
    {3, 0, 4, 7, 2},
    {4, 1, 5, 8, 3},
    {7, 3, 8, 10, 6},
    {8, 4, 9, 11, 7},
}};

} // namespace

TerrainSweep::TerrainSweep() = default;
TerrainSweep::~TerrainSweep() = default;

void TerrainSweep::Scan(TextureImage *texture, bool useBackground,
                        unsigned int background, int quality)
{
    paintBackground(useBackground, background);
    activeTrigon = std::make_unique<ScreenTrigon>(renderTarget, texture, 0, 0,
                                                  renderWidth, renderHeight, Licht,
                                                  activeTransformation, quality);
    sweepObserver = activeTransformation->Beobachter();
    sweepObserver.x += ObserverOffset;
    sweepObserver.y += ObserverOffset;
    ClipView();
    stepX = terrainX / meshCellsX;
    stepY = terrainY / meshCellsY;
    if (meshIsWalkable()) {
        setLimits();
        RoundTheLimits();
        ScanQuadrant0();
        ScanQuadrant1();
        ScanQuadrant2();
        ScanQuadrant3();
        ScanBoundary01();
        ScanBoundary12();
        ScanBoundary23();
        ScanBoundary30();
    }
    activeTrigon.reset();
}

void TerrainSweep::paintBackground(bool useBackground, unsigned int background)
{
    if (!useBackground) {
        // The colour of a white flat landscape in the current light.
        const double v =
            std::abs(Licht.x * 0 + Licht.y * 0 + Licht.z + Licht.w * 0) * 256.0;
        const int grey = truncatedOrLowest(v < 0.0 ? 0.0 : v > 255.0 ? 255.0 : v);
        background = qRgb(grey, grey, grey);
    }
    renderTarget->fill(background);
}

bool TerrainSweep::meshIsWalkable() const
{
    // A terrain without extent has no cells, and a step of nothing never ends.
    return std::isfinite(stepX) && std::isfinite(stepY) && stepX > 0.0 && stepY > 0.0;
}

void TerrainSweep::ClipView()
{
    footMinX = terrainX;
    footMinY = terrainY;
    footMaxX = 0.0;
    footMaxY = 0.0;

    C4Vector ground[3] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}};
    ClipBottomView(ground);
    C4Vector west[3] = {{0, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
    ClipSideView(west);
    C4Vector south[3] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {0, 0, 1, 1}};
    ClipSideView(south);
    C4Vector east[3] = {{terrainX, 0, 0, 1}, {terrainX, 1, 0, 1}, {terrainX, 0, 1, 1}};
    ClipSideView(east);
    C4Vector north[3] = {{0, terrainY, 0, 1}, {1, terrainY, 0, 1}, {0, terrainY, 1, 1}};
    ClipSideView(north);

    Clip(sweepObserver);
    if (footMinX < 0.0)
        footMinX = 0.0;
    if (footMinY < 0.0)
        footMinY = 0.0;
    if (footMaxX > terrainX)
        footMaxX = terrainX;
    if (footMaxY > terrainY)
        footMaxY = terrainY;
}

void TerrainSweep::ClipBottomView(C4Vector *plane)
{
    const int corners[4][2] = {
        {0, renderHeight}, {renderWidth, renderHeight}, {renderWidth, 0}, {0, 0}};
    for (const auto &[x, y] : corners) {
        C4Vector point;
        if (activeTransformation->PunktImDreieck(x, y, plane, &point) > 0.0)
            Clip(point);
    }
}

void TerrainSweep::ClipSideView(C4Vector *plane)
{
    const int corners[4][2] = {
        {0, renderHeight}, {renderWidth, renderHeight}, {renderWidth, 0}, {0, 0}};
    for (const auto &[x, y] : corners) {
        C4Vector point;
        const double t = activeTransformation->PunktImDreieck(x, y, plane, &point);
        if (t > 0.0 && point.z > 0.0)
            Clip(point);
    }
}

void TerrainSweep::Clip(C4Vector &point)
{
    if (point.x < footMinX)
        footMinX = point.x;
    if (point.x > footMaxX)
        footMaxX = point.x;
    if (point.y < footMinY)
        footMinY = point.y;
    if (point.y > footMaxY)
        footMaxY = point.y;
}

void TerrainSweep::AllesBerechnen()
{
    for (int k = 0; k < 12; ++k)
        place(k, StencilSteps[k][0], StencilSteps[k][1]);
    for (int corner = 0; corner < 4; ++corner)
        computeNormal(corner);
    rowRestart = false;
}

void TerrainSweep::TeilPlusBerechnen()
{
    std::copy(stencil.begin() + 1, stencil.end(), stencil.begin());
    for (const int k : {1, 5, 9, 11})
        place(k, StencilSteps[k][0], StencilSteps[k][1]);
    cornerNormal[0] = cornerNormal[1];
    cornerNormal[2] = cornerNormal[3];
    computeNormal(1);
    computeNormal(3);
}

void TerrainSweep::TeilMinusBerechnen()
{
    std::copy_backward(stencil.begin(), stencil.end() - 1, stencil.end());
    for (const int k : {0, 2, 6, 10})
        place(k, StencilSteps[k][0], StencilSteps[k][1]);
    cornerNormal[1] = cornerNormal[0];
    cornerNormal[3] = cornerNormal[2];
    computeNormal(0);
    computeNormal(2);
}

void TerrainSweep::place(int point, int columns, int rows)
{
    C4Vector &p = stencil[point];
    p = {meshX + columns * stepX, meshY + rows * stepY, 0.0, 1.0};
    renderElevation->Z(p);
}

void TerrainSweep::computeNormal(int corner)
{
    const NormalPoints &points = NormalStencil[corner];
    const C4Vector &centre = stencil[points.centre];
    const C4Vector s = difference(stencil[points.south], centre);
    const C4Vector e = difference(stencil[points.east], centre);
    const C4Vector n = difference(stencil[points.north], centre);
    const C4Vector w = difference(stencil[points.west], centre);
    const C4Vector se = cross(s, e);
    const C4Vector en = cross(e, n);
    const C4Vector nw = cross(n, w);
    const C4Vector ws = cross(w, s);
    cornerNormal[corner] = normalized({0.25 * (se.x + en.x + nw.x + ws.x),
                                       0.25 * (se.y + en.y + nw.y + ws.y),
                                       0.25 * (se.z + en.z + nw.z + ws.z), 1.0});
}

void TerrainSweep::drawCell(First first)
{
    const double d = length(difference(sweepObserver, stencil[3])) / dustRange;
    if (d >= FarthestRange)
        return;
    const double fog = 1 - std::exp(-d);
    const auto drawNorthWest = [&] { drawTriangle({3, 7, 8}, {0, 2, 3}, fog); };
    const auto drawSouthEast = [&] { drawTriangle({3, 8, 4}, {0, 3, 1}, fog); };
    if (first == First::NorthWest) {
        drawNorthWest();
        drawSouthEast();
    } else {
        drawSouthEast();
        drawNorthWest();
    }
}

void TerrainSweep::drawTriangle(const std::array<int, 3> &points,
                                const std::array<int, 3> &normals, double fog)
{
    for (int k = 0; k < 3; ++k) {
        triangleVertices[k] = stencil[points[k]];
        triangleNormals[k] = cornerNormal[normals[k]];
    }
    activeTransformation->ZeichneEinDreieck(
        triangleVertices.data(), triangleNormals.data(), fog, activeTrigon.get());
}

} // namespace plain

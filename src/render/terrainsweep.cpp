#include "render/terrainsweep.h"

#include "base/truncate.h"
#include "base/workerpool.h"
#include "raster/textureimage.h"
#include "render/meshframe.h"
#include "render/transformation.h"

#include <algorithm>
#include <cmath>
#include <thread>

namespace {

// Keeps the observer from falling on a mesh line.
constexpr double ObserverOffset = 8e-05;
// More threads than this find no work in a frame.
constexpr int MostThreads = 64;

int threadsOrAll(int threads)
{
    const int cores = std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
    return std::clamp(threads > 0 ? threads : cores, 1, MostThreads);
}

} // namespace

TerrainSweep::TerrainSweep() = default;
TerrainSweep::~TerrainSweep() = default;

void TerrainSweep::Scan(TextureImage *texture, bool useBackground,
                        unsigned int background, int quality)
{
    paintBackground(useBackground, background);
    sweepObserver = activeTransformation->Beobachter();
    sweepObserver.x += ObserverOffset;
    sweepObserver.y += ObserverOffset;
    ClipView();
    stepX = terrainX / meshCellsX;
    stepY = terrainY / meshCellsY;
    if (meshIsWalkable()) {
        setLimits();
        RoundTheLimits();
        beginFrame(texture, quality);
        ScanQuadrant0();
        ScanQuadrant1();
        ScanQuadrant2();
        ScanQuadrant3();
        ScanBoundary01();
        ScanBoundary12();
        ScanBoundary23();
        ScanBoundary30();
        m_frame->resolve();
        m_drawing = false;
    }
}

void TerrainSweep::beginFrame(const TextureImage *texture, int quality)
{
    const int wanted = threadsOrAll(threads);
    if (!m_workers || m_threadsWanted != wanted) {
        m_frame.reset();
        m_workers = std::make_unique<WorkerPool>(wanted);
        m_frame = std::make_unique<MeshFrame>(*m_workers);
        m_threadsWanted = wanted;
    }
    FrameSetup setup;
    setup.target = renderTarget;
    setup.texture = texture;
    setup.elevation = renderElevation;
    setup.camera = activeTransformation;
    setup.light = Licht;
    setup.observer = sweepObserver;
    setup.dustRange = dustRange;
    setup.stepY = stepY;
    setup.quality = quality;
    setup.coresTaken = coresTaken;
    const double most = terrainX / stepX + 2;
    setup.mostCells = most < 65536.0 ? static_cast<int>(most) : 65536;
    m_frame->begin(setup);
    m_drawing = true;
}

void TerrainSweep::showable()
{
    if (m_drawing)
        m_frame->resolve();
}

void TerrainSweep::endOfRun()
{
    m_drawing = false; // the frame may have been given up in its midst
    m_frame.reset();
    m_workers.reset();
}

void TerrainSweep::paintBackground(bool useBackground, unsigned int background)
{
    if (!useBackground) {
        // The colour of a white flat landscape in the current light.
        const double v = std::abs(Licht.z) * 256.0;
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

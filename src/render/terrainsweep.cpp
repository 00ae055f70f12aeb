#include "render/terrainsweep.h"

#include "base/framecamera.h"
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

void TerrainSweep::renderFrame(const FrameSetup &setup, const FrameCamera &camera,
                               Progress &progress)
{
    m_setup = &setup;
    m_progress = &progress;
    m_camera.emplace(*setup.view);
    m_camera->SetView(camera.position, camera.direction, camera.pitch, camera.focal,
                      camera.roll);
    m_elevation = *setup.elevation; // shares its pixels
    m_elevation.setZScale(camera.zScale);
    m_dustRange = camera.dustRange;
    Scan();
}

void TerrainSweep::Scan()
{
    paintBackground();
    m_limits = SweepLimits();
    m_limits.observer = m_camera->Beobachter();
    m_limits.observer.x += ObserverOffset;
    m_limits.observer.y += ObserverOffset;
    ClipView();
    m_limits.stepX = m_setup->terrainX / m_setup->meshCellsX;
    m_limits.stepY = m_setup->terrainY / m_setup->meshCellsY;
    if (m_limits.meshIsWalkable()) {
        m_limits.setLimits();
        m_limits.RoundTheLimits();
        beginFrame();
        planWalks();
        walkAll();
        m_frame->resolve();
        m_drawing = false;
    }
}

void TerrainSweep::beginFrame()
{
    const int wanted = threadsOrAll(m_setup->threads);
    if (!m_workers || m_threadsWanted != wanted) {
        m_frame.reset();
        m_workers = std::make_unique<WorkerPool>(wanted);
        m_frame = std::make_unique<MeshFrame>(*m_workers);
        m_threadsWanted = wanted;
    }
    MeshSetup mesh;
    mesh.target = m_setup->target;
    mesh.texture = m_setup->texture;
    mesh.elevation = &m_elevation;
    mesh.camera = &*m_camera;
    mesh.heights = heights();
    mesh.light = m_setup->light;
    mesh.observer = m_limits.observer;
    mesh.dustRange = m_dustRange;
    mesh.stepY = m_limits.stepY;
    mesh.quality = m_setup->quality;
    mesh.nearFirst = m_setup->seenWholeOnly;
    mesh.coresTaken = m_setup->coresTaken;
    const double most = m_setup->terrainX / m_limits.stepX + 2;
    mesh.mostCells = most < 65536.0 ? static_cast<int>(most) : 65536;
    m_frame->begin(mesh);
    m_drawing = true;
}

// The height around the terrain is 0.
std::pair<double, double> TerrainSweep::heights()
{
    if (m_measured != m_elevation.cacheKey()) {
        m_stepsRange = m_elevation.stepsRange();
        m_measured = m_elevation.cacheKey();
    }
    const double zScale = m_elevation.zScale();
    const double lowest = m_stepsRange.first * zScale;
    const double highest = m_stepsRange.second * zScale;
    return {std::min({lowest, highest, 0.0}), std::max({lowest, highest, 0.0})};
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

void TerrainSweep::paintBackground() const
{
    QRgb background = m_setup->background;
    if (!m_setup->useBackground) {
        // The colour of a white flat landscape in the current light.
        const double v = std::abs(m_setup->light.z) * 256.0;
        const int grey = truncatedOrLowest(v < 0.0 ? 0.0 : v > 255.0 ? 255.0 : v);
        background = qRgb(grey, grey, grey);
    }
    m_setup->target->fill(background);
}

void TerrainSweep::ClipView()
{
    const double terrainX = m_setup->terrainX;
    const double terrainY = m_setup->terrainY;
    m_limits.footMinX = terrainX;
    m_limits.footMinY = terrainY;
    m_limits.footMaxX = 0.0;
    m_limits.footMaxY = 0.0;

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

    m_limits.Clip(m_limits.observer);
    if (m_limits.footMinX < 0.0)
        m_limits.footMinX = 0.0;
    if (m_limits.footMinY < 0.0)
        m_limits.footMinY = 0.0;
    if (m_limits.footMaxX > terrainX)
        m_limits.footMaxX = terrainX;
    if (m_limits.footMaxY > terrainY)
        m_limits.footMaxY = terrainY;
}

void TerrainSweep::ClipBottomView(C4Vector *plane)
{
    const int renderWidth = m_setup->target->width();
    const int renderHeight = m_setup->target->height();
    const int corners[4][2] = {
        {0, renderHeight}, {renderWidth, renderHeight}, {renderWidth, 0}, {0, 0}};
    for (const auto &[x, y] : corners) {
        C4Vector point;
        if (m_camera->PunktImDreieck(x, y, plane, &point) > 0.0)
            m_limits.Clip(point);
    }
}

void TerrainSweep::ClipSideView(C4Vector *plane)
{
    const int renderWidth = m_setup->target->width();
    const int renderHeight = m_setup->target->height();
    const int corners[4][2] = {
        {0, renderHeight}, {renderWidth, renderHeight}, {renderWidth, 0}, {0, 0}};
    for (const auto &[x, y] : corners) {
        C4Vector point;
        const double t = m_camera->PunktImDreieck(x, y, plane, &point);
        if (t > 0.0 && point.z > 0.0)
            m_limits.Clip(point);
    }
}

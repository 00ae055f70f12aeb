// The camera that sees nothing but ground.

#include "base/progress.h"
#include "live/flyer.h"
#include "live/liveframe.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"

#include <algorithm>

namespace {

// Stands for what is no ground. Ground is drawn white, which light and dust leave without
// a tint, and this keeps its own: the terrain has walls of it around, which are lit.
constexpr QRgb NoGround = 0xFFFF00FFu;
constexpr LiveLevel Glance{0.25, 0.5};
constexpr int MostSteps = 60;
constexpr double NearerAStep = 0.08; // of the way to the middle of the terrain
constexpr double DownAStep = 2.5;    // degrees
constexpr double Steepest = -90.0;
// Above the ground at least so many cells of the mesh: cells that reach behind the camera
// are not drawn.
constexpr double LeastHeight = 5.0;

struct Seen {
    bool sky = false;  // at the upper edge
    bool edge = false; // elsewhere
};

Seen lookFor(const QImage &image)
{
    Seen seen;
    for (int y = 0; y < image.height(); ++y) {
        const auto *const row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        const bool any = std::any_of(row, row + image.width(), [](QRgb pixel) {
            return qRed(pixel) != qGreen(pixel);
        });
        (y < image.height() / 4 ? seen.sky : seen.edge) |= any;
    }
    return seen;
}

} // namespace

void LiveFrame::settle(TerrainSweep &sweep, int threads, Progress &progress)
{
    if (!m_request.fill || !m_request.camera || !canBeDrawn())
        return;
    fillPicture(sweep, threads, progress);
    m_request.camera = Flyer::onSteps(*m_request.camera);
    m_camera = *m_request.camera;
}

void LiveFrame::fillPicture(TerrainSweep &sweep, int threads, Progress &progress)
{
    SceneryData &data = m_request.document.parameters;
    const SceneryData before = data;
    data.HintergrundVerwenden = true;
    data.Hintergrund = NoGround;
    const std::shared_ptr<TextureImage> texture = std::move(m_texture);
    m_texture = whiteTexture(texture->width(), texture->height(), NoGround);
    const double middleX = 0.5 * m_elevation->width() * data.HDateiSkalaX;
    const double middleY = 0.5 * m_elevation->height() * data.HDateiSkalaY;
    const double least = LeastHeight * 2 *
                         std::max(middleX / std::max(data.AusAuflX, 1),
                                  middleY / std::max(data.AusAuflY, 1));
    ViewCamera &camera = *m_request.camera;
    for (int step = 0; step < MostSteps && progress.step(step, MostSteps); ++step) {
        const QImage image = draw(sweep, &Glance, threads, progress);
        if (image.isNull())
            break;
        const Seen seen = lookFor(image);
        if (!seen.sky && !seen.edge)
            break;
        // Sky alone goes by looking down; what lies beside the terrain by going nearer,
        // and once there by looking down as well.
        const bool above = camera.x > 0 && camera.x < 2 * middleX && camera.y > 0 &&
                           camera.y < 2 * middleY;
        if (seen.sky || above)
            camera.pitch = std::max(camera.pitch - DownAStep, Steepest);
        if (seen.edge || camera.pitch <= Steepest + DownAStep) {
            camera.x += NearerAStep * (middleX - camera.x);
            camera.y += NearerAStep * (middleY - camera.y);
            const double floor = heightAt(camera.x, camera.y) + least;
            camera.z = std::max(camera.z - NearerAStep * (camera.z - floor), floor);
        }
    }
    data.HintergrundVerwenden = before.HintergrundVerwenden;
    data.Hintergrund = before.Hintergrund;
    m_texture = texture;
}

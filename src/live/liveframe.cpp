#include "live/liveframe.h"

#include "base/pi.h"
#include "base/progress.h"
#include "flight/flight.h"
#include "live/flyer.h"
#include "live/inputcache.h"
#include "render/terrainsweep.h"
#include "render/transformation.h"
#include "run/framelook.h"
#include "run/framememory.h"
#include "run/framescale.h"
#include "scene/inputfile.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// A white texture larger than this, in pixels, is one white pixel instead: nobody would
// see its end.
constexpr double LargestWhite = 1 << 24;

QString text(const char *source)
{
    return QCoreApplication::translate("LiveView", source);
}

double degrees(double radians) { return radians * 180 / Pi; }

// The frame that a straight flight of one camera has.
SceneryDocument flownFrom(const SceneryDocument &document, const ViewCamera &camera)
{
    SceneryDocument flown = document;
    SceneryData &data = flown.parameters;
    data.isStraight = true;
    data.Bildanzahl = 1;
    data.BeobXA = data.BeobXE = camera.x;
    data.BeobYA = data.BeobYE = camera.y;
    data.BeobZA = data.BeobZE = camera.z;
    data.RichtungA = data.RichtungE = camera.heading;
    data.NeigungA = data.NeigungE = camera.pitch;
    data.VerkantenA = data.VerkantenE = camera.roll;
    data.BrennA = data.BrennE = camera.focal;
    return flown;
}

} // namespace

std::shared_ptr<TextureImage> whiteTexture(double width, double height, QRgb around)
{
    const bool fits = width * height <= LargestWhite;
    auto white = std::make_shared<TextureImage>(
        fits ? std::max(static_cast<int>(width), 1) : 1,
        fits ? std::max(static_cast<int>(height), 1) : 1, QImage::Format_Grayscale8);
    white->fill(Qt::white);
    white->setBackgroundColor(fits ? around : qRgb(255, 255, 255));
    return white;
}

ViewCamera viewOf(const FrameCamera &frame)
{
    return {frame.position.x,     frame.position.y,
            frame.position.z,     degrees(frame.direction),
            degrees(frame.pitch), degrees(frame.roll),
            frame.focal};
}

LiveFiles::LiveFiles(const LiveRequest &request)
{
    const SceneryData &data = request.document.parameters;
    const auto found = [&](const QString &name) {
        return name.isEmpty() ? QString() : findInputFile(name, request.folder);
    };
    elevation = found(data.HDateiname);
    texture = found(data.TDateiname);
}

LiveFrame::LiveFrame(const LiveRequest &request, InputCache &inputs) : m_request(request)
{
    findFiles(inputs);
    findCamera();
}

void LiveFrame::findFiles(InputCache &inputs)
{
    const SceneryData &data = m_request.document.parameters;
    const LiveFiles files(m_request);
    m_elevation = inputs.elevation(files.elevation);
    if (!m_elevation) {
        m_message =
            data.HDateiname.isEmpty()
                ? text("The scenery names no elevation file.")
                : text("The elevation file \"%1\" cannot be read.").arg(data.HDateiname);
        return;
    }
    m_elevation->setScales(data.HDateiSkalaX, data.HDateiSkalaY);
    m_texture = inputs.texture(files.texture);
    if (m_texture) {
        m_texture->setBackgroundColor(data.Hintergrund);
    } else {
        m_message =
            data.TDateiname.isEmpty()
                ? text("The scenery names no texture file: the ground is white.")
                : text("The texture file \"%1\" cannot be read: the ground is white.")
                      .arg(data.TDateiname);
        m_texture =
            whiteTexture(m_elevation->width() * data.HDateiSkalaX,
                         m_elevation->height() * data.HDateiSkalaY, data.Hintergrund);
    }
}

void LiveFrame::findCamera()
{
    const Result<void> checked = checkFlight(m_request.document);
    m_flies = bool(checked) || m_request.camera;
    if (!m_flies) {
        if (m_message.isEmpty())
            m_message = checked.error().text;
        return;
    }
    if (checked)
        m_frame = Flight(m_request.document, 1.0).camera(m_request.frame);
    m_frame = cameraScaled(1.0);
    m_camera = viewOf(m_frame);
    holdGround();
    if (m_request.camera)
        m_camera = *m_request.camera;
}

// A camera that was flown sees what its frame is seen through: z scale and dust.
FrameCamera LiveFrame::cameraScaled(double factor) const
{
    const SceneryDocument &document = m_request.document;
    if (!m_request.camera)
        return Flight(document, factor).camera(m_request.frame);
    const bool follows = bool(checkFlight(document));
    const SceneryDocument flown = flownFrom(document, *m_request.camera);
    FrameCamera camera = Flight(flown, factor).camera(0);
    if (follows) {
        camera.zScale = m_frame.zScale;
        camera.dustRange = m_frame.dustRange;
    }
    return camera;
}

double LiveFrame::heightAt(double x, double y) const
{
    ElevationImage ground = *m_elevation; // shares its pixels
    ground.setZScale(m_frame.zScale);
    return ground.elevation(x, y);
}

std::optional<double> LiveFrame::groundHeight() const
{
    if (!canBeDrawn())
        return {};
    return heightAt(m_camera.x, m_camera.y);
}

void LiveFrame::holdGround()
{
    if (!m_request.camera || !m_request.clearance || !m_elevation)
        return;
    m_request.camera->z =
        heightAt(m_request.camera->x, m_request.camera->y) + *m_request.clearance;
    m_request.camera = Flyer::onSteps(*m_request.camera);
}

QSize LiveFrame::fullSize() const
{
    return frameScaleWithin(m_request.document.parameters, m_request.view).file;
}

QSize LiveFrame::fullMesh() const
{
    const SceneryData &data = m_request.document.parameters;
    return {data.AusAuflX, data.AusAuflY};
}

QImage LiveFrame::draw(TerrainSweep &sweep, const LiveLevel *level, int threads,
                       Progress &progress) const
{
    const SceneryData &data = m_request.document.parameters;
    FrameScale scale = frameScaleWithin(data, m_request.view);
    if (level) {
        const QSize full = scale.file;
        const auto share = [level](int side) {
            return static_cast<int>(std::ceil(side * level->size));
        };
        scale.target = {share(full.width()), share(full.height())};
        scale.factor = double(scale.target.width()) / data.AusBreite;
        scale.halved = false;
    }
    if (!frameFitsMemory(scale.target, scale.halved, true))
        return {};
    TextureImage target(scale.target, QImage::Format_RGB32);
    if (target.isNull())
        return {};
    Transformation view(nullptr, lightOf(data), target.width(), target.height());
    FrameSetup setup = frameSetup(data, *m_elevation, false);
    takeLook(setup, data);
    setup.target = &target;
    setup.texture = m_texture.get();
    setup.view = &view;
    setup.threads = threads;
    setup.seenWholeOnly = true;
    if (level) {
        setup.quality = 0;
        setup.meshCellsX = std::max(1.0, std::floor(setup.meshCellsX * level->mesh));
        setup.meshCellsY = std::max(1.0, std::floor(setup.meshCellsY * level->mesh));
    }
    struct Watch : Progress {
        explicit Watch(Progress &watched) : outer(watched) {}
        bool step(qint64 done, qint64 of) override
        {
            goesOn = goesOn && outer.step(done, of);
            return goesOn;
        }
        Progress &outer;
        bool goesOn = true;
    } watch(progress);
    sweep.renderFrame(setup, cameraScaled(scale.factor), watch);
    if (!watch.goesOn)
        return {};
    QImage image = std::move(static_cast<QImage &>(target));
    return scale.halved ? halvedFrame(image) : image;
}

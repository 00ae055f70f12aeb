#include "run/flightrun.h"

#include "base/notices.h"
#include "flight/flight.h"
#include "raster/elevationimage.h"
#include "raster/heightkinds.h"
#include "raster/textureimage.h"
#include "render/terrainsweep.h"
#include "render/transformation.h"
#include "run/framefiles.h"
#include "run/framelook.h"
#include "run/framememory.h"
#include "run/framewriter.h"
#include "run/runlistener.h"
#include "scene/inputfile.h"
#include "scene/scenerydocument.h"

#include <QGuiApplication>

#include <algorithm>
#include <new>
#include <utility>

namespace {

// Frames that are written while the next one is drawn. One core encodes, all others
// draw: where they are many, a frame is drawn sooner than the one before is written.
constexpr int FramesWrittenAtATime = 2;
constexpr int DotsPerMetre = 3780; // 96 to an inch, as usual screens have

QString text(const char *source)
{
    return QCoreApplication::translate("SceneryDelegate", source);
}

} // namespace

FlightRun::FlightRun(const SceneryDocument &document, RunOptions options,
                     RunListener &listener)
    : m_document(document), m_options(std::move(options)), m_listener(listener),
      m_scale(m_options.within.isEmpty()
                  ? frameScale(document.parameters, m_options.preview)
                  : frameScaleWithin(document.parameters, m_options.within))
{
}

FlightRun::~FlightRun() = default;

Result<void> FlightRun::run()
{
    Result<void> result;
    try {
        result = setUpAndFly();
    } catch (const std::bad_alloc &) {
        result = failed(text("There is not enough memory for this run."));
    }
    m_sweep.reset();
    m_target.reset();
    m_writer.reset(); // tells of the frames that a run without memory left behind
    return result;
}

Result<void> FlightRun::setUpAndFly()
{
    const SceneryData &data = m_document.parameters;
    m_sweep = std::make_unique<TerrainSweep>();
    Transformation view(nullptr, lightOf(data), m_scale.target.width(),
                        m_scale.target.height());

    TextureImage texture(findInputFile(data.TDateiname, m_options.folder), nullptr);
    if (texture.isNull())
        return failed(text("Could not open texture file \"%1\"").arg(data.TDateiname));
    texture.setBackgroundColor(data.Hintergrund);
    view.SetzeTexturDatei(&texture);

    const QString heights = findInputFile(data.HDateiname, m_options.folder);
    if (const QString told = otherHeightsNotice(heights); !told.isEmpty())
        tellNotice(told, NoticeStay::UntilNextWork);
    ElevationImage elevation(heights, data.HDateiSkalaX, data.HDateiSkalaY, nullptr);
    if (elevation.isNull())
        return failed(text("Could not open elevation file \"%1\"").arg(data.HDateiname));

    if (Result<void> made = makeTarget(); !made)
        return made;
    makeWriter();
    FrameSetup setup = setupOf(elevation);
    setup.texture = &texture;
    setup.view = &view;
    Result<void> result = fly(setup);
    m_writer->finish(); // whole frames are kept, also of a run that was stopped
    return result;
}

Result<void> FlightRun::makeTarget()
{
    const SceneryData &data = m_document.parameters;
    const auto [width, height] = m_scale.target;
    const bool fits = frameFitsMemory(m_scale.target, m_scale.halved, m_options.shown);
    m_target = std::make_unique<TextureImage>(fits ? width : 0, fits ? height : 0,
                                              QImage::Format_RGB32);
    if (m_target->isNull())
        return failed(
            text("Could not create an image of %1 x %2 pixels").arg(width).arg(height));
    // A program without screens has no resolution to give to its pictures.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        m_target->setDotsPerMeterX(DotsPerMetre);
        m_target->setDotsPerMeterY(DotsPerMetre);
    }
    m_target->fill(data.Hintergrund); // it is shown before the first frame is drawn
    return {};
}

void FlightRun::makeWriter()
{
    m_writer = std::make_unique<FrameWriter>(
        FramesWrittenAtATime,
        [this](int frame, const QStringList &complaints) {
            m_listener.frameSaved(frame, complaints);
        },
        [this] { m_listener.waiting(); });
}

FrameSetup FlightRun::setupOf(const ElevationImage &elevation) const
{
    FrameSetup setup = frameSetup(m_document.parameters, elevation, m_options.preview);
    setup.target = m_target.get();
    setup.seenWholeOnly = !m_options.shown;
    setup.threads = m_options.threads;
    setup.coresTaken = [this] { return m_writer->busy(); };
    return setup;
}

Result<void> FlightRun::fly(const FrameSetup &setup)
{
    m_listener.targetMade(*m_target);
    const SceneryData &data = m_document.parameters;
    if (Result<void> checked = checkFlight(m_document); !checked) {
        m_listener.flightRefused(checked.error().text);
        return checked;
    }
    const Flight flight(m_document, m_scale.factor);
    for (qint64 f = data.StartbildNr; f <= data.EndbildNr && !m_stopped; ++f) {
        const int frame = static_cast<int>(f);
        if (m_listener.wants(frame) && !drawFrame(setup, flight.camera(frame), frame))
            break;
    }
    if (m_stopped)
        return stopped();
    return {};
}

bool FlightRun::drawFrame(FrameSetup setup, const FrameCamera &camera, int frame)
{
    const SceneryData &data = m_document.parameters;
    const int number = frameNumber(data, frame);
    m_listener.frameStarted(frame, number, *m_target);
    takeLook(setup, data);
    m_sweep->renderFrame(setup, camera, *this);
    m_listener.frameDrawn(frame, *m_target);
    if (m_stopped)
        return false;
    m_writer->write(frame, *m_target, m_scale.halved, frameFiles(data, number));
    return true;
}

bool FlightRun::step(qint64 row, qint64 of)
{
    return m_listener.step(row, of) && !m_stopped;
}

QImage FlightRun::picture()
{
    if (!m_target || m_target->isNull())
        return {};
    m_sweep->showable();
    return m_target->copy();
}

// Runs: a series of numbered picture files from the parameters of the document.

#include "base/vectormath.h"
#include "document/scenerydelegate.h"
#include "flight/straightcamera.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"
#include "render/terrainsweep.h"
#include "render/transformation.h"
#include "run/framememory.h"
#include "run/framewriter.h"
#include "scene/framename.h"
#include "scene/scenerydata.h"
#include "views/imagemdichild.h"

#include <QCoreApplication>

#include <algorithm>
#include <new>

namespace {

// The number in the names of a frame's files; wraps as a 32-bit sum does.
int numberOf(int frame, int offset)
{
    return static_cast<int>(static_cast<unsigned int>(frame) +
                            static_cast<unsigned int>(offset));
}

// Frames that are written while the next one is drawn. One core encodes, all others
// draw: where they are many, a frame is drawn sooner than the one before is written.
constexpr int FramesWrittenAtATime = 2;

constexpr double PreviewFactor = 0.5;

} // namespace

bool SceneryDelegate::renderFinal(ImageMdiChild *target)
{
    setErrorString(QString());
    viewToData();
    QualityFactor = scenery.parameters.GenauRechnen == 2 ? 2.0 : 1.0;
    isPreview = false;
    sweep->meshCellsX = scenery.parameters.AusAuflX;
    sweep->meshCellsY = scenery.parameters.AusAuflY;
    return run(target);
}

bool SceneryDelegate::renderPreview(ImageMdiChild *target)
{
    setErrorString(QString());
    viewToData();
    QualityFactor = PreviewFactor;
    isPreview = true;
    // A coarse grid has fewer cells than the preview divides it by.
    sweep->meshCellsX = std::max(scenery.parameters.AusAuflX / 4, 1);
    sweep->meshCellsY = std::max(scenery.parameters.AusAuflY / 4, 1);
    return run(target);
}

bool SceneryDelegate::run(ImageMdiChild *target)
{
    isRendering = true;
    failureTold = false;
    activeView = target;
    if (activeView) {
        activeView->setMayBeClosed(false);
        activeView->show();
    }
    bool done = false;
    try {
        done = renderFlight();
    } catch (const std::bad_alloc &) {
        setErrorString(tr("There is not enough memory for this run."));
    }
    sweep->renderTarget = nullptr;
    sweep->renderElevation = nullptr;
    sweep->activeTransformation = nullptr;
    sweep->endOfRun();
    sweep->coresTaken = nullptr;
    frameWriter.reset();
    if (activeView)
        activeView->setMayBeClosed(true);
    activeView = nullptr;
    return done;
}

// Sets up what all frames of a run share, and flies.
bool SceneryDelegate::renderFlight()
{
    sweep->Licht = normalized({scenery.parameters.LichtX, scenery.parameters.LichtY,
                               scenery.parameters.LichtZ, 0.0});
    sweep->renderWidth = static_cast<int>(scenery.parameters.AusBreite * QualityFactor);
    sweep->renderHeight = static_cast<int>(scenery.parameters.AusHoehe * QualityFactor);
    Transformation camera(nullptr, sweep->Licht, sweep->renderWidth, sweep->renderHeight);
    sweep->activeTransformation = &camera;

    TextureImage texture(inputFile(scenery.parameters.TDateiname), nullptr);
    if (texture.isNull()) {
        setErrorString(
            tr("Could not open texture file \"%1\"").arg(scenery.parameters.TDateiname));
        return false;
    }
    texture.setBackgroundColor(scenery.parameters.Hintergrund);
    camera.SetzeTexturDatei(&texture);

    ElevationImage elevation(inputFile(scenery.parameters.HDateiname),
                             scenery.parameters.HDateiSkalaX,
                             scenery.parameters.HDateiSkalaY, nullptr);
    if (elevation.isNull()) {
        setErrorString(tr("Could not open elevation file \"%1\"")
                           .arg(scenery.parameters.HDateiname));
        return false;
    }
    sweep->renderElevation = &elevation;
    sweep->terrainX = elevation.width() * scenery.parameters.HDateiSkalaX;
    sweep->terrainY = elevation.height() * scenery.parameters.HDateiSkalaY;

    const bool fits = frameFitsMemory({sweep->renderWidth, sweep->renderHeight},
                                      isHalved(), activeView != nullptr);
    TextureImage target(fits ? sweep->renderWidth : 0, fits ? sweep->renderHeight : 0,
                        QImage::Format_RGB32);
    if (target.isNull()) {
        setErrorString(tr("Could not create an image of %1 x %2 pixels")
                           .arg(sweep->renderWidth)
                           .arg(sweep->renderHeight));
        return false;
    }
    target.fill(
        scenery.parameters.Hintergrund); // it is shown before the first frame is drawn
    sweep->renderTarget = &target;
    frameWriter = std::make_unique<FrameWriter>(
        FramesWrittenAtATime,
        [this](int frame, const QStringList &complaints) {
            emit frameSaved(frame, complaints);
        },
        [] { QCoreApplication::processEvents(); });
    sweep->coresTaken = [this] { return frameWriter->busy(); };
    const bool done =
        scenery.parameters.isStraight ? straightFlight(&texture) : curvedFlight(&texture);
    frameWriter->finish(); // whole frames are kept, also of a run that was stopped
    return done;
}

double SceneryDelegate::GetSmoothedValue(double t, double first, double last,
                                         double inertia)
{
    return smoothedValue(t, first, last, inertia);
}

bool SceneryDelegate::straightFlight(TextureImage *texture)
{
    if (activeView)
        activeView->setPixmap(sweep->renderTarget, true);
    for (qint64 i = scenery.parameters.StartbildNr;
         i <= scenery.parameters.EndbildNr && isRendering; ++i) {
        const int frame = static_cast<int>(i);
        if (!frameIsWanted(frame))
            continue;
        const FrameCamera camera =
            straightCamera(scenery.parameters, frame, QualityFactor);
        sweep->activeTransformation->SetView(camera.position, camera.direction,
                                             camera.pitch, camera.focal, camera.roll);
        sweep->renderElevation->setZScale(camera.zScale);
        sweep->dustRange = camera.dustRange;
        if (!renderFrame(texture, frame, frame == scenery.parameters.StartbildNr))
            return true; // stopped, which is a success
    }
    return true;
}

bool SceneryDelegate::renderFrame(TextureImage *texture, int frame, bool first)
{
    const int number = numberOf(frame, scenery.parameters.Offset);
    emit frameStarted(frame);
    if (activeView) {
        activeView->setWindowTitle(
            formatFrameName(scenery.parameters.AusDateiname, number));
        activeView->setPixmap(sweep->renderTarget, false);
        if (first)
            activeView->resizeWhereFeasible();
    }
    QCoreApplication::processEvents();
    Scan(texture, scenery.parameters.HintergrundVerwenden, scenery.parameters.Hintergrund,
         scenery.parameters.GenauRechnen);
    if (!isRendering)
        return false;
    saveFrame(frame, number);
    return true;
}

void SceneryDelegate::saveFrame(int frame, int number)
{
    frameWriter->write(frame, *sweep->renderTarget, isHalved(), namesOf(number));
}

bool SceneryDelegate::isHalved() const
{
    return scenery.parameters.GenauRechnen == 2 && !isPreview;
}

QStringList SceneryDelegate::namesOf(int number) const
{
    QStringList names;
    const auto add = [&](bool wanted, const char *extension) {
        if (wanted)
            names.append(formatFrameName(
                scenery.parameters.AusDateiname + QLatin1String(extension), number));
    };
    add(scenery.parameters.AusgabeTGA, ".tga");
    add(scenery.parameters.AusgabePNG, ".png");
    add(scenery.parameters.AusgabeJPG, ".jpg");
    add(scenery.parameters.AusgabePPM, ".ppm");
    return names;
}

QStringList SceneryDelegate::frameFiles(int frame) const
{
    return namesOf(numberOf(frame, scenery.parameters.Offset));
}

QSize SceneryDelegate::fileSize(bool preview) const
{
    const auto side = [preview](int wanted) {
        return preview ? static_cast<int>(wanted * PreviewFactor) : wanted;
    };
    return {side(scenery.parameters.AusBreite), side(scenery.parameters.AusHoehe)};
}

void SceneryDelegate::setFrameFilter(std::function<bool(int frame)> wanted)
{
    frameWanted = std::move(wanted);
}

void SceneryDelegate::setThreads(int count) { sweep->threads = count; }

bool SceneryDelegate::frameIsWanted(int frame) const
{
    return !frameWanted || frameWanted(frame);
}

void SceneryDelegate::refresh()
{
    if (!activeView || !sweep->renderTarget)
        return;
    sweep->showable();
    // A copy: a pixmap may share the buffer of its image, which is still drawn into.
    const QImage shown = sweep->renderTarget->copy();
    activeView->setPixmap(&shown, false);
}

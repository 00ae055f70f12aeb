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
    QualityFactor = data->GenauRechnen == 2 ? 2.0 : 1.0;
    isPreview = false;
    sweep->meshCellsX = data->AusAuflX;
    sweep->meshCellsY = data->AusAuflY;
    return run(target);
}

bool SceneryDelegate::renderPreview(ImageMdiChild *target)
{
    setErrorString(QString());
    viewToData();
    QualityFactor = PreviewFactor;
    isPreview = true;
    // A coarse grid has fewer cells than the preview divides it by.
    sweep->meshCellsX = std::max(data->AusAuflX / 4, 1);
    sweep->meshCellsY = std::max(data->AusAuflY / 4, 1);
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
    sweep->Licht = normalized({data->LichtX, data->LichtY, data->LichtZ, 0.0});
    sweep->renderWidth = static_cast<int>(data->AusBreite * QualityFactor);
    sweep->renderHeight = static_cast<int>(data->AusHoehe * QualityFactor);
    Transformation camera(nullptr, sweep->Licht, sweep->renderWidth, sweep->renderHeight);
    sweep->activeTransformation = &camera;

    TextureImage texture(inputFile(data->TDateiname), nullptr);
    if (texture.isNull()) {
        setErrorString(tr("Could not open texture file \"%1\"").arg(data->TDateiname));
        return false;
    }
    texture.setBackgroundColor(data->Hintergrund);
    camera.SetzeTexturDatei(&texture);

    ElevationImage elevation(inputFile(data->HDateiname), data->HDateiSkalaX,
                             data->HDateiSkalaY, nullptr);
    if (elevation.isNull()) {
        setErrorString(tr("Could not open elevation file \"%1\"").arg(data->HDateiname));
        return false;
    }
    sweep->renderElevation = &elevation;
    sweep->terrainX = elevation.width() * data->HDateiSkalaX;
    sweep->terrainY = elevation.height() * data->HDateiSkalaY;

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
    target.fill(data->Hintergrund); // it is shown before the first frame is drawn
    sweep->renderTarget = &target;
    frameWriter = std::make_unique<FrameWriter>(
        FramesWrittenAtATime,
        [this](int frame, const QStringList &complaints) {
            emit frameSaved(frame, complaints);
        },
        [] { QCoreApplication::processEvents(); });
    sweep->coresTaken = [this] { return frameWriter->busy(); };
    const bool done =
        data->isStraight ? straightFlight(&texture) : curvedFlight(&texture);
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
    for (qint64 i = data->StartbildNr; i <= data->EndbildNr && isRendering; ++i) {
        const int frame = static_cast<int>(i);
        if (!frameIsWanted(frame))
            continue;
        const FrameCamera camera = straightCamera(*data, frame, QualityFactor);
        sweep->activeTransformation->SetView(camera.position, camera.direction,
                                             camera.pitch, camera.focal, camera.roll);
        sweep->renderElevation->setZScale(camera.zScale);
        sweep->dustRange = camera.dustRange;
        if (!renderFrame(texture, frame, frame == data->StartbildNr))
            return true; // stopped, which is a success
    }
    return true;
}

bool SceneryDelegate::renderFrame(TextureImage *texture, int frame, bool first)
{
    const int number = numberOf(frame, data->Offset);
    emit frameStarted(frame);
    if (activeView) {
        activeView->setWindowTitle(formatFrameName(data->AusDateiname, number));
        activeView->setPixmap(sweep->renderTarget, false);
        if (first)
            activeView->resizeWhereFeasible();
    }
    QCoreApplication::processEvents();
    Scan(texture, data->HintergrundVerwenden, data->Hintergrund, data->GenauRechnen);
    if (!isRendering)
        return false;
    saveFrame(frame, number);
    return true;
}

void SceneryDelegate::saveFrame(int frame, int number)
{
    frameWriter->write(frame, *sweep->renderTarget, isHalved(), namesOf(number));
}

bool SceneryDelegate::isHalved() const { return data->GenauRechnen == 2 && !isPreview; }

QStringList SceneryDelegate::namesOf(int number) const
{
    QStringList names;
    const auto add = [&](bool wanted, const char *extension) {
        if (wanted)
            names.append(
                formatFrameName(data->AusDateiname + QLatin1String(extension), number));
    };
    add(data->AusgabeTGA, ".tga");
    add(data->AusgabePNG, ".png");
    add(data->AusgabeJPG, ".jpg");
    add(data->AusgabePPM, ".ppm");
    return names;
}

QStringList SceneryDelegate::frameFiles(int frame) const
{
    return namesOf(numberOf(frame, data->Offset));
}

QSize SceneryDelegate::fileSize(bool preview) const
{
    const auto side = [preview](int wanted) {
        return preview ? static_cast<int>(wanted * PreviewFactor) : wanted;
    };
    return {side(data->AusBreite), side(data->AusHoehe)};
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

// Runs of the document: what the form shows is flown, and the window shows the frames.

#include "document/runwindow.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "flight/straightcamera.h"
#include "run/flightrun.h"
#include "run/framefiles.h"
#include "views/usernotices.h"

#include <QScopeGuard>

bool SceneryDelegate::renderFinal(ImageMdiChild *target) { return run(target, false); }

bool SceneryDelegate::renderPreview(ImageMdiChild *target) { return run(target, true); }

bool SceneryDelegate::run(ImageMdiChild *target, bool preview)
{
    setErrorString(QString());
    viewToData();
    failureTold = false;
    RunWindow window(*this, target);
    FlightRun run(scenery, {preview, target != nullptr, threads, folder()}, window);
    const auto end = qScopeGuard([this] {
        runInHand = nullptr;
        runWindow = nullptr;
        emit runningChanged();
    });
    runInHand = &run;
    runWindow = &window;
    emit runningChanged();
    const Result<void> result = run.run();
    failureTold = window.toldFailure();
    if (result || result.error().stopped) // which is a success
        return true;
    setErrorString(result.error().text);
    return false;
}

void SceneryDelegate::stopRendering()
{
    if (runInHand)
        runInHand->stop();
}

void SceneryDelegate::refresh()
{
    const QImage picture = runInHand ? runInHand->picture() : QImage();
    if (!picture.isNull())
        runWindow->show(picture);
}

void SceneryDelegate::tellRefusedFlight(const QString &reason)
{
    notices->critical(view, tr("SceneryDelegate::CurvedFlight()"), reason);
}

QStringList SceneryDelegate::frameFiles(int frame) const
{
    return ::frameFiles(scenery.parameters, frameNumber(scenery.parameters, frame));
}

void SceneryDelegate::setFrameFilter(std::function<bool(int frame)> wanted)
{
    frameWanted = std::move(wanted);
}

bool SceneryDelegate::frameIsWanted(int frame) const
{
    return !frameWanted || frameWanted(frame);
}

double SceneryDelegate::GetSmoothedValue(double t, double first, double last,
                                         double inertia)
{
    return smoothedValue(t, first, last, inertia);
}

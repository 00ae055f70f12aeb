// The frames of a curved flight.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "flight/curvedflight.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"
#include "render/terrainsweep.h"
#include "render/transformation.h"
#include "scene/scenerydata.h"
#include "views/imagemdichild.h"
#include "views/usernotices.h"

bool SceneryDelegate::curvedFlight(TextureImage *texture)
{
    if (activeView)
        activeView->setPixmap(sweep->renderTarget, true);
    QString error;
    if (!checkCurvedFlight(controlPoints.size(), waypoints.size(), data->Bildanzahl,
                           &error)) {
        notices->critical(view, tr("SceneryDelegate::CurvedFlight()"), error);
        setErrorString(error);
        failureTold = true;
        return false;
    }
    const CurvedFlight flight(controlPoints, waypoints, data->Bildanzahl);
    for (qint64 f = data->StartbildNr; f <= data->EndbildNr && isRendering; ++f) {
        const int frame = static_cast<int>(f);
        if (!frameIsWanted(frame))
            continue;
        const FlightCamera camera = flight.camera(frame);
        const auto smoothed = [&](double first, double last) {
            return GetSmoothedValue(camera.fraction, first, last, data->Traegheit);
        };
        // The roll goes in as it is: on a curved flight it is not turned from degrees
        // into radians.
        sweep->activeTransformation->SetView(
            C4Vector{camera.x, camera.y, camera.z, 1.0}, camera.heading, camera.pitch,
            smoothed(data->BrennA, data->BrennE) * QualityFactor,
            smoothed(data->VerkantenA, data->VerkantenE));
        sweep->renderElevation->setZScale(
            smoothed(data->HDateiSkalaZA, data->HDateiSkalaZE));
        sweep->dustRange =
            data->NebelE != 0.0 ? smoothed(data->NebelA, data->NebelE) : data->NebelA;
        if (!renderFrame(texture, frame, frame == data->StartbildNr))
            break; // stopped, which is a success
    }
    return true;
}

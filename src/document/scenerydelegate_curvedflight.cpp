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
    if (!checkCurvedFlight(scenery.controlPoints.size(), scenery.waypoints.size(),
                           scenery.parameters.Bildanzahl, &error)) {
        notices->critical(view, tr("SceneryDelegate::CurvedFlight()"), error);
        setErrorString(error);
        failureTold = true;
        return false;
    }
    const CurvedFlight flight(scenery.controlPoints, scenery.waypoints,
                              scenery.parameters.Bildanzahl);
    for (qint64 f = scenery.parameters.StartbildNr;
         f <= scenery.parameters.EndbildNr && isRendering; ++f) {
        const int frame = static_cast<int>(f);
        if (!frameIsWanted(frame))
            continue;
        const FlightCamera camera = flight.camera(frame);
        const auto smoothed = [&](double first, double last) {
            return GetSmoothedValue(camera.fraction, first, last,
                                    scenery.parameters.Traegheit);
        };
        // The roll goes in as it is: on a curved flight it is not turned from degrees
        // into radians.
        sweep->activeTransformation->SetView(
            C4Vector{camera.x, camera.y, camera.z, 1.0}, camera.heading, camera.pitch,
            smoothed(scenery.parameters.BrennA, scenery.parameters.BrennE) *
                QualityFactor,
            smoothed(scenery.parameters.VerkantenA, scenery.parameters.VerkantenE));
        sweep->renderElevation->setZScale(
            smoothed(scenery.parameters.HDateiSkalaZA, scenery.parameters.HDateiSkalaZE));
        sweep->dustRange =
            scenery.parameters.NebelE != 0.0
                ? smoothed(scenery.parameters.NebelA, scenery.parameters.NebelE)
                : scenery.parameters.NebelA;
        if (!renderFrame(texture, frame, frame == scenery.parameters.StartbildNr))
            break; // stopped, which is a success
    }
    return true;
}

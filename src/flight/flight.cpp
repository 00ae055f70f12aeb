#include "flight/flight.h"

#include "flight/straightcamera.h"
#include "scene/scenerydocument.h"

Result<void> checkFlight(const SceneryDocument &document)
{
    if (document.parameters.isStraight)
        return {};
    return checkCurvedFlight(document.controlPoints.size(), document.waypoints.size(),
                             document.parameters.Bildanzahl);
}

Flight::Flight(const SceneryDocument &document, double qualityFactor)
    : m_document(document), m_qualityFactor(qualityFactor)
{
    if (!document.parameters.isStraight)
        m_curve.emplace(document.controlPoints, document.waypoints,
                        document.parameters.Bildanzahl);
}

FrameCamera Flight::camera(int frame) const
{
    return m_curve ? onTheCurve(m_curve->point(frame))
                   : straightCamera(m_document.parameters, frame, m_qualityFactor);
}

FrameCamera Flight::onTheCurve(const CurvePoint &point) const
{
    const SceneryData &data = m_document.parameters;
    const auto smoothed = [&](double first, double last) {
        return smoothedValue(point.fraction, first, last, data.Traegheit);
    };
    FrameCamera camera;
    camera.position = {point.x, point.y, point.z, 1.0};
    camera.direction = point.heading;
    camera.pitch = point.pitch;
    camera.focal = smoothed(data.BrennA, data.BrennE) * m_qualityFactor;
    // The roll goes in as it is: on a curved flight it is not turned from degrees
    // into radians.
    camera.roll = smoothed(data.VerkantenA, data.VerkantenE);
    camera.zScale = smoothed(data.HDateiSkalaZA, data.HDateiSkalaZE);
    camera.dustRange =
        data.NebelE != 0.0 ? smoothed(data.NebelA, data.NebelE) : data.NebelA;
    return camera;
}

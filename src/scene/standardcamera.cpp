#include "scene/standardcamera.h"

#include "scene/scenerydata.h"

void setStandardCamera(SceneryData &data, const QSize &texture, FlightEnd end)
{
    const bool isLast = end == FlightEnd::Last;
    (isLast ? data.BeobXE : data.BeobXA) = texture.width() * 0.5;
    (isLast ? data.BeobYE : data.BeobYA) = -texture.height();
    (isLast ? data.BeobZE : data.BeobZA) = texture.height() * 1.5;
    (isLast ? data.RichtungE : data.RichtungA) = 0.0;
    (isLast ? data.NeigungE : data.NeigungA) = -45.0;
    (isLast ? data.BrennE : data.BrennA) = 1000.0;
    (isLast ? data.VerkantenE : data.VerkantenA) = 0.0;
}

#pragma once

#include "base/framecamera.h"
#include "base/result.h"
#include "flight/curvedflight.h"

#include <optional>

struct SceneryDocument;

/// Whether the flight of a scenery can be flown, or why not.
[[nodiscard]] Result<void> checkFlight(const SceneryDocument &document);

/// The flight of a scenery, straight or curved, which must have passed checkFlight().
///
/// Borrows the document. Which kind of flight it is and where its curves run is settled
/// when it is made; all other parameters are read for each frame anew.
class Flight {
public:
    /// `qualityFactor` is the size of the target in terms of the size that was asked for.
    Flight(const SceneryDocument &document, double qualityFactor);

    [[nodiscard]] FrameCamera camera(int frame) const;

private:
    [[nodiscard]] FrameCamera onTheCurve(const CurvePoint &point) const;

    const SceneryDocument &m_document;
    double m_qualityFactor;
    std::optional<CurvedFlight> m_curve; // none on a straight flight
};

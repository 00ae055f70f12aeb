#pragma once

#include "base/vectors.h"

#include <array>

/// Where the walks over the mesh begin and end: a value, of one frame.
struct SweepLimits {
    C4Vector observer; ///< as the sweep sees it
    /// Bounding box of what the view can reach.
    double footMinX = 0.0, footMaxX = 0.0, footMinY = 0.0, footMaxY = 0.0;
    double stepX = 0.0, stepY = 0.0;                  ///< of the mesh
    std::array<double, 4> loX{}, hiX{}, loY{}, hiY{}; ///< of quadrants 0 to 3

    /// Takes a point into the box.
    void Clip(const C4Vector &point);
    /// Sets the walking limits of the quadrants from the box and the observer.
    void setLimits();
    /// Snaps them to the mesh.
    void RoundTheLimits();
    /// Whether the mesh has cells to walk over.
    [[nodiscard]] bool meshIsWalkable() const;
    [[nodiscard]] bool quadrantRuns(int quadrant) const;
};

#pragma once

#include "raster/elevationimage.h"
#include "scene/scenerydata.h"

#include <vector>

class Progress;

/// The surface that the renderer draws: heights at the points of its mesh, 0 where the
/// elevation file gives none, which is so at its last column and row.
class MeshSurface {
public:
    /// Takes the mesh, the scales and the z scale of the first frame; the elevation has
    /// no scales of its own. `isVoid` tells its pixels that show no terrain; it may be
    /// empty, and is borrowed.
    MeshSurface(const ElevationImage &elevation, const std::vector<bool> &isVoid,
                const SceneryData &data);

    /// How high it is at a place, world units; 0 outside.
    [[nodiscard]] double at(double x, double y) const;
    /// Whether a place had no height.
    [[nodiscard]] bool isVoid(double x, double y) const;
    [[nodiscard]] double width() const { return m_width; } ///< world units
    [[nodiscard]] double depth() const { return m_depth; }
    [[nodiscard]] double lowest() const { return m_lowest; }
    [[nodiscard]] double highest() const { return m_highest; }
    [[nodiscard]] double step() const; ///< of the mesh, the smaller of the two

private:
    double m_width;
    double m_depth;
    int m_columns; // cells
    int m_rows;
    double m_lowest = 0.0;
    double m_highest = 0.0;
    QSize m_pixels;
    const std::vector<bool> &m_isVoid;
    std::vector<float> m_heights; // at the points, one more than cells on each side
};

/// Sets the camera of a new scenery: that of Reposition, moved along its line of sight
/// until the terrain fills the lowest row of the picture, so that every column of it
/// shows terrain. Terrains that lie high above the sea for their size, which that line
/// does not meet, are seen from a place that is higher by as much. Both ends of the
/// flight. False if it was stopped.
[[nodiscard]] bool setFirstCamera(const MeshSurface &surface, const QSize &texture,
                                  SceneryData &data, Progress &progress);

#pragma once

#include "base/vectors.h"

#include <array>
#include <functional>
#include <memory>

class ElevationImage;
class TextureImage;

namespace plain {

class ScreenTrigon;
class Transformation;

/// Renders one frame of terrain.
///
/// Works out which rectangle of the terrain the view can reach and walks a regular
/// mesh over it toward the observer, far cells first, so that near ones overwrite
/// them: four quadrants that meet at the observer, then the four strips on the
/// axes between them. Quadrants are numbered clockwise from the north-west.
///
/// A stencil of 12 mesh points slides along each row; cell corners are the points
/// 3, 4, 8, 7, the others exist for the normals (north is up):
///
///         10  11
///      6   7   8   9
///      2   3   4   5
///          0   1
class TerrainSweep {
public:
    /// Called before each row of the mesh; false stops the walk. A stopped walk
    /// leaves a partial picture.
    using RowStarts = std::function<bool()>;

    TerrainSweep();
    ~TerrainSweep();
    TerrainSweep(const TerrainSweep &) = delete;
    TerrainSweep &operator=(const TerrainSweep &) = delete;

    // What a run sets before its frames. The pointers borrow.
    double meshCellsX = 1.0; // cells over the whole terrain
    double meshCellsY = 1.0;
    C4Vector Licht;      // unit light vector, w = 0
    int renderWidth = 0; // size of the target
    int renderHeight = 0;
    Transformation *activeTransformation = nullptr; // the camera
    ElevationImage *renderElevation = nullptr;
    TextureImage *renderTarget = nullptr;
    double dustRange = 1.0; // distance unit of dust
    double terrainX = 0.0;  // extent in world units
    double terrainY = 0.0;
    RowStarts rowStarts;

    /// Renders one frame. Camera, z scale and dust range are set beforehand.
    void Scan(TextureImage *texture, bool useBackground, unsigned int background,
              int quality);

    // Steps of Scan.

    /// Bounding box of what the picture's corners can see, and the observer.
    void ClipView();
    void ClipBottomView(C4Vector *plane);
    void ClipSideView(C4Vector *plane);
    void Clip(C4Vector &point);
    /// Sets the walking limits of the quadrants from the box and the observer.
    void setLimits();
    /// Snaps the limits to the mesh.
    void RoundTheLimits();
    void ScanQuadrant0();
    void ScanQuadrant1();
    void ScanQuadrant2();
    void ScanQuadrant3();
    void ScanBoundary01();
    void ScanBoundary12();
    void ScanBoundary23();
    void ScanBoundary30();
    /// Fills the stencil and the normals for the cell at meshX, meshY.
    void AllesBerechnen();
    /// Slides the stencil one step east or west, after meshX has moved.
    void TeilPlusBerechnen();
    void TeilMinusBerechnen();

    // State of a frame.
    std::unique_ptr<ScreenTrigon> activeTrigon; // lives inside Scan
    C4Vector sweepObserver;
    std::array<C4Vector, 12> stencil;
    std::array<C4Vector, 4> cornerNormal; // at stencil points 3, 4, 7, 8
    double footMinX = 0.0, footMaxX = 0.0, footMinY = 0.0, footMaxY = 0.0;
    double stepX = 0.0, stepY = 0.0;
    std::array<double, 4> loX{}, hiX{}, loY{}, hiY{}; // of quadrants 0 to 3
    double meshX = 0.0, meshY = 0.0; // lower left corner of the cell in hand
    std::array<C4Vector, 3> triangleVertices, triangleNormals;
    bool rowRestart = true; // until the row's first cell was computed in full

private:
    enum class First { NorthWest, SouthEast }; // triangle of a cell

    void paintBackground(bool useBackground, unsigned int background);
    [[nodiscard]] bool meshIsWalkable() const;
    [[nodiscard]] bool quadrantRuns(int quadrant) const;
    [[nodiscard]] bool startRow();
    void walkEast(double from, double until, First first);
    void walkWest(double from, double until, First first);
    void drawCell(First first);
    void drawTriangle(const std::array<int, 3> &points, const std::array<int, 3> &normals,
                      double fog);
    void place(int point, int columns, int rows);
    void computeNormal(int corner);
};

} // namespace plain

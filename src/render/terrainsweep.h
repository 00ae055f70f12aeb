#pragma once

#include "base/vectors.h"

#include <array>
#include <functional>
#include <memory>

class ElevationImage;
class MeshFrame;
class TextureImage;
class Transformation;
class WorkerPool;
struct MeshColumns;

/// Renders one frame of terrain.
///
/// Works out which rectangle of the terrain the view can reach and walks a regular
/// mesh over it toward the observer, far cells first, so that near ones overwrite
/// them: four quadrants that meet at the observer, then the four strips on the
/// axes between them. Quadrants are numbered clockwise from the north-west.
class TerrainSweep {
public:
    /// Called before each row of the mesh; false stops the walk. A stopped walk
    /// leaves a partial picture. The target is fit to be looked at only after
    /// showable().
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
    int threads = 0; // that draw a frame; 0 stands for all cores
    /// How many cores other work of this program takes at the moment; may be empty.
    std::function<int()> coresTaken;

    /// Renders one frame. Camera, z scale and dust range are set beforehand.
    void Scan(TextureImage *texture, bool useBackground, unsigned int background,
              int quality);

    /// Brings the target to what is drawn so far. To be called before it is looked at
    /// while Scan() runs.
    void showable();

    /// Gives back the threads and the memory that one frame leaves to the next.
    void endOfRun();

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

    // State of a frame.
    C4Vector sweepObserver;
    double footMinX = 0.0, footMaxX = 0.0, footMinY = 0.0, footMaxY = 0.0;
    double stepX = 0.0, stepY = 0.0;
    std::array<double, 4> loX{}, hiX{}, loY{}, hiY{}; // of quadrants 0 to 3

private:
    enum class First { NorthWest, SouthEast }; // triangle of a cell

    void paintBackground(bool useBackground, unsigned int background);
    [[nodiscard]] bool meshIsWalkable() const;
    void beginFrame(const TextureImage *texture, int quality);
    [[nodiscard]] bool quadrantRuns(int quadrant) const;
    [[nodiscard]] bool mayStartRow() const;
    [[nodiscard]] MeshColumns eastward(double from, double until) const;
    [[nodiscard]] MeshColumns westward(double from, double until) const;
    void walkSouth(MeshColumns columns, First first, double from, double until);
    void walkNorth(MeshColumns columns, First first, double from, double until);
    void walkOneRow(MeshColumns columns, First first, double y);

    std::unique_ptr<WorkerPool> m_workers;
    std::unique_ptr<MeshFrame> m_frame;
    int m_threadsWanted = 0;
    bool m_drawing = false; // within Scan
};

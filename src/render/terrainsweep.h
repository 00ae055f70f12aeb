#pragma once

#include "raster/elevationimage.h"
#include "render/framesetup.h"
#include "render/meshrow.h"
#include "render/sweeplimits.h"
#include "render/transformation.h"

#include <memory>
#include <optional>
#include <vector>

class MeshFrame;
class Progress;
class WorkerPool;
struct FrameCamera;

/// Renders one frame of terrain.
///
/// Works out which rectangle of the terrain the view can reach and walks a regular
/// mesh over it toward the observer, far cells first, so that near ones overwrite
/// them: four quadrants that meet at the observer, then the four strips on the
/// axes between them. Quadrants are numbered clockwise from the north-west.
class TerrainSweep {
public:
    TerrainSweep();
    ~TerrainSweep();
    TerrainSweep(const TerrainSweep &) = delete;
    TerrainSweep &operator=(const TerrainSweep &) = delete;

    /// Draws one frame. `progress` counts the rows of the mesh as they begin, of all that
    /// the view can reach; false, each time it is asked again, ends the walk in hand, of
    /// which there are eight. What was drawn until then is a partial picture.
    void renderFrame(const FrameSetup &setup, const FrameCamera &camera,
                     Progress &progress);

    /// Brings the target to what is drawn so far. To be called before it is looked at
    /// while renderFrame() runs.
    void showable();

    /// Gives back the threads and the memory that one frame leaves to the next.
    void endOfRun();

    /// Where the walks of the last frame began and ended.
    [[nodiscard]] const SweepLimits &limits() const { return m_limits; }

private:
    /// Which triangle of a cell comes first.
    enum class First { NorthWest, SouthEast };
    /// Some rows of the mesh one after the other, far ones first.
    struct Walk {
        MeshColumns columns;
        double from; // y of the first row
        double step; // to the next one
        int rows;
    };

    void Scan();
    void paintBackground() const;
    void beginFrame();
    /// Lowest and highest of all heights of the frame.
    std::pair<double, double> heights();

    /// Bounding box of what the picture's corners can see, and the observer.
    void ClipView();
    void ClipBottomView(C4Vector *plane);
    void ClipSideView(C4Vector *plane);
    /// Plans the eight walks, in their order, those that the view cannot reach left out.
    void planWalks();
    void ScanQuadrant0();
    void ScanQuadrant1();
    void ScanQuadrant2();
    void ScanQuadrant3();
    void ScanBoundary01();
    void ScanBoundary12();
    void ScanBoundary23();
    void ScanBoundary30();
    [[nodiscard]] MeshColumns eastward(double from, double until) const;
    [[nodiscard]] MeshColumns westward(double from, double until) const;
    void planSouth(MeshColumns columns, First first, double from, double until);
    void planNorth(MeshColumns columns, First first, double from, double until);
    void planOneRow(MeshColumns columns, First first, double y);
    void walkAll();

    // What a frame is drawn with while it is drawn.
    const FrameSetup *m_setup = nullptr;
    Progress *m_progress = nullptr;
    std::optional<Transformation> m_camera;
    ElevationImage m_elevation;       // under the frame's z scale
    std::pair<int, int> m_stepsRange; // lowest and highest of the elevation that has
    qint64 m_measured = 0;            // this cache key
    double m_dustRange = 1.0;
    SweepLimits m_limits;
    std::vector<Walk> m_walks; // of the frame, until they are walked
    std::unique_ptr<WorkerPool> m_workers;
    std::unique_ptr<MeshFrame> m_frame;
    int m_threadsWanted = 0;
    bool m_drawing = false; // within renderFrame()
};

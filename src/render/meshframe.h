#pragma once

#include "render/coveredpixels.h"
#include "render/meshrow.h"
#include "render/meshtriangles.h"
#include "render/neartrigon.h"
#include "render/paintlists.h"
#include "render/pointrowstore.h"
#include "render/screentrigon.h"

#include <QtGlobal>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

class ElevationImage;
class TextureImage;
class Transformation;
class WorkerPool;

/// What the mesh of a frame is drawn from and into. Borrows everything.
struct MeshSetup {
    TextureImage *target = nullptr;
    const TextureImage *texture = nullptr;
    const ElevationImage *elevation = nullptr;
    const Transformation *camera = nullptr;
    std::pair<double, double> heights; // lowest and highest of the terrain and around it
    C4Vector light;
    C4Vector observer; // from which dust is measured
    double dustRange = 1.0;
    double stepY = 1.0;
    int mostCells = 1; // of a row; more are allowed but cost
    int quality = 0;
    bool nearFirst = false;          // in which order the rows come
    std::function<int()> coresTaken; // by other work of this program; may be empty
};

/// Draws the rows of the mesh of one frame, on all threads of a pool.
///
/// Rows are collected and drawn some at a time, in pieces that the threads take as they
/// become free: first pieces of the rows, whose points, normals and triangles are
/// computed; then shares of the picture, in which the numbers of the triangles are
/// painted, in each of them in the order of the rows. Pixels get their colours when
/// resolve() asks for it, and now and then before, so that resolve() never has much to
/// do.
///
/// Where rows come near ones first, pixels get their colours as they are painted, and
/// what is covered already is passed over.
class MeshFrame {
public:
    explicit MeshFrame(WorkerPool &workers);

    /// Begins a frame. Its memory stays for the next one.
    void begin(const MeshSetup &setup);
    /// Begins a walk; the rows that follow have these columns.
    void beginWalk(MeshColumns columns);
    /// Adds the cells whose lower left corners are at y.
    void addRow(double y);
    /// Draws what was added so far and gives every pixel its colour.
    void resolve();

private:
    // What one thread works with.
    struct Worker {
        std::optional<ScreenTrigon> trigon;    // far ones first
        std::optional<NearTrigon> nearTrigon;  // near ones first
        std::optional<MeshRowBuilder> builder; // of the walk in hand
    };

    void drawPending();
    void drawRows(std::size_t firstRow);
    void computeRows(Worker &worker, int piece, int pieces, std::size_t firstRow);
    void paintShare(Worker &worker, RowShare share) const;
    void forgetRows();
    [[nodiscard]] int freeThreads() const;
    void colourNumbers();
    void colourWhatTakesLong();
    void overPaintedRows(const std::function<void(ScreenTrigon &, RowRange)> &work);

    MeshSetup m_setup;
    RowReach m_reach;
    CoveredPixels m_covered; // near ones first
    WorkerPool &m_pool;
    PointRowStore m_store;
    std::deque<Worker> m_workers;
    std::vector<PaintLists> m_lists; // of each piece of the rows that are drawn
    std::shared_ptr<const MeshColumns> m_columns; // of the walk in hand
    std::vector<double> m_pending;                // y of rows that were not drawn yet
    MeshTriangles m_triangles;                    // whose numbers may be in the target
    std::size_t m_cellsAtATime = 0;               // as many as take some milliseconds
    RowRange m_paintedRows;                       // of the target, that hold all numbers
    qint64 m_mostNumbers = 0;     // pixels that hold a number are no more than these
    double m_secondsAPixel = 0.0; // that colours take, about
};

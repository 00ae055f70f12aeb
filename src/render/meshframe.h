#pragma once

#include "render/meshrow.h"
#include "render/screentrigon.h"

#include <vector>

class ElevationImage;
class TextureImage;
class Transformation;
class WorkerPool;

/// What a frame is made from and into. Borrows everything.
struct FrameSetup {
    TextureImage *target = nullptr;
    const TextureImage *texture = nullptr;
    const ElevationImage *elevation = nullptr;
    const Transformation *camera = nullptr;
    C4Vector light;
    C4Vector observer; // from which dust is measured
    double dustRange = 1.0;
    double stepY = 1.0;
    int mostCells = 1; // of a row; more are allowed but cost
    int quality = 0;
};

/// Draws the rows of the mesh of one frame, on all threads of a pool.
///
/// Rows are collected and drawn some at a time: first their points and normals are
/// computed, each thread some of the rows; then they are painted, each thread in its
/// own strips of the picture and all of them in the order of the rows. A pixel has its
/// colour only after resolve().
class MeshFrame : private TriangleSource {
public:
    MeshFrame(const FrameSetup &setup, WorkerPool &workers);

    /// Begins a walk; the rows that follow have these columns.
    void beginWalk(MeshColumns columns);
    /// Adds the cells whose lower left corners are at y.
    void addRow(double y);
    /// Draws what was added so far and gives every pixel its colour.
    void resolve();

private:
    [[nodiscard]] Triangle triangle(unsigned int number) const override;
    void drawPending();
    void drawRows(std::size_t firstRow);
    void computeRows(int worker, std::size_t firstRow);
    void paintRows(ScreenTrigon &trigon, std::size_t firstRow) const;
    void paintCell(ScreenTrigon &trigon, const MeshRow &row, int cell,
                   unsigned int number) const;
    void colourNumbers();
    [[nodiscard]] bool isLostInDust(double x, double y, double z) const;
    [[nodiscard]] double distance(double x, double y, double z) const;

    FrameSetup m_setup;
    WorkerPool &m_workers;
    std::vector<ScreenTrigon> m_trigons;                     // one a thread
    std::vector<std::unique_ptr<MeshRowBuilder>> m_builders; // one a thread
    std::shared_ptr<const MeshColumns> m_columns;            // of the walk in hand
    std::vector<double> m_pending; // y of rows that were not drawn yet
    std::vector<MeshRow> m_rows;   // whose numbers may stand in the target
    unsigned int m_stride = 0;     // numbers a row
    std::size_t m_keptBytes = 0;
    std::size_t m_cellsAtATime; // as many as take some milliseconds
    double m_surelyNear;        // squared distance below which no cell is lost in dust
};

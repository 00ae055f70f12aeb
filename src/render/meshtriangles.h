#pragma once

#include "render/dust.h"
#include "render/meshrow.h"
#include "render/paintlists.h"
#include "render/screentrigon.h"

#include <cstdint>
#include <vector>

/// The rows of the mesh whose triangles are painted as numbers, and what stands behind
/// each of these numbers.
///
/// The triangles of a row have numbers that follow each other, two a cell, the north-west
/// one first; rows are a stride of numbers apart.
class MeshTriangles final : public TriangleSource {
public:
    /// Begins a frame, of which most rows have no more than that many cells.
    void begin(int mostCells, const Dust &dust);
    /// Forgets all rows; their numbers must have left the picture.
    void clear();
    [[nodiscard]] bool isEmpty() const { return m_rows.empty(); }

    /// Whether so many rows more, of that many cells, find numbers, and no more memory is
    /// kept already than is good. Otherwise clear() comes first.
    [[nodiscard]] bool hasRoomFor(std::size_t rows, int cells) const;
    /// Takes rows in, which have nothing in them yet; the first one's index.
    std::size_t append(std::size_t rows, const MeshColumns &columns);
    /// Puts a row into its place and lists those of its triangles that are drawn, in the
    /// order of the walk or the reverse of that. Threads may do so side by side, each
    /// with rows of its own.
    void put(std::size_t index, MeshRow row, const MeshRowBuilder &built, bool nearFirst,
             PaintLists &lists);

    [[nodiscard]] Triangle triangle(unsigned int number) const override;

private:
    Dust m_dust;
    std::vector<MeshRow> m_rows;
    unsigned int m_stride = 0; // numbers a row
    std::size_t m_keptBytes = 0;
};

#pragma once

#include "geodata/pieces.h"
#include "geodata/warpscales.h"

/// One layer of a mosaic, ready to be warped by one thread.
class LayerWarp {
public:
    /// `scales` must live as long.
    [[nodiscard]] Result<bool> open(const Sheet &layer, const OutputGrid &grid,
                                    const std::vector<WarpScale> &scales);
    /// Lays the layer on the cells of a tile. `watch` is the same in all calls.
    [[nodiscard]] Result<bool> warp(const QRect &tile, float *cells, PieceWatch &watch);

private:
    struct OperationDeleter {
        void operator()(void *operation) const { GDALDestroyWarpOperation(operation); }
    };
    using Operation = std::unique_ptr<void, OperationDeleter>;

    [[nodiscard]] Result<bool> openSource(const Sheet &layer);
    [[nodiscard]] Result<bool> warpWhole(std::size_t scale, const QRect &tile,
                                         float *cells, PieceWatch &watch);
    [[nodiscard]] Result<bool> warpPart(std::size_t scale, const QRect &part,
                                        const QRect &tile, float *cells,
                                        PieceWatch &watch);
    [[nodiscard]] bool layEmptiness(const QRect &tile, float *cells);
    [[nodiscard]] QRect sourceOf(const QRect &tile);
    [[nodiscard]] void *operationFor(std::size_t scale, PieceWatch &watch);

    QString m_name;
    Dataset m_source;
    std::optional<double> m_noData; // of the source
    bool m_maySkip = false;         // whether it is worth while to look for emptiness
    std::unique_ptr<SmoothTransform> m_way;
    Resampling m_resampling = Resampling::Nearest;
    const std::vector<WarpScale> *m_scales = nullptr;
    std::vector<Operation> m_operations; // one for each scale
    std::vector<float> m_part;
};

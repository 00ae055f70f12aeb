#pragma once

#include "raster/pngrows.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

class DeflatePieces;
class Progress;
class QIODevice;
class WorkerPool;

/// Writes the chunks of a PNG that hold its pixels.
///
/// The rows of a picture are filtered and packed in pieces, those of a large one by as
/// many threads as are wanted; how they are cut depends on the picture alone, and so does
/// the file.
class PngPixelWriter {
public:
    /// The picture has a format of PngPixels::of(); it and the device are borrowed.
    PngPixelWriter(QIODevice &device, const QImage &image, PngPixels pixels, int threads);
    ~PngPixelWriter();
    PngPixelWriter(const PngPixelWriter &) = delete;
    PngPixelWriter &operator=(const PngPixelWriter &) = delete;

    /// False if the device does not take it all or the work was asked to stop; throws
    /// std::bad_alloc.
    [[nodiscard]] bool write(Progress &progress);

private:
    struct Worker;
    struct Piece;

    [[nodiscard]] Worker &workerOf(int index);
    [[nodiscard]] int chooseLevel(WorkerPool &pool, Progress &progress);
    [[nodiscard]] std::size_t packedSample(int index, int number, int level);
    [[nodiscard]] bool writeBatch(WorkerPool &pool, int first, std::vector<Piece> &pieces,
                                  Progress &progress);
    void make(int index, int number, Piece &piece);
    [[nodiscard]] bool put(Piece &piece, int number);

    QIODevice &m_device;
    const QImage &m_image;
    PngPixels m_pixels;
    bool m_isFrame = false; // or as small as one
    int m_rowsOfPiece = 1;
    int m_pieces = 1;
    int m_threads = 1;
    int m_level = 0;
    std::vector<std::unique_ptr<Worker>> m_workers; // each thread makes its own
    std::uint32_t m_sum = 1;                        // of the rows that are written
    std::atomic<bool> m_stopped = false;
};

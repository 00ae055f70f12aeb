#include "raster/pngpixelwriter.h"

#include "base/progress.h"
#include "base/workerpool.h"
#include "raster/deflatepieces.h"

#include <QIODevice>

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>

namespace {

// A frame of 1280 by 960 is a matter of one thread; what is larger is worth the waking of
// others.
constexpr qint64 MostForOneThread = qint64(4) << 20;
// Each begins without a memory of what was before, which costs some 30 kB of matches, and
// a stop waits for the end of one.
constexpr qint64 BytesOfPiece = qint64(1) << 18;
// For each thread, between two times of writing.
constexpr int PiecesAtOnce = 32;

// How much is done to find what is alike. At this level files of frames come out some
// 0.6 % larger than at the level of the toolkit's time, and encoding, which a run on two
// cores cannot hide, takes less.
constexpr int LevelOfFrames = 3;
// Other pictures tell by samples whether the slower level is worth its time. Greys gain
// more by it, and numbers of a palette, which no filter prepares, need most.
struct Levels {
    int fast;
    int slow;
    double worthIt; // part of the bytes of the fast one
};
constexpr Levels OfColours{4, 5, 0.985};
constexpr Levels OfGreys{4, 6, 0.985};
constexpr Levels OfPalette{6, 7, 0.97};
constexpr int Samples = 8;
constexpr qint64 BytesOfSample = qint64(1) << 17;

const Levels &levelsOf(PngPixels::Colour colour)
{
    switch (colour) {
    case PngPixels::Colour::Gray:
        return OfGreys;
    case PngPixels::Colour::Palette:
        return OfPalette;
    default:
        return OfColours;
    }
}

void appendNumber(std::vector<unsigned char> &bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<unsigned char>(value >> shift));
}

void putNumber(unsigned char *to, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        *to++ = static_cast<unsigned char>(value >> shift);
}

} // namespace

// What one thread works with.
struct PngPixelWriter::Worker {
    Worker(PngPixels pixels, int width, int rowsOfPiece)
        : filter(pixels, width), rows(filter.bytesOfRow() * std::size_t(rowsOfPiece))
    {
    }
    PngRowFilter filter;
    std::vector<unsigned char> rows;
    std::unique_ptr<DeflatePieces> deflate; // of the level that was chosen
};

// Rows of the picture as a chunk of the file.
struct PngPixelWriter::Piece {
    std::vector<unsigned char> chunk;
    std::size_t size = 0;  // of the filtered rows
    std::uint32_t sum = 0; // of them
    bool good = false;
};

PngPixelWriter::PngPixelWriter(QIODevice &device, const QImage &image, PngPixels pixels,
                               int threads)
    : m_device(device), m_image(image), m_pixels(pixels)
{
    const qint64 row = qint64(image.width()) * pixels.channels() + 1;
    m_isFrame = pixels.colour != PngPixels::Colour::Palette &&
                row * image.height() <= MostForOneThread;
    const auto rows = static_cast<int>(std::max(BytesOfPiece / row, qint64(1)));
    m_rowsOfPiece = std::min(rows, image.height());
    m_pieces = (image.height() + m_rowsOfPiece - 1) / m_rowsOfPiece;
    m_threads = m_isFrame ? 1 : std::clamp(threads, 1, m_pieces);
    m_workers.resize(std::size_t(m_threads));
}

PngPixelWriter::~PngPixelWriter() = default;

bool PngPixelWriter::write(Progress &progress)
{
    WorkerPool pool(m_threads);
    m_level = chooseLevel(pool, progress);
    const int atOnce = std::min(m_pieces, m_threads * PiecesAtOnce);
    std::vector<Piece> pieces(static_cast<std::size_t>(atOnce));
    for (int first = 0; first < m_pieces; first += atOnce) {
        pieces.resize(static_cast<std::size_t>(std::min(atOnce, m_pieces - first)));
        if (!writeBatch(pool, first, pieces, progress))
            return false;
    }
    return true;
}

PngPixelWriter::Worker &PngPixelWriter::workerOf(int index)
{
    std::unique_ptr<Worker> &worker = m_workers[std::size_t(index)];
    if (!worker)
        worker = std::make_unique<Worker>(m_pixels, m_image.width(), m_rowsOfPiece);
    return *worker;
}

int PngPixelWriter::chooseLevel(WorkerPool &pool, Progress &progress)
{
    if (m_isFrame)
        return LevelOfFrames;
    const Levels &levels = levelsOf(m_pixels.colour);
    // From all over the picture.
    const int samples = std::min(Samples, m_pieces);
    const auto packed = [&](int level) {
        std::atomic<std::size_t> bytes = 0;
        pool.runPieces(samples, [&](int worker, int sample) {
            if (m_stopped)
                return;
            const int number = (2 * sample + 1) * m_pieces / (2 * samples);
            bytes += packedSample(worker, number, level);
            if (worker == 0 && !progress.step(0, m_pieces))
                m_stopped = true;
        });
        return double(bytes);
    };
    const double fast = packed(levels.fast);
    return packed(levels.slow) <= fast * levels.worthIt ? levels.slow : levels.fast;
}

std::size_t PngPixelWriter::packedSample(int index, int number, int level)
{
    Worker &worker = workerOf(index);
    const auto row = static_cast<qint64>(worker.filter.bytesOfRow());
    const auto rows = static_cast<int>(std::max(BytesOfSample / row, qint64(1)));
    const int from = number * m_rowsOfPiece;
    const int end = from + std::min({rows, m_rowsOfPiece, m_image.height() - from});
    worker.filter.filter(m_image, from, end, worker.rows.data());
    std::vector<unsigned char> packed;
    DeflatePieces deflate(level);
    const std::size_t size = static_cast<std::size_t>(row) * std::size_t(end - from);
    return deflate.pack(worker.rows.data(), size, true, packed) ? packed.size() : size;
}

// Makes pieces from `first` on and writes them.
bool PngPixelWriter::writeBatch(WorkerPool &pool, int first, std::vector<Piece> &pieces,
                                Progress &progress)
{
    std::atomic<int> done = 0;
    pool.runPieces(static_cast<int>(pieces.size()), [&](int worker, int piece) {
        if (m_stopped)
            return;
        make(worker, first + piece, pieces[std::size_t(piece)]);
        ++done;
        // The caller's thread is the first; it alone tells how far the work is.
        if (worker == 0 && !progress.step(first + done, m_pieces))
            m_stopped = true;
    });
    int number = first;
    for (Piece &piece : pieces)
        if (m_stopped || !put(piece, number++))
            return false;
    return true;
}

void PngPixelWriter::make(int index, int number, Piece &piece)
{
    Worker &worker = workerOf(index);
    if (!worker.deflate)
        worker.deflate = std::make_unique<DeflatePieces>(m_level);
    const int from = number * m_rowsOfPiece;
    const int end = std::min(from + m_rowsOfPiece, m_image.height());
    piece.size = worker.filter.bytesOfRow() * std::size_t(end - from);
    worker.filter.filter(m_image, from, end, worker.rows.data());
    piece.sum = libdeflate_adler32(1, worker.rows.data(), piece.size);
    piece.chunk = {0, 0, 0, 0, 'I', 'D', 'A', 'T'};
    if (number == 0) // deflate, its widest window, packed fast
        piece.chunk.insert(piece.chunk.end(), {0x78, 0x5E});
    piece.good = worker.deflate->pack(worker.rows.data(), piece.size,
                                      number == m_pieces - 1, piece.chunk);
}

bool PngPixelWriter::put(Piece &piece, int number)
{
    constexpr std::size_t Length = 4, Type = 4;
    if (!piece.good)
        return false;
    m_sum = number == 0 ? piece.sum
                        : static_cast<std::uint32_t>(adler32_combine(
                              m_sum, piece.sum, static_cast<z_off_t>(piece.size)));
    std::vector<unsigned char> &chunk = piece.chunk;
    if (number == m_pieces - 1)
        appendNumber(chunk, m_sum);
    putNumber(chunk.data(), static_cast<std::uint32_t>(chunk.size() - Length - Type));
    appendNumber(chunk,
                 libdeflate_crc32(0, chunk.data() + Length, chunk.size() - Length));
    const auto size = static_cast<qint64>(chunk.size());
    return m_device.write(reinterpret_cast<const char *>(chunk.data()), size) == size;
}

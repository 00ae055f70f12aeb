#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

/// What a piece of work asks between two steps of its own whether it may go on.
///
/// On the caller's thread it tells the caller how far all are; on others it looks whether
/// somebody has asked to stop.
class PieceWatch {
public:
    struct Shared {
        std::atomic<bool> stop = false;
        std::atomic<int> done = 0;
        int pieces = 0;
    };
    /// Steps of the caller's progress that the work stands for.
    struct Share {
        qint64 first = 0;
        qint64 last = 1000;
        qint64 of = 1000;
    };

    PieceWatch(Shared &shared, Progress *progress, const Share &share)
        : m_shared(shared), m_progress(progress), m_share(share)
    {
    }
    [[nodiscard]] bool mayGoOn();
    /// The same for GDAL, with the object as its data.
    static int gdalStep(double share, const char *text, void *self);

private:
    Shared &m_shared;
    Progress *m_progress; // null on other threads than the caller's
    Share m_share;
    std::chrono::steady_clock::time_point m_told;
};

/// One thread's means to do pieces of work: datasets belong to the thread that opened
/// them.
class PieceWorker {
public:
    virtual ~PieceWorker() = default;
    [[nodiscard]] virtual Result<bool> work(int piece, PieceWatch &watch) = 0;
};

/// Makes the means of a thread, on that thread.
using MakePieceWorker = std::function<Result<std::unique_ptr<PieceWorker>>()>;

/// Works on pieces 0 to pieces - 1 on all cores, lower ones first. Fails with what the
/// first piece that failed said, or stopped.
[[nodiscard]] Result<bool> workOnPieces(int pieces, const MakePieceWorker &make,
                                        Progress &progress,
                                        const PieceWatch::Share &share = {});

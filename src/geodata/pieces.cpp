#include "geodata/pieces.h"

#include "base/workerpool.h"

#include <QObject>

#include <algorithm>
#include <mutex>
#include <new>
#include <optional>

namespace {

// Often enough to stop at once, seldom enough not to cost anything.
constexpr std::chrono::milliseconds BetweenLooks{5};
// Each has buffers and open files of its own.
constexpr int MostThreads = 16;

int threadsFor(int pieces)
{
    const int cores = static_cast<int>(std::thread::hardware_concurrency());
    return std::clamp(std::min(cores, pieces), 1, MostThreads);
}

// What is common to the threads of one call.
class Crew {
public:
    Crew(int pieces, Progress &progress, const PieceWatch::Share &share)
        : m_progress(progress), m_share(share)
    {
        m_shared.pieces = pieces;
    }
    void serve(int thread, const MakePieceWorker &make)
    {
        Result<bool> done = attemptInMemory(thread, make);
        if (done)
            return;
        m_shared.stop = true;
        const std::lock_guard lock(m_mutex);
        // That one was stopped because another failed is no news.
        if (!m_failure || (m_failure->stopped && !done.error().stopped))
            m_failure = done.error();
    }
    [[nodiscard]] Result<bool> outcome() const
    {
        if (m_failure)
            return tl::unexpected(*m_failure);
        return true;
    }

private:
    Result<bool> attemptInMemory(int thread, const MakePieceWorker &make)
    {
        try {
            return attempt(thread, make);
        } catch (const std::bad_alloc &) {
            return failed(QObject::tr("There is not enough memory to read the terrain."));
        }
    }
    Result<bool> attempt(int thread, const MakePieceWorker &make)
    {
        PieceWatch watch(m_shared, thread == 0 ? &m_progress : nullptr, m_share);
        std::unique_ptr<PieceWorker> worker;
        for (int piece = m_next++; piece < m_shared.pieces; piece = m_next++) {
            if (!watch.mayGoOn())
                return stopped();
            if (!worker) {
                Result<std::unique_ptr<PieceWorker>> made = make();
                if (!made)
                    return tl::unexpected(made.error());
                worker = std::move(*made);
            }
            Result<bool> done = worker->work(piece, watch);
            if (!done)
                return done;
            ++m_shared.done;
        }
        // The caller hears of a stop until the others have ended too.
        while (thread == 0 && m_shared.done < m_shared.pieces) {
            if (!watch.mayGoOn())
                return stopped();
            std::this_thread::sleep_for(BetweenLooks);
        }
        return true;
    }

    Progress &m_progress;
    PieceWatch::Share m_share;
    PieceWatch::Shared m_shared;
    std::atomic<int> m_next = 0;
    std::mutex m_mutex;
    std::optional<Failure> m_failure;
};

} // namespace

bool PieceWatch::mayGoOn()
{
    if (m_shared.stop)
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (!m_progress || now - m_told < BetweenLooks)
        return true;
    m_told = now;
    const qint64 done =
        (m_share.last - m_share.first) * m_shared.done / std::max(m_shared.pieces, 1);
    if (!m_progress->step(m_share.first + done, m_share.of))
        m_shared.stop = true;
    return !m_shared.stop;
}

int PieceWatch::gdalStep(double, const char *, void *self)
{
    return static_cast<PieceWatch *>(self)->mayGoOn() ? 1 : 0;
}

Result<bool> workOnPieces(int pieces, const MakePieceWorker &make, Progress &progress,
                          const PieceWatch::Share &share)
{
    Crew crew(pieces, progress, share);
    WorkerPool pool(threadsFor(pieces));
    pool.run([&](int thread) { crew.serve(thread, make); });
    return crew.outcome();
}

#include "terrain/rowwork.h"

#include "base/progress.h"
#include "base/workerpool.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

constexpr qint64 Steps = 10000; // of a whole work, as its Progress hears of them

} // namespace

int usualThreads()
{
    return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

bool Stretch::tell(double share) const
{
    return progress.step(qint64((from + share * (to - from)) * double(Steps)), Steps);
}

Stretch Stretch::part(double first, double last) const
{
    return {progress, from + first * (to - from), from + last * (to - from)};
}

bool workOnPieces(WorkerPool &pool, int count, int piece, const Stretch &stretch,
                  const std::function<void(int, int)> &work)
{
    if (count <= 0)
        return stretch.tell(1.0);
    const int pieces = (count + piece - 1) / piece;
    std::atomic<bool> isStopped{!stretch.tell(0.0)};
    std::atomic<int> done{0};
    // Only the caller's own thread, the first, may tell and be asked.
    pool.runPieces(pieces, [&](int worker, int i) {
        if (isStopped)
            return;
        work(i * piece, std::min((i + 1) * piece, count));
        ++done;
        if (worker == 0 && !stretch.tell(double(done) / pieces))
            isStopped = true;
    });
    return !isStopped;
}

#pragma once

#include "base/progress.h"

#include <functional>

class WorkerPool;

/// Threads that do the work of this folder: as many as the machine has cores.
[[nodiscard]] int usualThreads();

/// A stretch of a longer work, told to its Progress as a share of the whole.
struct Stretch {
    Progress &progress;
    double from = 0.0; ///< shares of the whole work
    double to = 1.0;

    /// Tells that a share of this stretch is done; false: stop.
    [[nodiscard]] bool tell(double share) const;
    /// A part of this stretch.
    [[nodiscard]] Stretch part(double first, double last) const;
};

/// A stretch as those know it who only know a Progress.
class StretchProgress final : public Progress {
public:
    explicit StretchProgress(const Stretch &stretch) : m_stretch(stretch) {}

    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        m_isStopped =
            m_isStopped || !m_stretch.tell(of > 0 ? double(done) / double(of) : 0.0);
        return !m_isStopped;
    }
    [[nodiscard]] bool isStopped() const { return m_isStopped; }

private:
    const Stretch m_stretch;
    bool m_isStopped = false;
};

/// Calls work(first, last) for pieces that make up [0, count), on all threads of a pool,
/// and tells how far it is. Pieces are small, so that a stop comes soon; none depends on
/// another. False if it was asked to stop, with pieces left out.
[[nodiscard]] bool workOnPieces(WorkerPool &pool, int count, int piece,
                                const Stretch &stretch,
                                const std::function<void(int first, int last)> &work);

#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Threads that do one piece of work together; the caller is the first of them.
class WorkerPool {
public:
    /// At least one thread.
    explicit WorkerPool(int threads);
    ~WorkerPool();
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    [[nodiscard]] int size() const { return static_cast<int>(m_threads.size()) + 1; }
    /// Calls work(0) to work(size() - 1), each on a thread of its own, and returns when
    /// all have ended. Throws std::bad_alloc if one of them had too little memory.
    void run(const std::function<void(int worker)> &work);
    /// Calls work(worker, 0) to work(worker, pieces - 1), each once. The threads take the
    /// pieces in turn as they become free: one whose core is wanted elsewhere takes
    /// fewer, though it has to wake before the call returns.
    void runPieces(int pieces, const std::function<void(int worker, int piece)> &work);

private:
    void serve(int worker);
    void attempt(const std::function<void(int)> &work, int worker);

    std::mutex m_mutex;
    std::condition_variable m_begin, m_end;
    const std::function<void(int)> *m_work = nullptr;
    // Changed under the lock, looked at without it by threads that wait awake.
    std::atomic<int> m_round = 0;   // counts the pieces of work
    std::atomic<int> m_running = 0; // threads still at this one
    std::atomic<bool> m_quit = false;
    std::atomic<bool> m_outOfMemory = false; // at this piece of work
    std::vector<std::thread> m_threads;
};

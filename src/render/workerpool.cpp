#include "render/workerpool.h"

#include <chrono>
#include <system_error>

namespace {

using Clock = std::chrono::steady_clock;

// Waking a thread takes as long as a small piece of work, so it stays awake for a while
// before it sleeps, and leaves its core to whoever else wants it.
constexpr std::chrono::microseconds AwakeFor{200};

template <typename Condition> void waitAwake(const Condition &met)
{
    const auto end = Clock::now() + AwakeFor;
    while (!met() && Clock::now() < end)
        std::this_thread::yield();
}

} // namespace

WorkerPool::WorkerPool(int threads)
{
    try {
        for (int worker = 1; worker < threads; ++worker)
            m_threads.emplace_back([this, worker] { serve(worker); });
    } catch (const std::system_error &) {
        // The system gives no more: those that are there do the work.
    }
}

WorkerPool::~WorkerPool()
{
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_begin.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
}

void WorkerPool::run(const std::function<void(int)> &work)
{
    if (m_threads.empty())
        return work(0);
    {
        const std::lock_guard lock(m_mutex);
        m_work = &work;
        m_running = size() - 1;
        ++m_round;
    }
    m_begin.notify_all();
    work(0);
    const auto ended = [this] { return m_running == 0; };
    waitAwake(ended);
    std::unique_lock lock(m_mutex);
    m_end.wait(lock, ended);
}

void WorkerPool::runPieces(int pieces, const std::function<void(int, int)> &work)
{
    if (pieces == 1)
        return work(0, 0);
    std::atomic<int> next = 0;
    run([&](int worker) {
        for (int piece = next++; piece < pieces; piece = next++)
            work(worker, piece);
    });
}

void WorkerPool::serve(int worker)
{
    int served = 0;
    const auto called = [&] { return m_quit || m_round != served; };
    while (true) {
        waitAwake(called);
        std::unique_lock lock(m_mutex);
        m_begin.wait(lock, called);
        if (m_quit)
            return;
        served = m_round;
        const std::function<void(int)> &work = *m_work;
        lock.unlock();
        work(worker);
        lock.lock();
        if (--m_running == 0)
            m_end.notify_one();
    }
}

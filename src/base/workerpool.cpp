#include "base/workerpool.h"

#include <algorithm>
#include <chrono>
#include <new>
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
    // Those that are there do the work if the system gives no more.
    try {
        m_threads.reserve(static_cast<std::size_t>(std::max(threads - 1, 0)));
        for (int worker = 1; worker < threads; ++worker)
            m_threads.emplace_back([this, worker] { serve(worker); });
    } catch (const std::system_error &) {
    } catch (const std::bad_alloc &) {
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
    attempt(work, 0);
    const auto ended = [this] { return m_running == 0; };
    waitAwake(ended);
    std::unique_lock lock(m_mutex);
    m_end.wait(lock, ended);
    if (m_outOfMemory.exchange(false))
        throw std::bad_alloc();
}

// An exception that left a thread would end the program: the caller throws it again.
void WorkerPool::attempt(const std::function<void(int)> &work, int worker)
{
    try {
        work(worker);
    } catch (const std::bad_alloc &) {
        m_outOfMemory = true;
    }
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
        attempt(work, worker);
        lock.lock();
        if (--m_running == 0)
            m_end.notify_one();
    }
}

#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <thread>

/// What work that others look after shares with them.
struct AbandonableState {
    std::atomic<bool> stopped = false; ///< nobody waits any more
    std::atomic<qint64> done = 0;      ///< steps that lie behind the work
};

/// Runs work that cannot be stopped everywhere, such as the sorting of a library, so that
/// who waits can: it has a thread of its own, which is left to itself when `progress`
/// asks to stop. `work` owns all that it uses. It returns nothing where it saw that it
/// was stopped; without memory for it std::bad_alloc is thrown here.
template <typename T>
[[nodiscard]] Result<T>
runAbandonable(std::function<std::optional<T>(AbandonableState &)> work, qint64 steps,
               Progress &progress)
{
    struct Shared {
        AbandonableState state;
        std::mutex mutex;
        std::condition_variable ended;
        bool hasEnded = false;
        bool isOutOfMemory = false;
        std::optional<T> result;
    };
    const auto shared = std::make_shared<Shared>();
    std::thread([shared, task = std::move(work)]() mutable {
        std::optional<T> result;
        bool isOutOfMemory = false;
        try {
            result = task(shared->state);
        } catch (const std::bad_alloc &) {
            isOutOfMemory = true;
        }
        task = nullptr;
        const std::lock_guard lock(shared->mutex);
        shared->result = std::move(result);
        shared->isOutOfMemory = isOutOfMemory;
        shared->hasEnded = true;
        shared->ended.notify_one();
    }).detach();

    constexpr std::chrono::milliseconds Look{15};
    std::unique_lock lock(shared->mutex);
    while (!shared->ended.wait_for(lock, Look, [&] { return shared->hasEnded; })) {
        if (!progress.step(std::min(shared->state.done.load(), steps), steps)) {
            shared->state.stopped = true;
            return stopped();
        }
    }
    if (shared->isOutOfMemory)
        throw std::bad_alloc();
    if (!shared->result)
        return stopped();
    return std::move(*shared->result);
}

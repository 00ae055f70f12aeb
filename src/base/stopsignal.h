#pragma once

#include <QObject>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// Turns SIGINT and SIGTERM into a Qt signal, emitted when events are pumped.
///
/// Who does not come to an end soon after, since it waits for a file or is in the midst
/// of one, is ended by the last resort, called on a thread of its own. One object at a
/// time; the former handlers come back when it goes.
class StopSignal : public QObject {
    Q_OBJECT

public:
    /// `lastResort` must end the program.
    explicit StopSignal(std::function<void()> lastResort);
    ~StopSignal() override;
    /// The work has come to its end, and its outcome is known: signals that come from now
    /// on find nothing to stop.
    void end();

signals:
    void stopRequested();

private:
    void watch();

    const std::function<void()> m_lastResort;
    std::mutex m_mutex;
    std::condition_variable m_ending;
    bool m_ended = false; // under the mutex
    std::thread m_watcher;
    bool m_installed = false;
};

#pragma once

#include "base/progress.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <thread>

/// One piece of work at a time beside the window: the newest takes the place of the one
/// before, which is stopped. Its end stops it, too, and waits for that.
class BackgroundWork : public QObject {
    Q_OBJECT

public:
    explicit BackgroundWork(QObject *parent = nullptr);
    ~BackgroundWork() override;

    /// Does `work` on a thread of its own, with a Progress that tells when to stop.
    /// `done` is called on the thread of this object, unless it was stopped before. Both
    /// may use what they share only one after the other. Work that runs out of memory has
    /// no end but `done`.
    void begin(const std::function<void(Progress &)> &work,
               const std::function<void()> &done);
    /// Stops what is on; nothing more of it is heard.
    void stop();
    [[nodiscard]] bool isOn() const { return m_on; }

private:
    std::thread m_thread;
    std::atomic<bool> m_toStop = false;
    bool m_on = false;
    int m_number = 0; // of the work that is on, or was
};

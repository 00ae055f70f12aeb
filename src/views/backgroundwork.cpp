#include "views/backgroundwork.h"

#include <new>
#include <system_error>

namespace {

class UntilStopped final : public Progress {
public:
    explicit UntilStopped(const std::atomic<bool> &toStop) : m_toStop(toStop) {}
    [[nodiscard]] bool step(qint64, qint64) override { return !m_toStop; }

private:
    const std::atomic<bool> &m_toStop;
};

void attempt(const std::function<void(Progress &)> &work, const std::atomic<bool> &toStop)
{
    UntilStopped progress(toStop);
    try {
        work(progress);
    } catch (const std::bad_alloc &) {
        return; // nobody beyond this could hear of it
    }
}

} // namespace

BackgroundWork::BackgroundWork(QObject *parent) : QObject(parent) {}

BackgroundWork::~BackgroundWork() { stop(); }

void BackgroundWork::begin(const std::function<void(Progress &)> &work,
                           const std::function<void()> &done)
{
    stop();
    m_toStop = false;
    m_on = true;
    const int number = ++m_number;
    const auto end = [this, number, done] {
        if (number != m_number || !m_on)
            return;
        m_on = false;
        done();
    };
    try {
        m_thread = std::thread([this, work, end] {
            attempt(work, m_toStop);
            QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
        });
    } catch (const std::system_error &) { // no thread: it is done here
        attempt(work, m_toStop);
        end();
    }
}

void BackgroundWork::stop()
{
    m_toStop = true;
    if (m_thread.joinable())
        m_thread.join();
    m_on = false;
}

#include "batch/stopsignal.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 2> Signals{SIGINT, SIGTERM};

// A handler may only write to what was made ready before.
std::array<int, 2> stopPipe{-1, -1};
volatile std::sig_atomic_t stopRaised = 0;
std::array<struct sigaction, 2> former{};

extern "C" void onStopSignal(int)
{
    stopRaised = 1;
    const char byte = 0;
    // A full pipe has said all there is to say.
    [[maybe_unused]] const auto written = ::write(stopPipe[1], &byte, 1);
}

} // namespace

StopSignal::StopSignal()
{
    stopRaised = 0;
    if (::pipe2(stopPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(stopPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        emit stopRequested();
    });
    struct sigaction action {};
    action.sa_handler = onStopSignal;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < Signals.size(); ++i)
        ::sigaction(Signals[i], &action, &former[i]);
}

StopSignal::~StopSignal()
{
    if (!m_notifier)
        return;
    for (std::size_t i = 0; i < Signals.size(); ++i)
        ::sigaction(Signals[i], &former[i], nullptr);
    m_notifier.reset();
    for (int &end : stopPipe) {
        ::close(end);
        end = -1;
    }
}

bool StopSignal::raised() const { return stopRaised != 0; }

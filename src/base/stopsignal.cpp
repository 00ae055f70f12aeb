#include "base/stopsignal.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 2> Signals{SIGINT, SIGTERM};
// A run that looks at its flag in each row ends sooner; a stop takes 50 ms at most.
constexpr std::chrono::milliseconds Grace(10);

// What comes through the pipe.
constexpr char Stop = 's';
constexpr char Quit = 'q';

// A handler may only write to what was made ready before.
std::array<int, 2> stopPipe{-1, -1};
std::array<struct sigaction, 2> former{};

void send(char message)
{
    // A full pipe has said all there is to say.
    [[maybe_unused]] const auto written = ::write(stopPipe[1], &message, 1);
}

extern "C" void onStopSignal(int)
{
    const int error = errno;
    send(Stop);
    errno = error;
}

char receive()
{
    char message = Quit;
    ssize_t got = 0;
    do {
        got = ::read(stopPipe[0], &message, 1);
    } while (got < 0 && errno == EINTR);
    return got == 1 ? message : Quit;
}

} // namespace

StopSignal::StopSignal(std::function<void()> lastResort)
    : m_lastResort(std::move(lastResort))
{
    if (::pipe2(stopPipe.data(), O_CLOEXEC) != 0)
        return;
    ::fcntl(stopPipe[1], F_SETFL, O_NONBLOCK); // a handler must not wait
    try {
        m_watcher = std::thread([this] { watch(); });
    } catch (const std::system_error &) {
        return; // without a watcher the signals end the program as ever
    }
    struct sigaction action {};
    action.sa_handler = onStopSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < Signals.size(); ++i)
        ::sigaction(Signals[i], &action, &former[i]);
    m_installed = true;
}

StopSignal::~StopSignal()
{
    end();
    for (std::size_t i = 0; m_installed && i < Signals.size(); ++i)
        ::sigaction(Signals[i], &former[i], nullptr);
    for (int &pipeEnd : stopPipe) {
        if (pipeEnd >= 0)
            ::close(pipeEnd);
        pipeEnd = -1;
    }
}

void StopSignal::end()
{
    if (!m_watcher.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_ending.notify_all();
    send(Quit);
    m_watcher.join();
}

void StopSignal::watch()
{
    if (receive() != Stop)
        return;
    emit stopRequested(); // queued for the threads of those who listen
    std::unique_lock lock(m_mutex);
    if (!m_ending.wait_for(lock, Grace, [this] { return m_ended; }))
        m_lastResort();
}

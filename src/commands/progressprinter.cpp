#include "commands/progressprinter.h"

#include "commands/console.h"

#include <algorithm>

namespace {

constexpr qint64 ShortRun = 1000; // ms, of which nothing is told
constexpr qint64 Redraw = 100;    // ms between two lines on a terminal
constexpr int Tenth = 10;         // percent

int percentOf(qint64 done, qint64 of)
{
    if (of <= 0)
        return 0;
    return static_cast<int>(100.0 * double(std::clamp<qint64>(done, 0, of)) / double(of));
}

} // namespace

ProgressPrinter::ProgressPrinter(Console &console, const std::atomic<bool> &stopRequested)
    : m_console(console), m_stopRequested(stopRequested)
{
    m_clock.start();
}

bool ProgressPrinter::step(qint64 done, qint64 of)
{
    if (m_stopRequested)
        return false;
    const int percent = std::max(percentOf(done, of), m_percent);
    if (percent == m_percent)
        return true;
    m_percent = percent;
    const qint64 now = m_clock.elapsed();
    if (!m_console.isTerminal()) {
        if (now > ShortRun)
            tellTenths(percent / Tenth);
    } else if (m_lastTold < 0 || now - m_lastTold >= Redraw) {
        m_console.progress(QStringLiteral("%1 %").arg(percent));
        m_lastTold = now;
    }
    return true;
}

void ProgressPrinter::end()
{
    if (m_console.isTerminal())
        m_console.endProgress();
    else if (m_clock.elapsed() > ShortRun)
        tellTenths(100 / Tenth);
}

void ProgressPrinter::tellTenths(int upTo)
{
    while (m_tenthsTold < upTo)
        m_console.progress(QStringLiteral("%1 %").arg(++m_tenthsTold * Tenth));
}

PartOfProgress::PartOfProgress(Progress &whole, double from, double to)
    : m_whole(whole), m_from(from), m_to(to)
{
}

bool PartOfProgress::step(qint64 done, qint64 of)
{
    constexpr qint64 Whole = 1000000;
    const double share = of > 0 ? std::clamp(double(done) / double(of), 0.0, 1.0) : 0.0;
    const double place = m_from + (m_to - m_from) * share;
    return m_whole.step(static_cast<qint64>(place * double(Whole)), Whole);
}

#pragma once

#include "base/progress.h"

#include <QElapsedTimer>

#include <atomic>

class Console;

/// Tells on the console how far a command is, and asks it to end once the program is
/// stopped. On a terminal one line is rewritten some times a second; elsewhere each tenth
/// of the work is a line, if the work takes more than a second.
class ProgressPrinter final : public Progress {
public:
    /// Both are borrowed.
    ProgressPrinter(Console &console, const std::atomic<bool> &stopRequested);

    [[nodiscard]] bool step(qint64 done, qint64 of) override;
    /// All of the work is done.
    void end();

private:
    void tellTenths(int upTo);

    Console &m_console;
    const std::atomic<bool> &m_stopRequested;
    QElapsedTimer m_clock;
    qint64 m_lastTold = -1; // ms; on a terminal
    int m_percent = -1;     // farthest so far
    int m_tenthsTold = 0;
};

/// A part of a longer work, told as the share of the whole that it is.
class PartOfProgress final : public Progress {
public:
    /// From one share of the whole, which is 1, to another.
    PartOfProgress(Progress &whole, double from, double to);

    [[nodiscard]] bool step(qint64 done, qint64 of) override;

private:
    Progress &m_whole;
    const double m_from;
    const double m_to;
};

#pragma once

#include "base/progress.h"
#include "commands/console.h"

/// What a command works with beside its arguments.
class CommandWork {
public:
    /// Both are borrowed.
    CommandWork(Console &console, Progress &progress)
        : m_console(console), m_progress(progress)
    {
    }

    /// Where messages go.
    [[nodiscard]] Console &console() const { return m_console; }
    /// Told how far the work is; says when the program is to stop.
    [[nodiscard]] Progress &progress() const { return m_progress; }

private:
    Console &m_console;
    Progress &m_progress;
};

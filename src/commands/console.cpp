#include "commands/console.h"

#include "base/terminal.h"

#include <cstdio>

#include <poll.h>
#include <unistd.h>

namespace {

// Back to the first column, and nothing behind it.
constexpr char EraseLine[] = "\r\x1b[K";

void writePart(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
}

bool takesMore()
{
    pollfd descriptor{STDERR_FILENO, POLLOUT, 0};
    return ::poll(&descriptor, 1, 0) > 0 && (descriptor.revents & POLLOUT) != 0;
}

} // namespace

Console::Console(Talk talk) : m_talk(talk), m_isTerminal(::isatty(STDERR_FILENO) != 0) {}

void Console::clearLine()
{
    if (m_lineStands)
        writePart(EraseLine);
    m_lineStands = false;
}

void Console::error(const QString &text)
{
    const std::lock_guard lock(m_mutex);
    clearLine();
    tellError(text);
}

void Console::question(const QString &text, bool yes, const QString &option)
{
    error(yes ? QStringLiteral("%1\nYes.").arg(text)
              : QStringLiteral("%1\nNo; --%2 answers Yes.").arg(text, option));
}

void Console::message(const QString &text)
{
    if (tellsAll())
        error(text);
}

void Console::progress(const QString &text)
{
    if (!tellsAll())
        return;
    const std::lock_guard lock(m_mutex);
    if (!m_isTerminal)
        return tellError(text);
    writePart(EraseLine + text.toLocal8Bit());
    m_lineStands = true;
}

void Console::endProgress()
{
    const std::lock_guard lock(m_mutex);
    clearLine();
}

void Console::lastWord(const QString &text)
{
    if (!m_mutex.try_lock()) // and never unlocked: it is the last
        return;
    if (!takesMore())
        return;
    clearLine();
    tellError(text);
}

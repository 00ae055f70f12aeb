#include "base/terminal.h"

#include <cerrno>
#include <cstdio>

namespace {

bool write(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size &&
           std::fflush(stream) == 0;
}

// Whether standard output still takes what is written.
bool outputIsOpen = true;

} // namespace

void tellError(const QString &line) { write(stderr, line + QLatin1Char('\n')); }

void tellProgress(const QString &line)
{
    if (outputIsOpen)
        outputIsOpen = answer(line + QLatin1Char('\n'));
}

bool answer(const QString &text)
{
    if (write(stdout, text))
        return true;
    tellError(QStringLiteral("Cannot write to standard output: %1.")
                  .arg(qt_error_string(errno)));
    return false;
}

// Debug lines, what the toolkit says of a session without a desktop, and the nothing that
// it says of a JPEG file that takes no more, are no news.
void logToTerminal(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg ||
        text.startsWith(QLatin1String("QStandardPaths:")) ||
        text.startsWith(QLatin1String("Bogus message code")))
        return;
    tellError(text);
}

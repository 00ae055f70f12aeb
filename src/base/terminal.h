#pragma once

#include <QString>
#include <QtGlobal>

/// What a program without a window says to its caller. Lines are written at once, also
/// through a pipe.

/// A line on standard error.
void tellError(const QString &line);

/// A line on standard output. A stream that takes no more is told on standard error,
/// once; the work goes on without it.
void tellProgress(const QString &line);

/// The answer to a question such as --help, on standard output. False if it did not get
/// there, which has been told.
[[nodiscard]] bool answer(const QString &text);

/// For qInstallMessageHandler(): what the toolkit says goes to standard error, but for
/// what is no news for a terminal.
void logToTerminal(QtMsgType type, const QMessageLogContext &context,
                   const QString &text);

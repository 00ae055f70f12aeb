#pragma once

#include <QByteArray>
#include <QString>

struct stat;

// What it takes to put a new file in the place of an earlier one.

/// The file that a chain of links names, which need not exist.
[[nodiscard]] QString linkTarget(const QString &name);

/// Whether a file that is there may be written; replacing it asks for leave to write the
/// folder alone. False with errno.
[[nodiscard]] bool mayBeWritten(const QByteArray &path);

/// Gives a new file the owner and the permissions of the earlier one, as far as the
/// system allows.
void takeOver(int file, const struct stat &earlier);

#pragma once

#include <QString>

#include <functional>

class QIODevice;

/// Writes a file that is whole or absent: it grows under a temporary name in the same
/// folder and takes the place of an earlier one only when `write` has succeeded. What
/// is no regular file, such as a pipe or a device, is written in place.
///
/// False with the reason in `error`, if that is not null; an earlier file then stays.
[[nodiscard]] bool writeWholeFile(const QString &name,
                                  const std::function<bool(QIODevice &)> &write,
                                  QString *error = nullptr);

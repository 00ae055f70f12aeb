#pragma once

#include <QString>

#include <functional>

class QIODevice;

/// Writes a file that is whole or absent: it grows beside its place, without a name
/// where the file system allows that, and takes the place of an earlier one only when
/// `write` has succeeded and the disk has all of it. Links are followed to the file
/// that they name. What is no regular file, such as a pipe or a device, is written in
/// place; so is a file whose folder takes no new ones, but there the earlier contents
/// are put back when the new ones do not fit.
///
/// False with the system's reason in `error`, if that is not null, without a full stop;
/// it is empty where `write` gave up by itself. An earlier file then stays as it was.
[[nodiscard]] bool writeWholeFile(const QString &name,
                                  const std::function<bool(QIODevice &)> &write,
                                  QString *error = nullptr);

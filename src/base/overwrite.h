#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

/// Writes new contents into a file that is there, for a folder that takes no new file.
///
/// The new contents are made whole in memory first, the room for them is reserved on the
/// disk, and the earlier ones are kept until the new ones are on the disk. Where those
/// do not fit after all, the earlier ones are put back. False with the reason in `error`.
[[nodiscard]] bool overwriteFile(const QByteArray &path,
                                 const std::function<bool(QIODevice &)> &write,
                                 QString *error);

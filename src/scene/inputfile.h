#pragma once

#include <QString>

/// The file that an input name of a scenery stands for: the name itself, or, if
/// it is relative and not found from the current folder, the file of that name
/// beside the scenery. `sceneryFolder` is empty while the scenery has no file.
[[nodiscard]] QString findInputFile(const QString &name, const QString &sceneryFolder);

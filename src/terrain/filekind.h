#pragma once

#include <QString>

/// Why a name cannot be read as a file: ""NAME" is a pipe, not a file." To open a pipe
/// waits for somebody to write, and a device may never end. Empty for files, for what is
/// not there, and for names of GDAL's own.
[[nodiscard]] QString notAFileText(const QString &name);

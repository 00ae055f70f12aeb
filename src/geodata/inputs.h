#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QStringList>

/// The names under which GDAL reads what a user has given: files as they are; a folder or
/// an archive (zip, tar, gz) by the elevation rasters in it, in the order of their names.
///
/// In folders and archives colour pictures, such as the previews that lie beside tiles,
/// are passed over. Fails on a name that is not there, and on a folder or an archive in
/// which nothing can be read.
[[nodiscard]] Result<QStringList> expandInputs(const QStringList &given,
                                               Progress &progress);

/// Whether a file, a folder or an archive holds elevations; looks at heads only.
[[nodiscard]] bool holdsElevations(const QString &name);

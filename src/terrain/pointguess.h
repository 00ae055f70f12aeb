#pragma once

#include "base/result.h"
#include "terrain/pointoptions.h"
#include "terrain/pointtext.h"

#include <QStringList>

class QIODevice;

/// The first lines of a file of points, split, and how they are read.
struct PointPreview {
    static constexpr int Rows = 10;

    PointFormat format;      ///< guessed, but for what the options say
    QStringList names;       ///< of the columns, where the file has some
    QList<QStringList> rows; ///< of the first points
    int columns = 0;         ///< of a row
};

/// Looks at the first lines of a text. Fails with a sentence that begins with `name`
/// where they hold no points.
[[nodiscard]] Result<PointPreview> previewPoints(QIODevice &device, const QString &name,
                                                 const PointOptions &options);

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
    QList<QStringList> rows; ///< of the first points, or of what the options leave
    int columns = 0;         ///< of a row
    QString fault;           ///< why the lines cannot be read so; empty where they can
};

/// Looks at the first lines of a text, also where they cannot be read as the options
/// say: a sentence that begins with `name` tells why then.
[[nodiscard]] PointPreview lookAtPoints(QIODevice &device, const QString &name,
                                        const PointOptions &options);

/// A preview whose fault is a failure.
[[nodiscard]] Result<PointPreview> orFault(PointPreview preview);

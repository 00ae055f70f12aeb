#pragma once

#include "base/result.h"
#include "scene/scenerydocument.h"

#include <QList>
#include <QString>
#include <QStringList>

class QFileDevice;

/// What a scenery file gave. Lines that are not accepted do not end the reading.
struct SceneryReading {
    SceneryDocument document;
    QString complaint; ///< about the last line that was not accepted; empty if all were
    bool headSeen = false;
    /// One entry for each line of the obsolete output format: whether it was selected.
    QList<bool> obsoleteFormats;
    /// A sentence for each line of the extras that is not understood or was limited; such
    /// lines are no complaint.
    QStringList extrasTold;
};

/// Reads an open scenery file. Keys that it leaves out keep the values of `present`, the
/// lists begin anew, the extras at their defaults. Fails, with nothing read, where the
/// file is too large.
[[nodiscard]] Result<SceneryReading> readScenery(QFileDevice &file,
                                                 const SceneryDocument &present);

/// What is told of a line of the obsolete output format, and under which title.
[[nodiscard]] QString obsoleteFormatTitle();
[[nodiscard]] QString obsoleteFormatText(bool selected);

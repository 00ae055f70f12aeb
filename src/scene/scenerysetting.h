#pragma once

#include "base/result.h"

#include <QString>
#include <QStringList>

struct SceneryDocument;

/// One key of a scenery with a value for it, as a command line gives them.
struct ScenerySetting {
    QString key;
    QString value;
};

/// Splits KEY=VALUE at its first `=`. Fails with a sentence that begins with the text.
[[nodiscard]] Result<ScenerySetting> settingOf(const QString &text);

/// Sets a told key or an extra from the text that a file would hold for it, but strictly:
/// what is not known, not a value or out of the range of the form is refused with a
/// sentence that begins with the key, and changes nothing.
///
/// Numbers have a point and may have an exponent; an empty value stands only where the
/// default is empty. A key of a waypoint or control point changes one that is there.
[[nodiscard]] Result<void> applySetting(SceneryDocument &scenery,
                                        const ScenerySetting &setting);

/// Whether a key is one of a waypoint or a control point, of which only a scenery tells
/// whether it has one.
[[nodiscard]] bool isPointKey(const QString &key);

#pragma once

#include <QString>

/// A name as the text of a menu entry: its ampersands show as themselves and make no
/// accelerators.
[[nodiscard]] inline QString menuText(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

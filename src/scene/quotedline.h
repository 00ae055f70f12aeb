#pragma once

#include <QString>

/// As much of a line of a file as a message can show, without what cannot be shown.
[[nodiscard]] inline QString beginningOf(const QString &line)
{
    constexpr qsizetype MostQuoted = 200;
    QString text = line.left(MostQuoted);
    for (QChar &c : text)
        if (!c.isPrint())
            c = QChar::ReplacementCharacter;
    return text;
}

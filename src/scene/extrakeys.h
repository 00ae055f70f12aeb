#pragma once

#include "scene/sceneryextras.h"

#include <QLatin1String>
#include <QStringView>

#include <span>
#include <variant>

/// One extra: its key, and the field with the range that a file, the command line and the
/// widgets of a dock hold it to.
struct ExtraKey {
    QLatin1String name;
    std::variant<extrakind::Flag, extrakind::Whole, extrakind::Real,
                 extrakind::OptionalReal, extrakind::Colour, extrakind::OptionalColour,
                 extrakind::Time, extrakind::Sun, extrakind::Sky, extrakind::Haze>
        field;
};

/// What became of a value under a key of the extras.
enum class ExtraMatch {
    Read,
    Limited, ///< out of range: the nearest value that is not was taken
    Broken,  ///< no value of this key; the extras stay as they were
    Unknown, ///< no such key
};

/// All extras in the order of writing.
[[nodiscard]] std::span<const ExtraKey> extraKeys();
/// The extra of a name, letter for letter; null where there is none.
[[nodiscard]] const ExtraKey *findExtra(QStringView name);

/// Reads a value from its text: numbers with a point, colours as rrggbb, 0 or 1 for
/// switches; empty only where the default is. Blanks around it do not count.
[[nodiscard]] ExtraMatch readExtra(SceneryExtras &extras, const ExtraKey &key,
                                   QStringView text);
/// The text of a value. Numbers are as short as gives back the same value.
[[nodiscard]] QString extraText(const SceneryExtras &extras, const ExtraKey &key);
/// Whether an extra stands at its default.
[[nodiscard]] bool isDefault(const SceneryExtras &extras, const ExtraKey &key);
/// What values an extra takes, to be put behind "takes": "a number from 0 to 1".
[[nodiscard]] QString allowedText(const ExtraKey &key);

#pragma once

#include "scene/scenerydata.h"

#include <QLatin1String>

#include <span>
#include <variant>

/// A scalar key of the scenery file.
struct SceneryKey {
    QLatin1String name;
    std::variant<keykind::Real, keykind::Whole, keykind::Flag, keykind::Text,
                 keykind::Colour, keykind::StickyFlag, keykind::InvertedFlag>
        field;
    int place; // in the file, from 1 on
};

/// All scalar keys in the order of writing.
[[nodiscard]] std::span<const SceneryKey> sceneryKeys();

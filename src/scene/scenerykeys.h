#pragma once

#include "scene/scenerydata.h"

#include <QLatin1String>

#include <span>
#include <variant>

/// How the value of a key and a field go together, beyond the plain kinds.
struct StickyFlag {
    bool SceneryData::*field; // reading sets it and never clears it
};
struct InvertedFlag {
    bool SceneryData::*field;
};

/// A scalar key of the scenery file.
struct SceneryKey {
    QLatin1String name;
    std::variant<double SceneryData::*, qint32 SceneryData::*, bool SceneryData::*,
                 QString SceneryData::*, QRgb SceneryData::*, StickyFlag, InvertedFlag>
        field;
};

/// All scalar keys in the order of writing.
[[nodiscard]] std::span<const SceneryKey> sceneryKeys();

#pragma once

#include "scene/sceneryfields.h"

/// All parameters of a render job, named after the keys of the scenery file: a value,
/// whose fields stand in SCENERY_FIELDS.
///
/// Suffix A is the first frame, E the last. Angles are degrees, positions world
/// units with the origin at the lower left corner of the elevation file.
struct SceneryData {
#define FIELD(kind, name, value, key, place) keykind::kind::Value name = value;
    SCENERY_FIELDS(FIELD)
#undef FIELD

    /// Sets every field to its default.
    void clear() { *this = SceneryData(); }

    bool operator==(const SceneryData &) const = default;
};

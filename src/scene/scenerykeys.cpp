#include "scene/scenerykeys.h"

#include <algorithm>
#include <array>

namespace {

constexpr auto Keys = [] {
#define FIELD(kind, name, value, key, place)                                             \
    SceneryKey{QLatin1String(#key), keykind::kind{&SceneryData::name}, place},
    std::array keys{SCENERY_FIELDS(FIELD)};
#undef FIELD
    std::sort(keys.begin(), keys.end(),
              [](const SceneryKey &a, const SceneryKey &b) { return a.place < b.place; });
    return keys;
}();

constexpr bool everyPlaceIsTakenOnce()
{
    for (std::size_t k = 0; k < Keys.size(); ++k)
        if (Keys[k].place != static_cast<int>(k) + 1)
            return false;
    return true;
}
static_assert(everyPlaceIsTakenOnce());

} // namespace

std::span<const SceneryKey> sceneryKeys() { return Keys; }

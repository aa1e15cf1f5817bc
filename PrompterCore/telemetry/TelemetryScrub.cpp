#include "PrompterCore/telemetry/TelemetryScrub.h"

#include <algorithm>
#include <cstdint>

#include "PrompterCore/text/Characters.h"

namespace PrompterCore::TelemetryScrub {

namespace {

template <class Keys>
bool holds(const Keys& keys, const Text& key) {
    return std::ranges::any_of(keys, [&](std::string_view known) { return key == Text(known); });
}

}  // namespace

Text majorVersion(const Text& version) {
    const Characters characters(version);
    std::int64_t start = 0;
    while (start < characters.count() && characters[start].is('.'))
        ++start;
    std::int64_t end = start;
    while (end < characters.count() && !characters[end].is('.'))
        ++end;
    return Text(WellFormed{characters.slice(CharacterRange(start, end))});
}

PropertyMap scrub(const PropertyMap& properties) {
    PropertyMap result;
    for (const auto& [key, value] : properties) {
        if (holds(removed, key)) continue;
        const Text* text = value.text();
        if (text != nullptr && holds(coarsened, key)) {
            result.emplace(key, majorVersion(*text));
        } else {
            result.emplace(key, value);
        }
    }
    result.insert_or_assign("$ip", Text(blankAddress));
    return result;
}

}  // namespace PrompterCore::TelemetryScrub

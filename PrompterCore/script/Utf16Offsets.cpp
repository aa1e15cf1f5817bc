#include "PrompterCore/script/Utf16Offsets.h"

#include <algorithm>

#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

Utf16Offsets::Utf16Offsets(const Characters& characters) : characters_(characters.count()) {
    // A character has at least one unit: as many units as characters are one each.
    if (Utf8::utf16Length(characters.text().utf8()) == characters_) return;
    offsets_.reserve(static_cast<std::size_t>(characters_) + 1);
    std::int64_t offset = 0;
    for (const Character character : characters) {
        offsets_.push_back(offset);
        offset += character.utf16Length();
    }
    offsets_.push_back(offset);
}

Utf16Offsets::operator std::vector<std::int64_t>() const { return {begin(), end()}; }

bool operator==(const Utf16Offsets& offsets, const std::vector<std::int64_t>& list) {
    return std::ranges::equal(offsets, list);
}

std::int64_t Utf16Offsets::lastAtOrBefore(std::int64_t offset) const noexcept {
    if (offsets_.empty()) return std::clamp<std::int64_t>(offset, 0, characters_);
    const auto after = std::upper_bound(offsets_.begin(), offsets_.end(), offset);
    return std::max<std::int64_t>(std::distance(offsets_.begin(), after) - 1, 0);
}

}  // namespace PrompterCore

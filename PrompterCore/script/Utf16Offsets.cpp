#include "PrompterCore/script/Utf16Offsets.h"

#include <algorithm>
#include <string_view>

#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

std::int64_t utf16Length(std::string_view character) noexcept {
    std::size_t end = 0;
    const char32_t first = Utf8::next(character, end);
    // Nearly every character has one code point.
    if (end == character.size()) return first < 0x10000 ? 1 : 2;
    return Utf8::utf16Length(character);
}

}  // namespace

Utf16Offsets::Utf16Offsets(const Characters& characters) : characters_(characters.count()) {
    const std::string_view bytes = characters.text().utf8();
    // A character has at least one unit: as many units as characters are one each.
    if (Utf8::utf16Length(bytes) == characters_) return;
    offsets_.reserve(static_cast<std::size_t>(characters_) + 1);
    std::int64_t offset = 0;
    std::size_t start = 0;
    for (std::int64_t i = 1; i <= characters_; ++i) {
        const std::size_t end = characters.byteOffset(i);
        offsets_.push_back(offset);
        offset += utf16Length(bytes.substr(start, end - start));
        start = end;
    }
    offsets_.push_back(offset);
}

std::int64_t Utf16Offsets::lastAtOrBefore(std::int64_t offset) const noexcept {
    if (offsets_.empty()) return std::clamp<std::int64_t>(offset, 0, characters_);
    const auto after = std::upper_bound(offsets_.begin(), offsets_.end(), offset);
    return std::max<std::int64_t>(std::distance(offsets_.begin(), after) - 1, 0);
}

}  // namespace PrompterCore

#include "PrompterCore/text/Characters.h"

#include <utility>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Segmentation.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

char32_t Character::firstCodePoint() const noexcept {
    std::size_t at = 0;
    return Utf8::next(utf8_, at);
}

std::int64_t Character::utf16Length() const noexcept { return Utf8::utf16Length(utf8_); }

bool Character::isWhiteSpace() const noexcept {
    return CharacterClasses::isWhiteSpace(firstCodePoint());
}

bool Character::isLineBreak() const noexcept {
    return CharacterClasses::isLineBreak(firstCodePoint());
}

bool Character::isLetter() const noexcept { return CharacterClasses::isLetter(firstCodePoint()); }

bool Character::isNumeric() const noexcept { return CharacterClasses::isNumeric(firstCodePoint()); }

Characters::Characters(Text text) : text_(std::move(text)) {
    const std::string& bytes = text_.utf8();
    if (Utf8::isAscii(bytes) && bytes.find("\r\n") == std::string::npos) {
        count_ = signedCount(bytes.size());
        return;
    }
    // An upper bound that most scripts come near; given back where marks and emoji made it loose.
    starts_.reserve(static_cast<std::size_t>(Utf8::utf16Length(bytes)) + 1);
    for (std::size_t at = 0; at < bytes.size(); at = Segmentation::clusterEnd(bytes, at))
        starts_.push_back(at);
    count_ = signedCount(starts_.size());
    starts_.push_back(bytes.size());
}

std::size_t Characters::byteOffset(std::int64_t index) const noexcept {
    require(0 <= index && index <= count_, "a character index lies within the text");
    const auto i = static_cast<std::size_t>(index);
    return starts_.empty() ? i : starts_[i];
}

Character Characters::operator[](std::int64_t index) const noexcept {
    require(0 <= index && index < count_, "a character index lies within the text");
    return Character(slice(CharacterRange(index, index + 1)));
}

std::string_view Characters::slice(CharacterRange range) const noexcept {
    const std::size_t from = byteOffset(range.lower());
    return std::string_view(text_.utf8()).substr(from, byteOffset(range.upper()) - from);
}

}  // namespace PrompterCore

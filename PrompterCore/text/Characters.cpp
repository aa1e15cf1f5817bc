#include "PrompterCore/text/Characters.h"

#include <utility>

#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Segmentation.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

bool Character::isLetter() const noexcept { return CharacterClasses::isLetter(firstCodePoint()); }

bool Character::isNumeric() const noexcept { return CharacterClasses::isNumeric(firstCodePoint()); }

Characters::Characters(Text text) : text_(std::move(text)) {
    const std::string& bytes = text_.utf8();
    if (Utf8::isAscii(bytes) && bytes.find("\r\n") == std::string::npos) return;
    // An upper bound that most scripts come near.
    starts_.reserve(static_cast<std::size_t>(Utf8::utf16Length(bytes)) + 1);
    for (std::size_t at = 0; at < bytes.size(); at = Segmentation::clusterEnd(bytes, at))
        starts_.push_back(at);
    starts_.push_back(bytes.size());
}

std::string_view Characters::slice(CharacterRange range) const noexcept {
    const std::size_t from = byteOffset(range.lower());
    return std::string_view(text_.utf8()).substr(from, byteOffset(range.upper()) - from);
}

}  // namespace PrompterCore

#include "PrompterCore/text/Characters.h"

#include <utility>

#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Segmentation.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

// Code points that join neither each other nor anything but marks: between any two of them a
// character ends, so that most of a text needs no more than this. Letters, ideographs, Hangul
// syllables, punctuation and emoji; the test holds every one against the Unicode library.
bool standsAlone(char32_t c) noexcept {
    if (c < 0x300) return (c >= 0x20 && c < 0x7F) || (c >= 0xAE) || (c >= 0xA0 && c < 0xAD);
    if (c < 0x900)
        return (c >= 0x370 && c < 0x483) || (c >= 0x5D0 && c < 0x5EB) ||
               (c >= 0x61D && c < 0x64B) || (c >= 0x660 && c < 0x670) || (c >= 0x671 && c < 0x6D6);
    if (c < 0xE80)
        return (c >= 0x904 && c < 0x93A) || (c >= 0xE01 && c < 0xE31) || c == 0xE32 ||
               (c >= 0xE40 && c < 0xE47);
    if (c < 0x2010) return c >= 0x1E00 && c < 0x200B;
    if (c < 0x3000) return c < 0x2028 || (c >= 0x2030 && c < 0x2060);
    if (c < 0x3400) return c < 0x302A || (c >= 0x3041 && c < 0x3097) || (c >= 0x309B && c < 0x3100);
    if (c < 0xD7A4) return (c >= 0x4E00 && c < 0xA000) || c < 0x4DC0 || c >= 0xAC00;
    return (c >= 0xFF01 && c < 0xFF9E) || (c >= 0x1F249 && c < 0x1F3FB) ||
           (c >= 0x1F400 && c < 0x1FB00);
}

}  // namespace

bool Character::isLetter() const noexcept { return CharacterClasses::isLetter(firstCodePoint()); }

bool Character::isNumeric() const noexcept { return CharacterClasses::isNumeric(firstCodePoint()); }

Characters::Characters(Text text) : text_(std::move(text)) {
    const std::string& bytes = text_.utf8();
    if (Utf8::isAscii(bytes) && bytes.find("\r\n") == std::string::npos) return;
    // An upper bound that most scripts come near.
    starts_.reserve(static_cast<std::size_t>(Utf8::utf16Length(bytes)) + 1);
    for (std::size_t at = 0; at < bytes.size(); at = Segmentation::clusterEnd(bytes, at)) {
        starts_.push_back(at);
        std::size_t behind = at;
        if (!standsAlone(Utf8::next(bytes, behind))) continue;
        // As long as the next one stands alone too, the character ends before it.
        for (std::size_t next = behind; next < bytes.size(); next = behind) {
            if (!standsAlone(Utf8::next(bytes, behind))) break;
            starts_.push_back(next);
            at = next;
        }
    }
    starts_.push_back(bytes.size());
}

std::string_view Characters::slice(CharacterRange range) const noexcept {
    const std::size_t from = byteOffset(range.lower());
    return std::string_view(text_.utf8()).substr(from, byteOffset(range.upper()) - from);
}

}  // namespace PrompterCore

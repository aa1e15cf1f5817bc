#include "PrompterCore/text/Columns.h"

#include <algorithm>
#include <cstddef>

#include <unicode/uchar.h>

#include "PrompterCore/text/Segmentation.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

constexpr char32_t emojiPresentation = 0xFE0F;  // variation selector 16

bool has(char32_t codePoint, UProperty property) noexcept {
    return u_hasBinaryProperty(static_cast<UChar32>(codePoint), property) != 0;
}

bool isPicture(char32_t codePoint) noexcept {
    return codePoint >= 0x80 &&
           (has(codePoint, UCHAR_EXTENDED_PICTOGRAPHIC) || has(codePoint, UCHAR_EMOJI_MODIFIER));
}

bool isKeycap(char32_t codePoint) noexcept {
    return codePoint < 0x80 && has(codePoint, UCHAR_EMOJI);  // a digit, # or *
}

std::int64_t codePointColumns(char32_t codePoint) noexcept {
    if (codePoint == '\t') return 1;
    const auto c = static_cast<UChar32>(codePoint);
    switch (u_charType(c)) {
        case U_CONTROL_CHAR:
        case U_LINE_SEPARATOR:
        case U_PARAGRAPH_SEPARATOR:
        case U_NON_SPACING_MARK:
        case U_ENCLOSING_MARK: return 0;
        // Signs such as the Arabic number sign are format characters that are seen.
        case U_FORMAT_CHAR: return has(codePoint, UCHAR_PREPENDED_CONCATENATION_MARK) ? 1 : 0;
        default: break;
    }
    // Vowels and finals of a Hangul syllable stand in the columns of its initial.
    const int syllablePart = u_getIntPropertyValue(c, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllablePart == U_HST_VOWEL_JAMO || syllablePart == U_HST_TRAILING_JAMO) return 0;
    const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

// A cluster's pictures, joined or with a skin tone, are seen as one; whatever else it has adds up.
std::int64_t clusterColumns(std::string_view cluster) noexcept {
    std::int64_t picture = 0;
    std::int64_t others = 0;
    char32_t before = 0;
    for (std::size_t at = 0; at < cluster.size();) {
        const char32_t codePoint = Utf8::next(cluster, at);
        const std::int64_t columns = codePointColumns(codePoint);
        if (isPicture(codePoint)) {
            picture = std::max(picture, columns);
        } else if (codePoint == emojiPresentation && isPicture(before)) {
            picture = has(before, UCHAR_EMOJI) ? 2 : picture;
        } else if (codePoint == emojiPresentation && isKeycap(before)) {
            ++others;
        } else {
            others += columns;
        }
        before = codePoint;
    }
    return picture + others;
}

}  // namespace

std::int64_t columnsOf(std::string_view wellFormed) noexcept {
    std::int64_t columns = 0;
    std::size_t at = 0;
    while (at < wellFormed.size()) {
        const bool alone = at + 1 == wellFormed.size() || Utf8::isAscii(wellFormed[at + 1]);
        if (alone && wellFormed[at] >= 0x20 && wellFormed[at] < 0x7F) {
            ++columns;  // printable ASCII that nothing joins, without a look-up
            ++at;
            continue;
        }
        const std::size_t end = Segmentation::clusterEnd(wellFormed, at);
        columns += clusterColumns(wellFormed.substr(at, end - at));
        at = end;
    }
    return columns;
}

}  // namespace PrompterCore

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

// The pictures of a cluster, a skin tone being one, are seen as one; whatever else there is adds
// up.
std::int64_t clusterColumns(std::string_view cluster) noexcept {
    std::size_t at = 0;
    const char32_t first = Utf8::next(cluster, at);
    const bool isEmoji = has(first, UCHAR_EMOJI);
    const bool isPicture = has(first, UCHAR_EXTENDED_PICTOGRAPHIC);
    std::int64_t picture = codePointColumns(first);
    std::int64_t sum = 0;
    while (at < cluster.size()) {
        const char32_t next = Utf8::next(cluster, at);
        const std::int64_t columns =
            next == emojiPresentation && isEmoji ? 2 : codePointColumns(next);
        const bool joins =
            next == emojiPresentation || (isPicture && (has(next, UCHAR_EXTENDED_PICTOGRAPHIC) ||
                                                        has(next, UCHAR_EMOJI_MODIFIER)));
        if (joins) {
            picture = std::max(picture, columns);
        } else {
            sum += columns;
        }
    }
    return picture + sum;
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

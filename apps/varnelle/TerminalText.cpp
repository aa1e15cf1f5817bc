#include "apps/varnelle/TerminalText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Segmentation.h"
#include "PrompterCore/text/Utf8.h"

namespace Varnelle {

namespace {

using PrompterCore::columnsOf;
namespace CharacterClasses = PrompterCore::CharacterClasses;
namespace Segmentation = PrompterCore::Segmentation;
namespace Utf8 = PrompterCore::Utf8;

constexpr std::string_view ellipsis = "\u2026";

// What may be sent of the code points that take no column: marks, parts of a Hangul syllable, and
// after a letter the two joiners, which shape it; after a picture they would take hold of whatever
// is shown next. Not the controls, nor the formats that could reorder a row, nor the choice between
// text and emoji, which terminals take differently.
bool shapes(char32_t codePoint, char32_t base) {
    if (codePoint == 0x200C || codePoint == 0x200D) return CharacterClasses::isAlphanumeric(base);
    if (codePoint == 0xFE0E || codePoint == 0xFE0F) return false;
    return CharacterClasses::isAlphanumeric(codePoint);
}

bool isSkinTone(char32_t codePoint) { return codePoint >= 0x1F3FB && codePoint <= 0x1F3FF; }

// More than the longest emoji has. A terminal keeps a handful of marks to a character; a heap of
// them is cut here.
constexpr std::size_t longestCluster = 128;  // bytes

void append(std::string& text, std::string_view cluster) {
    const std::int64_t columns = columnsOf(cluster);
    if (columns == 0) return;
    std::int64_t sent = 0;   // columns
    std::int64_t taken = 0;  // columns of the cluster so far
    char32_t base = 0;       // the last code point sent that takes a column
    for (std::size_t at = 0; at < std::min(cluster.size(), longestCluster);) {
        const std::size_t start = at;
        const char32_t codePoint = Utf8::next(cluster, at);
        const std::string_view bytes = cluster.substr(start, at - start);
        const std::int64_t own = columnsOf(bytes);
        const std::int64_t before = std::exchange(taken, columnsOf(cluster.substr(0, at)));
        // What takes fewer columns here than by itself is a further picture of an emoji.
        const bool isSent = own > 0 ? taken - before == own : sent > 0 && shapes(codePoint, base);
        if (!isSent) continue;
        if (codePoint == '\t') {
            text += ' ';
        } else if (sent == 0 && isSkinTone(codePoint)) {
            text += "\uFFFD ";  // it would colour what stands before it
        } else {
            text += bytes;
        }
        if (own > 0) base = codePoint;
        sent += own;
    }
    text.append(static_cast<std::size_t>(columns - sent), ' ');
}

}  // namespace

std::string terminalText(std::string_view wellFormed) {
    std::string text;
    text.reserve(wellFormed.size());
    for (std::size_t at = 0; at < wellFormed.size();) {
        const std::size_t end = Segmentation::clusterEnd(wellFormed, at);
        append(text, wellFormed.substr(at, end - at));
        at = end;
    }
    return text;
}

std::string shortened(std::string_view wellFormed, std::int64_t columns) {
    if (columns < 1) return {};
    std::int64_t used = 0;
    std::size_t cut = 0;  // where the last character ends that leaves room for the ellipsis
    for (std::size_t at = 0; at < wellFormed.size();) {
        const std::size_t end = Segmentation::clusterEnd(wellFormed, at);
        used += columnsOf(wellFormed.substr(at, end - at));
        if (used > columns) return terminalText(wellFormed.substr(0, cut)).append(ellipsis);
        if (used < columns) cut = end;
        at = end;
    }
    return terminalText(wellFormed);
}

}  // namespace Varnelle

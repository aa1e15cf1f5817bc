#include "PrompterCore/takes/RecordingName.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Dates.h"
#include "PrompterCore/text/Locale.h"
#include "PrompterCore/text/RegularExpression.h"
#include "PrompterCore/text/Trims.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore::RecordingName {

namespace {

constexpr std::string_view stamp = "yyyy-MM-dd 'at' HH.mm.ss";
constexpr std::string_view stampAtEnd = " \\d{4}-\\d{2}-\\d{2} at \\d{2}\\.\\d{2}\\.\\d{2}$";

// General category Cc.
constexpr bool isControl(char32_t c) noexcept { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

// "<" and ">" with a stroke are the two that a text may also hold composed: as texts they are the
// same either way, and some file systems take them apart.
constexpr bool isForbidden(char32_t c) noexcept {
    return isControl(c) || c == 0x226E || c == 0x226F ||
           (c < 0x80 &&
            std::string_view("/\\:?%*|\"<>").find(static_cast<char>(c)) != std::string_view::npos);
}

// By code points: a slash parts a path even where a mark stands on it.
std::string withoutForbidden(std::string_view bytes) {
    std::string result;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t start = at;
        if (isForbidden(Utf8::next(bytes, at))) {
            result += ' ';
        } else {
            result += bytes.substr(start, at - start);
        }
    }
    return result;
}

}  // namespace

Text safe(const Text& name) {
    const Characters cleaned(withSingleBlanks(withoutForbidden(name.utf8())));
    const CharacterRange kept(0, std::min(cleaned.count(), longestName));
    return trimmedOfWhiteSpace(cleaned.slice(kept));
}

Text file(const std::optional<Text>& script, std::chrono::system_clock::time_point moment,
          const TimeZone& timeZone, Kind kind) {
    const Text title = script ? safe(*script) : Text();
    std::string name = title.isEmpty() ? "Prompter" : title.utf8();
    name += ' ' + Dates::formatted(moment, stamp, Locale::fixed(), timeZone) + '.';
    return name.append(fileExtension(kind));
}

bool isAutomatic(const Text& name) { return RegularExpression::containsMatch(name, stampAtEnd); }

std::optional<Text> renamed(const Text& name, const Text& extension) {
    const Text cleaned = safe(name);
    if (cleaned.isEmpty()) return std::nullopt;
    return cleaned.utf8() + '.' + extension.utf8();
}

}  // namespace PrompterCore::RecordingName

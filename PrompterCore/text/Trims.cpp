#include "PrompterCore/text/Trims.h"

#include <cstddef>

#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Segmentation.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

// Clusters can only be found from the front, so one walk remembers where the kept part ends.
std::string_view trimmed(std::string_view bytes, bool (*isBlank)(char32_t) noexcept) noexcept {
    std::size_t first = bytes.size();
    std::size_t last = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t behind = at;
        const char32_t codePoint = Utf8::next(bytes, behind);
        const std::size_t end = Segmentation::clusterEnd(bytes, at);
        if (!isBlank(codePoint)) {
            if (first == bytes.size()) first = at;
            last = end;
        }
        at = end;
    }
    return last == 0 ? bytes.substr(0, 0) : bytes.substr(first, last - first);
}

}  // namespace

std::string_view trimmedOfWhiteSpace(std::string_view bytes) noexcept {
    return trimmed(bytes, CharacterClasses::isWhiteSpace);
}

std::string_view trimmedOfBlanks(std::string_view bytes) noexcept {
    return trimmed(bytes, CharacterClasses::isHorizontalBlank);
}

std::string withSingleBlanks(std::string_view bytes) {
    std::string result;
    bool isBetweenRuns = false;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t behind = at;
        const bool isBlank = CharacterClasses::isWhiteSpace(Utf8::next(bytes, behind));
        const std::size_t end = Segmentation::clusterEnd(bytes, at);
        if (!isBlank) {
            if (isBetweenRuns) result += ' ';
            result += bytes.substr(at, end - at);
        }
        isBetweenRuns = isBlank && !result.empty();
        at = end;
    }
    return result;
}

}  // namespace PrompterCore

#include "PrompterCore/text/PatternSearch.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Segmentation.h"

namespace PrompterCore {

namespace {

bool hasDotlessI(const Locale& locale) {
    const std::string_view identifier = locale.identifier();
    const std::string_view language = identifier.substr(0, identifier.find_first_of("_-@"));
    return language == "tr" || language == "az";
}

}  // namespace

PatternSearch::PatternSearch(const Text& pattern) : PatternSearch(pattern, Case::counts) {}

PatternSearch::PatternSearch(const Text& pattern, Case letterCase)
    : case_(letterCase), pattern_(prepared(pattern)) {}

PatternSearch PatternSearch::ignoringCase(const Text& pattern, const Locale& locale) {
    return {pattern, hasDotlessI(locale) ? Case::ignoredWithDotlessI : Case::ignored};
}

std::string PatternSearch::prepared(const Text& text) const {
    if (case_ == Case::counts) return text.composed().utf8();
    const LetterI letterI = case_ == Case::ignoredWithDotlessI ? LetterI::dotless : LetterI::dotted;
    return caseFolded(text, letterI).composed().utf8();
}

bool PatternSearch::isIn(const Text& text) const {
    if (pattern_.empty()) return true;
    // Most texts do not hold it at all, which shows without looking at their characters.
    const std::string whole = prepared(text);
    if (whole.find(pattern_) == std::string::npos) return false;

    std::string parts;
    std::vector<std::size_t> boundaries{0};  // bytes of `parts`, ascending
    const std::string_view bytes = text.utf8();
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = Segmentation::clusterEnd(bytes, at);
        parts += prepared(Text(WellFormed{bytes.substr(at, end - at)}));
        boundaries.push_back(parts.size());
        at = end;
    }
    for (std::size_t at = parts.find(pattern_); at != std::string::npos;
         at = parts.find(pattern_, at + 1)) {
        if (std::ranges::binary_search(boundaries, at) &&
            std::ranges::binary_search(boundaries, at + pattern_.size()))
            return true;
    }
    return false;
}

}  // namespace PrompterCore

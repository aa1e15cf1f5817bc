#pragma once

// Lines for tests: a script laid out code point by code point, and lines made by hand.

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/text/Utf8.h"
#include "tests/support/Printing.h"

namespace PrompterCore::Tests {

/// A width that is easily seen: one for each code point.
inline double codePointsOf(std::string_view text) {
    double count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        static_cast<void>(Utf8::next(text, at));
    return count;
}

inline std::vector<PromptLine> linesOf(const Script& script, double width) {
    return LineBreaker{.width = width, .measure = codePointsOf}.linesFor(script);
}

inline std::vector<PromptLine> linesOf(Text text, double width) {
    return linesOf(Script(std::move(text)), width);
}

/// A line with words. Where only tokens matter, the words are numbered like them.
inline PromptLine textLine(Text text, TokenRange tokens, WordRange words, std::int64_t indent = 0) {
    return {.text = std::move(text), .tokenRange = tokens, .wordRange = words, .indent = indent};
}

inline PromptLine textLine(std::int64_t lower, std::int64_t upper) {
    return textLine("text", TokenRange(lower, upper), WordRange(lower, upper));
}

/// A line whose words are not spoken.
inline PromptLine dashLine(std::int64_t token) {
    return textLine("\u2014", TokenRange::emptyAt(token), WordRange(token, token + 1));
}

inline PromptLine blankLine(std::int64_t token, std::int64_t word) {
    return {.text = {},
            .tokenRange = TokenRange::emptyAt(token),
            .wordRange = WordRange::emptyAt(word),
            .indent = 0};
}

inline PromptLine blankLine(std::int64_t token) { return blankLine(token, token); }

inline PromptLine headingLine(Text title, std::int64_t token, std::int64_t word) {
    PromptLine line = blankLine(token, word);
    line.heading = std::move(title);
    return line;
}

inline PromptLine headingLine(Text title, std::int64_t token) {
    return headingLine(std::move(title), token, token);
}

}  // namespace PrompterCore::Tests

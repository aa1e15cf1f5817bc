#pragma once

// One line of the column that the prompter shows: text, a blank line, or a chapter's heading.
//
// Units: ranges count Script::tokens and Script::words; the indentation is in columns.
//
//   PromptLine line{.text = "Good evening",
//                   .tokenRange = TokenRange(4, 6),
//                   .wordRange = WordRange(4, 6)};
//   line.isBlank();   // false

#include <cstdint>
#include <optional>

#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One prompter line. It stands by itself: drawing it takes no look at the script.
struct PromptLine {
    Text text;                ///< its words joined by single spaces, without the indentation;
                              ///< empty for blank and heading lines
    TokenRange tokenRange;    ///< from its first word's first token to its last word's end; on
                              ///< a line without words empty, at the token where it stands
    WordRange wordRange;      ///< its words; empty for blank and heading lines
    std::int64_t indent = 0;  ///< columns in front of the text; 0 for blank and heading lines
    std::optional<Text> heading = std::nullopt;  ///< the chapter's title; absent unless it is a
                                                 ///< heading line

    /// True when it holds no words, as blank lines and heading lines do.
    [[nodiscard]] bool isBlank() const noexcept { return wordRange.isEmpty(); }

    friend bool operator==(const PromptLine&, const PromptLine&) = default;
};

}  // namespace PrompterCore

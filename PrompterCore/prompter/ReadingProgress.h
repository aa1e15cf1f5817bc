#pragma once

// Where the reader is, for the operator: paragraph, line, and how much of the script is done.
//
// Units: all numbers count from 1; a paragraph's lines are the prompter's lines given, script lines
// are those of the source text. A cursor is the token being read, -1 before the first.
//
//   Script script("Hello brave world\n\nBye");
//   ReadingProgress progress(script, 3, {});   // "Bye"; one prompt line for each script line
//   progress.label();                          // "Paragraph 2 · Line 1 of 1"
//   progress.fraction;                         // 1.0

#include <cstdint>
#include <span>
#include <string>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"

namespace PrompterCore {

/// Where one cursor stands in a script and its prompter lines.
struct ReadingProgress {
    /// Of a cursor on no word, as before the first, `line` is 1 and `fraction` 0; its paragraph is
    /// the one that holds token 0 or, past the end, the first. Without `lines` each line of the
    /// script counts as one prompter line, and those are laid out anew in O(n) in words. With
    /// `lines` O(log n) in words and O(n) in lines.
    ReadingProgress(const Script& script, std::int64_t cursor, std::span<const PromptLine> lines);

    std::int64_t paragraph = 1;           ///< the block of consecutive prompter lines with text
    std::int64_t line = 1;                ///< the script line that holds the current word
    std::int64_t lineCount = 1;           ///< script lines with words, 1 even without any
    std::int64_t paragraphLine = 1;       ///< the prompter line, within its paragraph
    std::int64_t paragraphLineCount = 1;  ///< the prompter lines of that paragraph
    double fraction = 0;                  ///< 0 to 1, words read, the current one included

    /// For a user: "Paragraph 3 · Line 2 of 5".
    [[nodiscard]] std::string label() const;

    friend bool operator==(const ReadingProgress&, const ReadingProgress&) = default;
};

}  // namespace PrompterCore

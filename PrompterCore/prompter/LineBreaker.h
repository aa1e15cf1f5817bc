#pragma once

// Breaks a script into prompter lines, and finds the way from tokens to lines.
//
// Units: widths are display points; a token or line index counts Script::tokens or the lines given,
// and a position is such an index with a fraction (12.5 is halfway through token 12).
//
//   LineBreaker breaker{.width = 11, .measure = [](std::string_view text) {
//                           return static_cast<double>(text.size());
//                       }};
//   auto lines = breaker.linesFor(Script("Hello brave world\n\nBye"));
//   // "Hello brave", "world", a blank line, "Bye"
//   LineBreaker::lineContaining(2, lines);    // 1: token 2, "world", is on line 1
//   LineBreaker::lineIndexFor(2.5, lines);    // 2.0: halfway from "world" to "Bye"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/support/Required.h"

namespace PrompterCore {

/// The column to fill. There is no ==: functions cannot be compared.
struct LineBreaker {
    Required<double> width;  ///< points, available to a line, indentation included
    std::function<double(std::string_view)> measure;  ///< points, the width that the host's font
                                                      ///< gives a text; called synchronously, only
                                                      ///< by linesFor

    /// The script's lines, filled word by word; a word is never split, one wider than the column
    /// stands alone. A line exactly as wide as the column fits. A line of the script keeps its
    /// indentation on all its prompter lines. Blank lines stay, save four kinds: the first of those
    /// at the very beginning, all of them where a heading follows, those between a text and a
    /// heading with more text below it, and those at the end. (A heading behind the last text does
    /// keep the blank lines in front of it.)
    ///
    /// `measure` is called once for each word that could go on a line already begun, with the
    /// indentation as spaces, that line's words and this word. Stops the program when `measure`
    /// is called for and not set. O(n) beside what `measure` costs.
    [[nodiscard]] std::vector<PromptLine> linesFor(const Script& script) const;

    /// The line whose token range holds `token`. Absent when none does: a negative token, one past
    /// the end. Of lists that are not in token order it looks at some lines only. O(log n); never
    /// allocates.
    [[nodiscard]] static std::optional<std::int64_t> lineContaining(
        std::int64_t token, std::span<const PromptLine> lines) noexcept;

    /// Where token position `position` stands among the lines. Reading through a line also carries
    /// across the blank and heading lines behind it, so that the next text arrives exactly when its
    /// first token is reached. A position below 0, or one that is no number, counts as 0; one past
    /// the last token gives the number of lines. 0 when no line has words. O(n); never allocates.
    [[nodiscard]] static double lineIndexFor(double position,
                                             std::span<const PromptLine> lines) noexcept;
};

}  // namespace PrompterCore

#pragma once

// The two rows below the prompter: how the reading stands, and the keys.
//
// Units: columns of the terminal.
//
//   StatusLine::timeLeft(150);      // "1:00": words at the reading pace
//   StatusLine::statusOf(view, 80); // " speaking · 2/5 The Keeper        ████░░░░  0:27 left "

#include <cstdint>
#include <string>

#include "apps/varnelle/ScreenLayout.h"

namespace Varnelle::StatusLine {

/// The words after the frame's cursor; all of them before the first was heard. O(log n).
[[nodiscard]] std::int64_t wordsLeft(const ScreenView& view);

/// How long `words` take at the reading pace, to the nearest second, as "m:ss".
[[nodiscard]] std::string timeLeft(std::int64_t words);

/// The input level as a bar of 8 columns. `level` is a meter value; it is clamped to 0 ... 1.
[[nodiscard]] std::string levelBar(double level);

/// State (or trouble), chapter, paragraph and line, level and time left in exactly `columns`. What
/// does not fit goes, paragraph and line first, the time left last; the level goes too while none
/// is known.
[[nodiscard]] std::string statusOf(const ScreenView& view, std::int64_t columns);

/// The keys and what they do at this moment, in at most `columns`: as many as fit, the most needed
/// first.
[[nodiscard]] std::string keysOf(const ScreenView& view, std::int64_t columns);

}  // namespace Varnelle::StatusLine

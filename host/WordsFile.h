#pragma once

// Recorded or foreign words, as JSON Lines: one update of the heard words on each line.
//
//   {"time":1.2,"keep":14,"words":[{"word":"the","start":0.9,"end":1.0}],"final":false}
//
// Units: seconds of the sound, a million at most. "confidence" (0 to 1) may stand beside a word's
// times and is absent when missing or null; other keys are ignored.

#include <string>
#include <string_view>
#include <variant>

#include "host/HeardWords.h"

namespace Varnelle {

/// What is wrong with a line, in words that follow its number: "\"keep\" is missing".
struct BrokenLine {
    std::string why;

    friend bool operator==(const BrokenLine&, const BrokenLine&) = default;
};

/// Reads one line. Strict about what a number, a text or a list is; never throws.
[[nodiscard]] std::variant<WordsUpdate, BrokenLine> wordsFromLine(std::string_view line);

/// The line that wordsFromLine reads back, without a line break.
[[nodiscard]] std::string lineFromWords(const WordsUpdate& update);

}  // namespace Varnelle

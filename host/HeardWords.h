#pragma once

// What a recogniser has heard: a list of words that is revised as more sound comes in.
//
// Units: times are seconds of the sound, counted from its first sample; a confidence runs from
// 0 to 1. Counts are words.
//
//   HeardWords heard;
//   heard.apply({.time = 0.6, .keep = 0, .words = {{"recognise", 0.1, 0.6, {}}}, .final = false});
//   heard.apply({.time = 1.2, .keep = 0,
//                .words = {{"wreck", 0.1, 0.4, {}}, {"a", 0.4, 0.5, {}}}, .final = false});
//   heard.words().size();   // 2: the first word was withdrawn, two came in its place

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/text/Text.h"

namespace Varnelle {

using PrompterCore::Text;

/// One word as the recogniser writes it, not yet brought to spoken forms.
struct HeardWord {
    Text word;
    double start = 0;                  ///< seconds of the sound
    double end = 0;                    ///< seconds of the sound
    std::optional<double> confidence;  ///< 0 to 1. Absent while the recogniser cannot say

    friend bool operator==(const HeardWord&, const HeardWord&) = default;
};

/// One change of the list: the first `keep` words stay, the rest is withdrawn, `words` follow.
struct WordsUpdate {
    double time = 0;               ///< seconds of the sound that this update rests on
    std::int64_t keep = 0;         ///< words, counted from the first one ever heard
    std::vector<HeardWord> words;  ///< may be empty: then words were only withdrawn or settled
    bool final = false;            ///< true when no later update withdraws any word so far

    friend bool operator==(const WordsUpdate&, const WordsUpdate&) = default;
};

/// The list that the updates make. A value.
class HeardWords {
public:
    /// No words.
    HeardWords() = default;

    [[nodiscard]] const std::vector<HeardWord>& words() const noexcept { return words_; }

    /// Keeps the first `update.keep` words (none when it is negative, all when there are fewer)
    /// and appends `update.words`. Takes the time and finality as they are: nothing is checked.
    void apply(const WordsUpdate& update);

    friend bool operator==(const HeardWords&, const HeardWords&) = default;

private:
    std::vector<HeardWord> words_;
};

}  // namespace Varnelle

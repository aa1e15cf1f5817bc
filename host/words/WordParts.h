#pragma once

// Words out of what is more or less than a word: phrases, and the pieces that recognisers build
// words from.
//
// Units: seconds, rounded to milliseconds.
//
//   wordsOf("Behind me", 1.0, 1.8);   // "Behind" 1.0 to 1.6, "me" 1.6 to 1.8: by their letters

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/HeardWords.h"

namespace Varnelle {

/// To the nearest millisecond.
[[nodiscard]] double toMilliseconds(double seconds);

/// The words of a phrase, which shares out its time by their characters. Parted by white space;
/// what stands in square brackets is no speech. `phrase` may be ill-formed.
[[nodiscard]] std::vector<HeardWord> wordsOf(std::string_view phrase, double start, double end,
                                             std::optional<double> confidence = std::nullopt);

/// `confidence` if it is one, from 0 to 1.
[[nodiscard]] std::optional<double> confidenceOf(double confidence);

/// A recogniser's word without the mark of its variant, "read(2)". Absent for what stands for a
/// noise or for nothing: "<s>", "[NOISE]", "++breath++".
[[nodiscard]] std::optional<std::string> spokenWord(std::string_view written);

/// Words that come in pieces; a piece that begins with a space begins a word.
class WordPieces {
public:
    /// Returns the words that are whole now. A word is as sure as its least sure piece.
    std::vector<HeardWord> add(std::string_view piece, double start, double end,
                               std::optional<double> confidence);
    /// Returns the last word.
    std::vector<HeardWord> finish();
    /// The word that has begun ends at `end`.
    void extendTo(double end);
    [[nodiscard]] bool isEmpty() const { return bytes_.empty(); }

private:
    std::string bytes_;  // of the word that has begun; none when it is empty
    double start_ = 0;
    double end_ = 0;
    std::optional<double> confidence_;
};

}  // namespace Varnelle

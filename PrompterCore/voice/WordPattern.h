#pragma once

// One word made ready to be compared with many: the work that depends on it alone is done once.
// Internal to this room.
//
//   Alphabet alphabet;
//   std::vector<Letter> colour, color;
//   alphabet.learn("colour", colour);
//   alphabet.spell("color", color);
//   WordPattern pattern(colour, alphabet.size());
//   pattern.editDistanceTo(color);         // 1
//   pattern.similarityTo(color, 0.0);      // 1.0 - 1.0 / 6.0

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "PrompterCore/voice/Alphabet.h"

namespace PrompterCore {

/// A word in letters. Both words of a comparison are spelled with one alphabet, which learnt this
/// one.
class WordPattern {
public:
    /// `alphabetSize` is the alphabet's, once it has learnt all its words.
    WordPattern(std::vector<Letter> letters, std::size_t alphabetSize);

    /// The fewest insertions, deletions and substitutions of a character that turn one word into
    /// the other. O(n) in `word` while this word has at most 64 characters, O(n m) above.
    [[nodiscard]] std::int64_t editDistanceTo(std::span<const Letter> word) const;

    /// See WordSimilarity::of.
    [[nodiscard]] double similarityTo(std::span<const Letter> word, double fuzzyFloor) const;

private:
    std::int64_t mostInCommonWith(std::span<const Letter> word) const;

    std::vector<Letter> letters_;
    std::vector<std::uint64_t> places_;  // for each letter the bits of its places in letters_; none
                                         // when there are more places than bits
};

}  // namespace PrompterCore

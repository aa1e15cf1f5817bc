#pragma once

// How alike two words are, by the characters a reader sees.
//
//   WordSimilarity::editDistance("colour", "color");   // 1
//   WordSimilarity::of("colour", "color", 0.5);        // 1.0 - 1.0 / 6.0
//   WordSimilarity::of("colour", "color", 0.9);        // 0.0: not alike enough to count

#include <cstdint>

#include "PrompterCore/text/Text.h"

namespace PrompterCore::WordSimilarity {

/// The fewest insertions, deletions and substitutions of a user-perceived character that turn one
/// word into the other (Levenshtein). Characters compare by canonical equivalence.
/// O(n) while `a` has at most 64 characters, O(n m) above.
[[nodiscard]] std::int64_t editDistance(const Text& a, const Text& b);

/// 1 for equal words, two empty ones included; 0 when only one is empty; otherwise 1 minus the edit
/// distance over the longer word's characters, or 0 where that is not at least `fuzzyFloor`. Equal
/// words are 1 whatever the floor; with a NaN floor all others are 0.
[[nodiscard]] double of(const Text& a, const Text& b, double fuzzyFloor);

}  // namespace PrompterCore::WordSimilarity

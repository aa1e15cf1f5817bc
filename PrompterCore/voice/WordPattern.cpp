#include "PrompterCore/voice/WordPattern.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore {

namespace {

constexpr std::size_t bitCount = 64;

// A whole column of the distance table at a time, as bits of which neighbours differ by +1 or -1:
// Myers (A fast bit-vector algorithm for approximate string matching, 1999) in the form of Hyyro
// (A bit-vector algorithm for computing Levenshtein and Damerau edit distances, 2003).
// `patternLength` is 1 to 64.
std::int64_t bitParallelDistance(std::size_t patternLength, std::span<const std::uint64_t> places,
                                 std::span<const Letter> word) {
    const std::size_t lastRow = patternLength - 1;
    std::uint64_t rises = ~std::uint64_t{0};  // rows where the column grows downwards
    std::uint64_t falls = 0;                  // rows where it shrinks
    std::int64_t distance = signedCount(patternLength);
    for (const Letter letter : word) {
        const std::uint64_t matches = places[letter];
        const std::uint64_t diagonal = (((matches & rises) + rises) ^ rises) | matches | falls;
        std::uint64_t grown = falls | ~(diagonal | rises);
        std::uint64_t shrunk = diagonal & rises;
        distance += static_cast<std::int64_t>(grown >> lastRow & 1);
        distance -= static_cast<std::int64_t>(shrunk >> lastRow & 1);
        grown = grown << 1 | 1;
        shrunk <<= 1;
        rises = shrunk | ~(diagonal | grown);
        falls = grown & diagonal;
    }
    return distance;
}

// For words longer than any spoken one.
std::int64_t twoRowDistance(std::span<const Letter> pattern, std::span<const Letter> word) {
    std::vector<std::int64_t> row(pattern.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const Letter letter : word) {
        std::int64_t diagonal = row[0]++;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            const std::int64_t substituted = diagonal + (pattern[i] == letter ? 0 : 1);
            diagonal = row[i + 1];
            row[i + 1] = std::min({row[i] + 1, diagonal + 1, substituted});
        }
    }
    return row.back();
}

}  // namespace

WordPattern::WordPattern(std::vector<Letter> letters, std::size_t alphabetSize)
    : letters_(std::move(letters)) {
    if (letters_.size() > bitCount) return;
    places_.resize(alphabetSize);
    std::uint64_t place = 1;
    for (const Letter letter : letters_) {
        places_[letter] |= place;
        place <<= 1;
    }
}

std::int64_t WordPattern::editDistanceTo(std::span<const Letter> word) const {
    if (letters_.empty()) return signedCount(word.size());
    return places_.empty() ? twoRowDistance(letters_, word)
                           : bitParallelDistance(letters_.size(), places_, word);
}

// No more characters than this can stay where one word is edited into the other.
std::int64_t WordPattern::mostInCommonWith(std::span<const Letter> word) const {
    if (places_.empty()) return signedCount(std::min(letters_.size(), word.size()));
    std::uint64_t found = 0;
    for (const Letter letter : word) {
        found |= places_[letter];
    }
    return std::min<std::int64_t>(std::popcount(found), signedCount(word.size()));
}

double WordPattern::similarityTo(std::span<const Letter> word, double fuzzyFloor) const {
    if (std::ranges::equal(letters_, word)) return 1.0;
    if (letters_.empty() || word.empty()) return 0.0;
    const std::int64_t longer = signedCount(std::max(letters_.size(), word.size()));
    const auto likeness = [longer](std::int64_t distance) {
        return 1.0 - static_cast<double>(distance) / static_cast<double>(longer);
    };
    // The distance is at least this. Rounding keeps order, so where even this fails the floor, the
    // whole distance does too.
    if (!(likeness(longer - mostInCommonWith(word)) >= fuzzyFloor)) return 0.0;
    const double similarity = likeness(editDistanceTo(word));
    return similarity >= fuzzyFloor ? similarity : 0.0;
}

}  // namespace PrompterCore

#include "PrompterCore/voice/WordPattern.h"

#include <algorithm>
#include <cstdlib>
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
    const std::uint64_t lastRow = std::uint64_t{1} << (patternLength - 1);
    std::uint64_t rises = ~std::uint64_t{0};  // rows where the column grows downwards
    std::uint64_t falls = 0;                  // rows where it shrinks
    std::int64_t distance = signedCount(patternLength);
    for (const Letter letter : word) {
        const std::uint64_t matches = places[letter];
        const std::uint64_t diagonal = (((matches & rises) + rises) ^ rises) | matches | falls;
        std::uint64_t grown = falls | ~(diagonal | rises);
        std::uint64_t shrunk = diagonal & rises;
        if ((grown & lastRow) != 0) ++distance;
        if ((shrunk & lastRow) != 0) --distance;
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

double WordPattern::similarityTo(std::span<const Letter> word, double fuzzyFloor) const {
    if (std::ranges::equal(letters_, word)) return 1.0;
    if (letters_.empty() || word.empty()) return 0.0;
    const std::int64_t length = signedCount(letters_.size());
    const std::int64_t other = signedCount(word.size());
    const auto likeness =
        [longer = static_cast<double>(std::max(length, other))](std::int64_t distance) {
            return 1.0 - static_cast<double>(distance) / longer;
        };
    // The lengths alone ask for this many insertions. Rounding keeps order, so where even these
    // fail the floor, the whole distance does too.
    if (!(likeness(std::abs(length - other)) >= fuzzyFloor)) return 0.0;
    const double similarity = likeness(editDistanceTo(word));
    return similarity >= fuzzyFloor ? similarity : 0.0;
}

}  // namespace PrompterCore

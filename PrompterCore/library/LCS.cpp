#include "PrompterCore/library/LCS.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore::LCS {

namespace {

using Word = std::uint64_t;
constexpr std::size_t wordBits = 64;

// How many of a byte's bits are set up to each of them.
constexpr auto setBitsUpTo = [] {
    std::array<std::array<std::int64_t, 8>, 256> counts{};
    for (std::size_t byte = 0; byte < counts.size(); ++byte) {
        std::int64_t count = 0;
        for (std::size_t bit = 0; bit < 8; ++bit) {
            count += static_cast<std::int64_t>(byte >> bit & 1U);
            counts[byte][bit] = count;
        }
    }
    return counts;
}();

// Where each number stands in a list.
class Places {
public:
    explicit Places(std::span<const std::int64_t> numbers) {
        places_.reserve(numbers.size());
        for (std::size_t i = numbers.size(); i-- > 0;) {
            places_.emplace_back(numbers[i], numbers.size() - 1 - i);
        }
        std::ranges::sort(places_);
    }

    // Calls `visit` with each place of `number`, counted from the end.
    template <class Visit>
    void each(std::int64_t number, Visit visit) const {
        auto place = std::ranges::lower_bound(places_, number, {}, &Place::first);
        for (; place != places_.end() && place->first == number; ++place) {
            visit(place->second);
        }
    }

private:
    using Place = std::pair<std::int64_t, std::size_t>;
    std::vector<Place> places_;
};

// Row i, column j: the length of the longest common subsequence of what follows i and j. A row
// grows by at most one from each column to the one before. Those steps are worked out 64 at a time
// (H. Hyyro, Bit-parallel LCS-length computation revisited, 2004) and then counted into the row.
class Table {
public:
    Table(std::span<const std::int64_t> before, std::span<const std::int64_t> after)
        : width_(after.size() + 1),
          // Every cell is written below: clearing them first would write all memory twice.
          cells_(std::make_unique_for_overwrite<std::int64_t[]>(static_cast<std::size_t>(
              checkedMultiply(checkedAdd(signedCount(before.size()), 1),
                              checkedAdd(signedCount(after.size()), 1))))) {
        const Places places(after);
        std::vector<Word> flat((after.size() + wordBits - 1) / wordBits, ~Word{0});
        std::vector<Word> matches(flat.size(), 0);
        count(flat, row(before.size()));
        for (std::size_t i = before.size(); i-- > 0;) {
            const auto flip = [&](std::size_t place) {
                matches[place / wordBits] ^= Word{1} << place % wordBits;
            };
            places.each(before[i], flip);
            step(flat, matches);
            places.each(before[i], flip);
            count(flat, row(i));
        }
    }

    [[nodiscard]] std::int64_t at(std::size_t i, std::size_t j) const {
        return cells_[i * width_ + (width_ - 1 - j)];
    }

private:
    // A row lies in memory from its last column, which is 0, to its first.
    std::int64_t* row(std::size_t i) { return &cells_[i * width_]; }

    // From the steps of one row to those of the row above: `flat` is set where a row does not grow.
    static void step(std::vector<Word>& flat, const std::vector<Word>& matches) {
        Word carry = 0;
        for (std::size_t w = 0; w < flat.size(); ++w) {
            const Word growing = flat[w] & matches[w];
            const Word sum = flat[w] + growing;
            const Word carried = sum + carry;
            carry = static_cast<Word>(sum < growing) | static_cast<Word>(carried < sum);
            flat[w] = carried | (flat[w] & ~growing);
        }
    }

    void count(const std::vector<Word>& flat, std::int64_t* __restrict cells) const {
        std::int64_t length = 0;
        *cells++ = length;
        std::size_t left = width_ - 1;
        for (const Word word : flat) {
            for (Word steps = ~word, bit = 0; bit < wordBits && left > 0; bit += 8, steps >>= 8) {
                const auto& counts = setBitsUpTo[steps & 0xFF];
                if (left >= counts.size()) {
                    for (std::size_t i = 0; i < counts.size(); ++i)
                        cells[i] = length + counts[i];
                    cells += counts.size();
                    left -= counts.size();
                } else {
                    for (std::size_t i = 0; i < left; ++i)
                        cells[i] = length + counts[i];
                    left = 0;
                }
                length += counts.back();
            }
        }
    }

    std::size_t width_;
    std::unique_ptr<std::int64_t[]> cells_;
};

}  // namespace

std::vector<DiffOperation> operations(std::span<const std::int64_t> before,
                                      std::span<const std::int64_t> after) {
    std::vector<DiffOperation> result;
    result.reserve(before.size() + after.size());
    std::size_t i = 0;
    std::size_t j = 0;
    if (!before.empty() && !after.empty()) {
        const Table table(before, after);
        while (i < before.size() && j < after.size()) {
            if (before[i] == after[j]) {
                result.push_back(DiffOperation::equal);
                ++i;
                ++j;
            } else if (table.at(i + 1, j) < table.at(i, j + 1)) {
                result.push_back(DiffOperation::insert);
                ++j;
            } else {
                result.push_back(DiffOperation::delete_);
                ++i;
            }
        }
    }
    result.insert(result.end(), before.size() - i, DiffOperation::delete_);
    result.insert(result.end(), after.size() - j, DiffOperation::insert);
    return result;
}

}  // namespace PrompterCore::LCS

#pragma once

// Half-open ranges of 64-bit indices, each knowing what it counts: a range of tokens neither
// converts to nor compares with a range of characters.
//
//   TokenRange range(2, 5);     // tokens 2, 3 and 4
//   range.count();              // 3

#include <cstdint>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore {

/// The indices from `lower` up to, not including, `upper`. `Unit` says what they count.
template <class Unit>
class IndexRange {
public:
    /// The empty range at 0.
    constexpr IndexRange() noexcept = default;
    /// Stops the program unless `lower` <= `upper`.
    constexpr explicit IndexRange(std::int64_t lower, std::int64_t upper) noexcept
        : lower_(lower), upper_(upper) {
        require(lower <= upper, "a range's lower bound is not above its upper bound");
    }

    /// The empty range at `index`.
    [[nodiscard]] static constexpr IndexRange emptyAt(std::int64_t index) noexcept {
        return IndexRange(index, index);
    }

    [[nodiscard]] constexpr std::int64_t lower() const noexcept { return lower_; }  ///< included
    [[nodiscard]] constexpr std::int64_t upper() const noexcept { return upper_; }  ///< excluded
    [[nodiscard]] constexpr bool isEmpty() const noexcept { return lower_ == upper_; }
    /// Stops the program unless it fits 64 bits.
    [[nodiscard]] std::int64_t count() const noexcept { return checkedSubtract(upper_, lower_); }
    [[nodiscard]] constexpr bool contains(std::int64_t index) const noexcept {
        return lower_ <= index && index < upper_;
    }

    friend constexpr bool operator==(const IndexRange&, const IndexRange&) noexcept = default;

private:
    std::int64_t lower_ = 0;
    std::int64_t upper_ = 0;
};

struct CharacterUnit;
struct TokenUnit;
struct WordUnit;
struct LineUnit;

using CharacterRange = IndexRange<CharacterUnit>;  ///< of user-perceived characters
using TokenRange = IndexRange<TokenUnit>;          ///< of Script::tokens
using WordRange = IndexRange<WordUnit>;            ///< of Script::words
using LineRange = IndexRange<LineUnit>;            ///< of prompt lines

}  // namespace PrompterCore

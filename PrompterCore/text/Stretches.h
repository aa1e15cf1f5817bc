#pragma once

// Which of many stretches of code points holds one, found in a few steps.
//
//   struct Kind { char32_t first, last; bool isVowel; };
//   constexpr Stretches kinds(std::to_array<Kind>({{U'a', U'a', true}, {U'b', U'd', false}}));
//   kinds.find(U'c')->isVowel;   // false
//   kinds.find(U'z');            // null

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "PrompterCore/support/Require.h"

namespace PrompterCore {

/// Stretches from `first` to `last`, both included, in order and without overlap.
template <class Stretch, std::size_t count>
class Stretches {
public:
    /// Does not compile unless the stretches ascend, when it is a constant.
    constexpr explicit Stretches(const std::array<Stretch, count>& stretches) noexcept
        : stretches_(stretches) {
        static_assert(count < 256);
        for (std::size_t i = 0; i < count; ++i) {
            require(stretches[i].first <= stretches[i].last, "a stretch is not empty");
            require(i == 0 || stretches[i - 1].last < stretches[i].first, "stretches ascend");
        }
        std::size_t at = 0;
        for (std::size_t block = 0; block < starts_.size(); ++block) {
            while (at < count && stretches[at].last < block * blockSize)
                ++at;
            starts_[block] = static_cast<std::uint8_t>(at);
        }
    }

    /// Null when no stretch holds `codePoint`.
    [[nodiscard]] constexpr const Stretch* find(char32_t codePoint) const noexcept {
        std::size_t at = starts_[std::min<std::size_t>(codePoint / blockSize, starts_.size() - 1)];
        while (at < count && stretches_[at].last < codePoint)
            ++at;
        return at < count && stretches_[at].first <= codePoint ? &stretches_[at] : nullptr;
    }

private:
    static constexpr std::size_t blockSize = 128;

    std::array<Stretch, count> stretches_;
    // The first stretch that ends in a block of code points or behind it; above the last block all
    // are looked through.
    std::array<std::uint8_t, 0x20000 / blockSize> starts_{};
};

}  // namespace PrompterCore

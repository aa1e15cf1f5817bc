#pragma once

// Characters as small numbers, so that many words can be compared with a few without looking at
// text again. Internal to this room.
//
//   Alphabet alphabet;
//   std::vector<Letter> heard, token;
//   alphabet.learn("cafe\u0301", heard);    // 1, 2, 3, 4
//   alphabet.spell("cap\u00E9", token);     // 1, 2, 0, 4: p was never learnt

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A user-perceived character's number in an Alphabet. Canonically equivalent characters share one.
using Letter = std::uint32_t;

/// Numbers the characters of the words it learns.
class Alphabet {
public:
    /// Of every character that was not learnt. No learnt character has it.
    static constexpr Letter unknown = 0;

    /// Appends the letters of `word`, numbering the characters met for the first time. O(n).
    void learn(const Text& word, std::vector<Letter>& letters);

    /// Appends the letters of `word`, one for each character. O(n).
    void spell(const Text& word, std::vector<Letter>& letters) const;

    /// One more than the largest letter.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

private:
    std::array<Letter, 128> ascii_{};  // unknown until learnt
    std::map<std::string, Letter, std::less<>> others_;
    Letter size_ = 1;
};

}  // namespace PrompterCore

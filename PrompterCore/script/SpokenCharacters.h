#pragma once

// What single code points become in a word's spoken form, for those that mean the same whatever
// stands beside them. Words made of these only, nearly all there are, need no folding,
// lower-casing or segmentation as texts; every other word takes that way.
//
//   spokenCharacter(U'\u00C9');   // kept, as 'e'
//   spokenCharacter(U'\u2019');   // dropped: the typographic apostrophe
//   spokenCharacter(U'\u03A3');   // dependent: the capital sigma has two small forms

#include <cstdint>

namespace PrompterCore {

/// What one code point does to the spoken form of its word.
struct SpokenCharacter {
    enum class Effect : std::uint8_t {
        dependent,   ///< it depends on its neighbours, or is not known here
        kept,        ///< a letter or numeral: `letter` is kept
        dropped,     ///< a character of its own that is no letter and no numeral
        hyphen,      ///< kept behind something kept, else dropped
        foldedAway,  ///< a mark that a reader may leave out, as if it were not there
        joined,      ///< part of the character before it, with which it is kept or dropped
        sign,        ///< kept behind a letter or a sign; a letter where it stands alone
        orderedSign  ///< the same, but its place among other ordered ones is settled as a whole
    };

    Effect effect = Effect::dependent;
    char32_t letter = 0;  ///< folded and lower case, in UTF-8 no longer than what it stands for;
                          ///< 0 unless it is kept or a part of what may be kept
};

/// O(1), never allocates.
[[nodiscard]] SpokenCharacter spokenCharacter(char32_t codePoint) noexcept;

}  // namespace PrompterCore

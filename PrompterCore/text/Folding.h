#pragma once

// Folding, lower-casing and upper-casing, without a locale but for the one that a caller names.
//
//   folded("Café")        // "Cafe": a reader may leave the accent out
//   folded("が")           // "が": the voicing mark makes another letter, so it stays
//   folded("１２ｶﾞ")        // "12ガ": full-width and half-width forms go to the ordinary ones
//   lowercased("ΣΑΣ")     // "σας": with the final sigma
//   uppercased("straße")  // "STRASSE"
//   caseFolded("Straße")  // "strasse": what compares equal without regard to case

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// True for the marks that folding drops: accents on Latin, Greek and Cyrillic letters, Hebrew and
/// Arabic points, invisible marks (variation selectors, the grapheme joiner) and enclosing signs.
/// Signs that make another letter (kana voicing, Indic vowel signs, nuktas and viramas, Thai vowels
/// and tones, the Arabic hamza) are none.
[[nodiscard]] bool isFoldedAway(char32_t codePoint) noexcept;

/// Canonical decomposition; the marks of isFoldedAway dropped; full-width and half-width forms
/// replaced by the ordinary ones; canonical composition. Idempotent. O(n).
[[nodiscard]] Text folded(const Text& text);

/// Full lower-casing by Unicode, without a locale.
[[nodiscard]] Text lowercased(const Text& text);

/// Full upper-casing by Unicode, without a locale.
[[nodiscard]] Text uppercased(const Text& text);

/// Which small letter the capital I goes with: the dotted one, or in Turkish the dotless one.
enum class LetterI { dotted, dotless };

/// Full case folding: two texts are the same but for case exactly when their foldings are equal
/// (The Unicode Standard, D145). O(n).
[[nodiscard]] Text caseFolded(const Text& text, LetterI letterI = LetterI::dotted);

}  // namespace PrompterCore

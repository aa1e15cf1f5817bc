#pragma once

// Folding and lower-casing, without a locale.
//
//   folded("Café")        // "Cafe": a reader may leave the accent out
//   folded("が")           // "が": the voicing mark makes another letter, so it stays
//   folded("１２ｶﾞ")        // "12ガ": full-width and half-width forms go to the ordinary ones
//   lowercased("ΣΑΣ")     // "σας": with the final sigma

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

}  // namespace PrompterCore

#include "PrompterCore/text/Folding.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/UnicodeLibrary.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

using UnicodeLibrary::normalizer;
using UnicodeLibrary::piece;

bool hasAnyScript(UChar32 c, std::initializer_list<UScriptCode> scripts) noexcept {
    return std::any_of(scripts.begin(), scripts.end(),
                       [c](UScriptCode script) { return uscript_hasScript(c, script) != 0; });
}

// Of the marks that combine in reordering positions: those with a class of their own place an
// accent or a point. 7 is a nukta, 8 a kana voicing mark, 9 a virama.
bool isAccentOrPoint(UChar32 c) noexcept {
    const std::uint8_t combiningClass = u_getCombiningClass(c);
    return combiningClass != 0 && (combiningClass < 7 || combiningClass > 9);
}

// Full-width and half-width forms; anything else is itself.
void appendOrdinaryWidth(icu::UnicodeString& result, UChar32 c) {
    const std::int32_t type = u_getIntPropertyValue(c, UCHAR_DECOMPOSITION_TYPE);
    icu::UnicodeString ordinary;
    if ((type == U_DT_WIDE || type == U_DT_NARROW) &&
        normalizer(icu::Normalizer2::getNFKDInstance).getRawDecomposition(c, ordinary)) {
        result.append(ordinary);
    } else {
        result.append(c);
    }
}

std::string asciiLowercased(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

}  // namespace

bool isFoldedAway(char32_t codePoint) noexcept {
    const auto c = static_cast<UChar32>(codePoint);
    if ((U_GET_GC_MASK(c) & (U_GC_MN_MASK | U_GC_ME_MASK)) == 0) return false;
    // Variation selectors, the grapheme joiner: nothing to see, nothing to read.
    if (u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0) return true;
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(c, &status);
    const bool enclosing = u_charType(c) == U_ENCLOSING_MARK;
    if (script == USCRIPT_INHERITED) {
        // The accents for every script, those said to be for some, and the enclosing signs.
        if (enclosing) return true;
        if (!isAccentOrPoint(c)) return false;
        if (hasAnyScript(c, {USCRIPT_INHERITED, USCRIPT_LATIN, USCRIPT_GREEK, USCRIPT_CYRILLIC}))
            return true;
    } else if (script == USCRIPT_LATIN || script == USCRIPT_GREEK || script == USCRIPT_CYRILLIC) {
        return enclosing || isAccentOrPoint(c);
    }
    // Hebrew and Arabic: a mark that composes with a letter (the hamza, the madda) makes another
    // letter of it.
    return hasAnyScript(c, {USCRIPT_HEBREW, USCRIPT_ARABIC}) && isAccentOrPoint(c) &&
           u_getIntPropertyValue(c, UCHAR_NFC_QUICK_CHECK) == UNORM_YES;
}

Text folded(const Text& text) {
    if (Utf8::isAscii(text.utf8())) return text;
    const std::optional<std::string> ordered = UnicodeLibrary::withOrderedMarks(text.utf8());
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString decomposed =
        normalizer(icu::Normalizer2::getNFDInstance)
            .normalize(icu::UnicodeString::fromUTF8(piece(ordered ? *ordered : text.utf8())),
                       status);
    icu::UnicodeString kept;
    for (std::int32_t i = 0; i < decomposed.length();) {
        const UChar32 c = decomposed.char32At(i);
        i += U16_LENGTH(c);
        if (c < 0x80) {
            kept.append(c);
        } else if (!isFoldedAway(static_cast<char32_t>(c))) {
            appendOrdinaryWidth(kept, c);
        }
    }
    const icu::UnicodeString composed =
        normalizer(icu::Normalizer2::getNFCInstance).normalize(kept, status);
    require(U_SUCCESS(status), "a well-formed text can be normalised");
    std::string result;
    return composed.toUTF8String(result);
}

Text lowercased(const Text& text) {
    if (Utf8::isAscii(text.utf8())) return asciiLowercased(text.utf8());
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, piece(text.utf8()), sink, nullptr, status);
    require(U_SUCCESS(status), "a well-formed text can be lower-cased");
    return result;
}

Text caseFolded(const Text& text, LetterI letterI) {
    const bool dotless = letterI == LetterI::dotless;
    if (!dotless && Utf8::isAscii(text.utf8())) return asciiLowercased(text.utf8());
    // Decomposed, an I with a dot would be a dotless one that carries a dot.
    const icu::Normalizer2& form =
        normalizer(dotless ? icu::Normalizer2::getNFCInstance : icu::Normalizer2::getNFDInstance);
    const std::optional<std::string> ordered = UnicodeLibrary::withOrderedMarks(text.utf8());
    std::string normalized;
    icu::StringByteSink<std::string> normalizedSink(&normalized);
    UErrorCode status = U_ZERO_ERROR;
    form.normalizeUTF8(0, piece(ordered ? *ordered : text.utf8()), normalizedSink, nullptr, status);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    icu::CaseMap::utf8Fold(dotless ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT,
                           piece(normalized), sink, nullptr, status);
    require(U_SUCCESS(status), "a well-formed text can be case-folded");
    return result;
}

Text uppercased(const Text& text) {
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToUpper("", 0, piece(text.utf8()), sink, nullptr, status);
    require(U_SUCCESS(status), "a well-formed text can be upper-cased");
    return result;
}

}  // namespace PrompterCore

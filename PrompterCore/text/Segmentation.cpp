#include "PrompterCore/text/Segmentation.h"

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include "PrompterCore/text/Utf8.h"

namespace PrompterCore::Segmentation {

namespace {

// Grapheme_Cluster_Break, with Extended_Pictographic told apart from the other "Other"s.
enum class BreakClass {
    other,
    control,
    cr,
    lf,
    extend,
    zwj,
    regionalIndicator,
    prepend,
    spacingMark,
    hangulL,
    hangulV,
    hangulT,
    hangulLV,
    hangulLVT,
    pictograph
};

BreakClass lookedUp(char32_t codePoint) noexcept {
    const auto c = static_cast<UChar32>(codePoint);
    switch (u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
        case U_GCB_CONTROL: return BreakClass::control;
        case U_GCB_CR: return BreakClass::cr;
        case U_GCB_LF: return BreakClass::lf;
        case U_GCB_EXTEND: return BreakClass::extend;
        case U_GCB_ZWJ: return BreakClass::zwj;
        case U_GCB_REGIONAL_INDICATOR: return BreakClass::regionalIndicator;
        case U_GCB_PREPEND: return BreakClass::prepend;
        case U_GCB_SPACING_MARK: return BreakClass::spacingMark;
        case U_GCB_L: return BreakClass::hangulL;
        case U_GCB_V: return BreakClass::hangulV;
        case U_GCB_T: return BreakClass::hangulT;
        case U_GCB_LV: return BreakClass::hangulLV;
        case U_GCB_LVT: return BreakClass::hangulLVT;
        default: break;
    }
    return u_hasBinaryProperty(c, UCHAR_EXTENDED_PICTOGRAPHIC) != 0 ? BreakClass::pictograph
                                                                    : BreakClass::other;
}

BreakClass breakClass(char32_t codePoint) noexcept {
    // Stretches in which every letter is "Other", so that the common scripts need no look-up. A
    // test holds them against the database, code point by code point.
    if (codePoint >= 0x20 && codePoint < 0x7F) return BreakClass::other;
    if (codePoint >= 0xC0 && codePoint < 0x300) return BreakClass::other;     // Latin
    if (codePoint >= 0x370 && codePoint < 0x483) return BreakClass::other;    // Greek, Cyrillic
    if (codePoint >= 0x3041 && codePoint < 0x3097) return BreakClass::other;  // Hiragana
    if (codePoint >= 0x30A0 && codePoint < 0x3100) return BreakClass::other;  // Katakana
    if (codePoint >= 0x3400 && codePoint < 0xA000) return BreakClass::other;  // Han
    if (codePoint >= 0xAC00 && codePoint < 0xD7A4)
        return (codePoint - 0xAC00) % 28 == 0 ? BreakClass::hangulLV : BreakClass::hangulLVT;
    return lookedUp(codePoint);
}

// Of the scripts in which a virama joins two consonants to one sign (GB9c).
bool isOfConjuncts(char32_t codePoint, UIndicSyllabicCategory category) noexcept {
    if (codePoint < 0x0900 || codePoint >= 0x0D80) return false;
    const auto c = static_cast<UChar32>(codePoint);
    if (u_getIntPropertyValue(c, UCHAR_INDIC_SYLLABIC_CATEGORY) != category) return false;
    UErrorCode status = U_ZERO_ERROR;
    switch (uscript_getScript(c, &status)) {
        case USCRIPT_BENGALI:
        case USCRIPT_DEVANAGARI:
        case USCRIPT_GUJARATI:
        case USCRIPT_MALAYALAM:
        case USCRIPT_ORIYA:
        case USCRIPT_TELUGU: return true;
        default: return false;
    }
}

// How far a conjunct has come: a consonant, then marks with a virama among them, then the next.
class Conjunct {
public:
    bool takesConsonant(char32_t codePoint) const noexcept {
        return linked_ && isOfConjuncts(codePoint, U_INSC_CONSONANT);
    }

    void add(char32_t codePoint, BreakClass c) noexcept {
        if (c == BreakClass::other) {
            begun_ = isOfConjuncts(codePoint, U_INSC_CONSONANT);
            linked_ = false;
        } else if (begun_) {
            begun_ =
                c == BreakClass::zwj || (c == BreakClass::extend &&
                                         u_getCombiningClass(static_cast<UChar32>(codePoint)) != 0);
            linked_ = begun_ && (linked_ || isOfConjuncts(codePoint, U_INSC_VIRAMA));
        }
    }

private:
    bool begun_ = false;
    bool linked_ = false;
};

bool isControl(BreakClass c) noexcept {
    return c == BreakClass::control || c == BreakClass::cr || c == BreakClass::lf;
}

bool joinsHangul(BreakClass before, BreakClass after) noexcept {
    using enum BreakClass;
    switch (before) {
        case hangulL:
            return after == hangulL || after == hangulV || after == hangulLV || after == hangulLVT;
        case hangulLV:
        case hangulV: return after == hangulV || after == hangulT;
        case hangulLVT:
        case hangulT: return after == hangulT;
        default: return false;
    }
}

}  // namespace

std::size_t clusterEnd(std::string_view bytes, std::size_t start) noexcept {
    // GB999 for two ASCII characters in a row, which only GB3 (CR LF) could keep together.
    if (start + 1 == bytes.size()) return start + 1;
    if (Utf8::isAscii(bytes[start]) && Utf8::isAscii(bytes[start + 1]))
        return start + 1 + (bytes[start] == '\r' && bytes[start + 1] == '\n' ? 1 : 0);

    std::size_t end = start;
    const char32_t first = Utf8::next(bytes, end);
    BreakClass before = breakClass(first);
    Conjunct conjunct;
    conjunct.add(first, before);
    bool oddIndicators = before == BreakClass::regionalIndicator;  // half a flag is open (GB12)
    bool pictograph = before == BreakClass::pictograph;  // pictograph Extend* so far (GB11)
    bool pictographJoined = false;                       // ... and then a joiner
    while (end < bytes.size()) {
        std::size_t behind = end;
        const char32_t codePoint = Utf8::next(bytes, behind);
        const BreakClass after = breakClass(codePoint);
        bool joined = false;
        if (before == BreakClass::cr && after == BreakClass::lf) {
            joined = true;  // GB3
        } else if (isControl(before) || isControl(after)) {
            joined = false;  // GB4, GB5
        } else if (after == BreakClass::extend || after == BreakClass::zwj ||
                   after == BreakClass::spacingMark || before == BreakClass::prepend) {
            joined = true;  // GB9, GB9a, GB9b
        } else if (conjunct.takesConsonant(codePoint)) {
            joined = true;  // GB9c
        } else if (after == BreakClass::pictograph) {
            joined = pictographJoined;  // GB11
        } else if (after == BreakClass::regionalIndicator) {
            joined = before == BreakClass::regionalIndicator && oddIndicators;  // GB12, GB13
        } else {
            joined = joinsHangul(before, after);  // GB6 to GB8
        }
        if (!joined) break;
        conjunct.add(codePoint, after);
        pictographJoined = pictograph && after == BreakClass::zwj;
        pictograph = after == BreakClass::pictograph || (pictograph && after == BreakClass::extend);
        oddIndicators = after == BreakClass::regionalIndicator && !oddIndicators;
        before = after;
        end = behind;
    }
    return end;
}

}  // namespace PrompterCore::Segmentation

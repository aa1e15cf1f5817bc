#include "PrompterCore/text/Segmentation.h"

#include <array>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include "PrompterCore/text/Stretches.h"
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

// The classes of the common scripts, so that they need no look-up. In order; a test holds them
// against the database, code point by code point.
struct Stretch {
    char32_t first, last;
    BreakClass breakClass;
};

constexpr Stretches stretches(std::to_array<Stretch>({
    {0x0020, 0x007E, BreakClass::other},
    {0x00C0, 0x02FF, BreakClass::other},  // Latin
    {0x0300, 0x036F, BreakClass::extend},
    {0x0370, 0x0482, BreakClass::other},   // Greek, Cyrillic
    {0x0591, 0x05BD, BreakClass::extend},  // Hebrew
    {0x05D0, 0x05EA, BreakClass::other},
    {0x061B, 0x061B, BreakClass::other},  // Arabic
    {0x061D, 0x064A, BreakClass::other},
    {0x064B, 0x065F, BreakClass::extend},
    {0x0660, 0x066F, BreakClass::other},
    {0x0671, 0x06D5, BreakClass::other},
    {0x0900, 0x0902, BreakClass::extend},  // Devanagari
    {0x0903, 0x0903, BreakClass::spacingMark},
    {0x0904, 0x0939, BreakClass::other},
    {0x093E, 0x0940, BreakClass::spacingMark},
    {0x0941, 0x0948, BreakClass::extend},
    {0x0949, 0x094C, BreakClass::spacingMark},
    {0x094D, 0x094D, BreakClass::extend},
    {0x0E01, 0x0E30, BreakClass::other},  // Thai
    {0x0E31, 0x0E31, BreakClass::extend},
    {0x0E32, 0x0E32, BreakClass::other},
    {0x0E33, 0x0E33, BreakClass::spacingMark},
    {0x0E34, 0x0E3A, BreakClass::extend},
    {0x0E40, 0x0E46, BreakClass::other},
    {0x0E47, 0x0E4E, BreakClass::extend},
    {0x1E00, 0x1FFF, BreakClass::other},  // Latin, Greek
    {0x2010, 0x2027, BreakClass::other},
    {0x3041, 0x3096, BreakClass::other},  // Hiragana
    {0x30A0, 0x30FF, BreakClass::other},  // Katakana
    {0x3400, 0x9FFF, BreakClass::other},  // Han
    {0xFE00, 0xFE0F, BreakClass::extend},
    {0x1F1E6, 0x1F1FF, BreakClass::regionalIndicator},
    {0x1F249, 0x1F3FA, BreakClass::pictograph},
    {0x1F3FB, 0x1F3FF, BreakClass::extend},
    {0x1F400, 0x1F53D, BreakClass::pictograph},
    {0x1F546, 0x1F64F, BreakClass::pictograph},
    {0x1F680, 0x1F6FF, BreakClass::pictograph},
    {0x1F947, 0x1FAFF, BreakClass::pictograph},
}));

BreakClass breakClass(char32_t codePoint) noexcept {
    if (codePoint >= 0xAC00 && codePoint < 0xD7A4)
        return (codePoint - 0xAC00) % 28 == 0 ? BreakClass::hangulLV : BreakClass::hangulLVT;
    const Stretch* const found = stretches.find(codePoint);
    return found != nullptr ? found->breakClass : lookedUp(codePoint);
}

// Of the scripts in which a virama joins two consonants to one sign (GB9c).
bool isOfConjuncts(char32_t codePoint, UIndicSyllabicCategory category) noexcept {
    if (codePoint < 0x0900 || codePoint >= 0x0D80) return false;
    if (codePoint >= 0x0904 && codePoint < 0x0950)  // most of Devanagari needs no look-up
        return category == U_INSC_VIRAMA ? codePoint == 0x094D
                                         : codePoint >= 0x0915 && codePoint < 0x093A;
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

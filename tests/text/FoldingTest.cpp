#include <functional>
#include <string>

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include "PrompterCore/text/Folding.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"
#include "tests/text/CodePoints.h"

namespace PrompterCore {
namespace {

struct Case {
    const char* what;
    std::string_view text, folded;
};

template <std::size_t n>
void expectFolded(const Case (&cases)[n]) {
    for (const auto& [what, text, expected] : cases) {
        SCOPED_TRACE(what);
        // Bytes, not equivalence: the result is composed.
        EXPECT_EQ(Text(folded(text).utf8()), Text(expected));
        EXPECT_EQ(folded(text).utf8(), Text(expected).composed().utf8());
        EXPECT_EQ(folded(Text(text).composed()).utf8(), Text(expected).composed().utf8());
    }
}

// Whatever is dropped, in whatever version of Unicode, is of these scripts.
TEST(Folding, DropsNoMarkOfAnotherScript) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        if (!isFoldedAway(static_cast<char32_t>(c))) continue;
        if (u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0) continue;
        const auto has = [c](UScriptCode script) { return uscript_hasScript(c, script) != 0; };
        EXPECT_TRUE(has(USCRIPT_INHERITED) || has(USCRIPT_LATIN) || has(USCRIPT_GREEK) ||
                    has(USCRIPT_CYRILLIC) || has(USCRIPT_HEBREW) || has(USCRIPT_ARABIC))
            << std::hex << c;
        const int combiningClass = u_getCombiningClass(c);
        EXPECT_FALSE(combiningClass >= 7 && combiningClass <= 9) << std::hex << c;
    }
}

TEST(Folding, TheEdgesOfTheSetAreChosen) {
    EXPECT_TRUE(isFoldedAway(U'\u065F')) << "the wavy hamza composes with no letter";
    EXPECT_FALSE(isFoldedAway(U'\u0654')) << "the hamza above does";
    EXPECT_TRUE(isFoldedAway(U'\u0951')) << "a Vedic stress sign that Latin shares";
    EXPECT_FALSE(isFoldedAway(U'\u1CD0')) << "one that it does not";
}

// The Unicode library's own sorting would need minutes for these.
TEST(Folding, LongRunsOfMarksInDisorderTakeLinearTime) {
    std::string disorder = "\u0915";
    std::string order = disorder;
    constexpr int pairs = 100'000;
    for (int i = 0; i < pairs; ++i)
        disorder += "\u094D\u093C";  // a virama, a nukta: classes 9 and 7
    for (int i = 0; i < pairs; ++i)
        order += "\u093C";
    for (int i = 0; i < pairs; ++i)
        order += "\u094D";
    EXPECT_EQ(Text(disorder), Text(order));
    EXPECT_EQ(std::hash<Text>()(Text(disorder)), std::hash<Text>()(Text(order)));
    EXPECT_EQ(folded(disorder).utf8(), folded(order).utf8());
    EXPECT_NE(Text(disorder), Text(order + "\u094D"));
}

TEST(Folding, LatinLettersLoseTheirAccents) {
    expectFolded({
        {"composed and decomposed", "Caf\u00E9 cafe\u0301", "Cafe cafe"},
        {"umlauts, cedilla, tilde, ring", "\u00E4\u00D6\u00E7\u00F1\u00C5", "aOcnA"},
        {"Vietnamese, two marks and the horn", "Ti\u1EBFng Vi\u1EC7t \u01B0\u01A1ng",
         "Tieng Viet uong"},
        {"Turkish dotted I; the dotless stays", "\u0130\u0131\u015E\u011F", "I\u0131Sg"},
        {"letters of their own stay", "\u00DF\u00F8\u0111\u0142\u00E6\u00FE",
         "\u00DF\u00F8\u0111\u0142\u00E6\u00FE"},
        {"a pile of marks", "z\u0351\u036B\u0343\u032A\u0302", "z"},
        {"a mark alone", "\u0301", ""},
        {"angstrom sign", "\u212B", "A"},
        {"a ligature is no accent", "\uFB01", "\uFB01"},
        {"spacing accents stay", "\u00B4\u00A8", "\u00B4\u00A8"},
    });
}

TEST(Folding, GreekLettersLoseTonosDialytikaAndBreathings) {
    expectFolded({
        {"tonos", "\u03AC\u03AD\u03CE", "\u03B1\u03B5\u03C9"},
        {"dialytika and tonos", "\u0390\u03B0", "\u03B9\u03C5"},
        {"polytonic with iota below", "\u1F80\u1FB7\u1F04", "\u03B1\u03B1\u03B1"},
        {"final sigma stays final", "\u03C3\u03CC\u03C2", "\u03C3\u03BF\u03C2"},
        {"ohm sign", "\u2126", "\u03A9"},
        {"question mark", "\u037E", ";"},
    });
}

TEST(Folding, CyrillicLettersLoseTheirMarks) {
    expectFolded({
        {"short i and io", "\u0439\u0451\u0419\u0401", "\u0438\u0435\u0418\u0415"},
        {"yi", "\u0457", "\u0456"},
        {"stress mark", "\u0437\u0430\u0301\u043C\u043E\u043A", "\u0437\u0430\u043C\u043E\u043A"},
        {"titlo", "\u0431\u0483\u0433", "\u0431\u0433"},
        {"a descender is no mark", "\u0449\u04A3", "\u0449\u04A3"},
        {"millions sign encloses", "\u0430\u0489", "\u0430"},
    });
}

TEST(Folding, HebrewLosesItsPointsAndAccents) {
    expectFolded({
        {"vowels", "\u05E9\u05C1\u05B8\u05DC\u05D5\u05B9\u05DD", "\u05E9\u05DC\u05D5\u05DD"},
        {"shin and sin dots", "\u05E9\u05C1\u05E9\u05C2", "\u05E9\u05E9"},
        {"presentation forms", "\uFB2A\uFB2D\uFB31\uFB1D", "\u05E9\u05E9\u05D1\u05D9"},
        {"dagesh, rafe, cantillation", "\u05D1\u05BC\u05D1\u05BF\u05D1\u0591",
         "\u05D1\u05D1\u05D1"},
        {"varika", "\u05D0\uFB1E", "\u05D0"},
        {"maqaf and geresh are letters' neighbours, not points", "\u05D0\u05BE\u05F3",
         "\u05D0\u05BE\u05F3"},
    });
}

TEST(Folding, ArabicLosesTashkilButKeepsHamzaAndMadda) {
    expectFolded({
        {"short vowels, shadda, sukun, tanwin",
         "\u0645\u064F\u062D\u064E\u0645\u0651\u064E\u062F\u0652\u064C",
         "\u0645\u062D\u0645\u062F"},
        {"superscript alef", "\u0647\u0670\u0630\u0627", "\u0647\u0630\u0627"},
        {"hamza and madda on their letters", "\u0623\u0625\u0622\u0624\u0626",
         "\u0623\u0625\u0622\u0624\u0626"},
        {"hamza and madda, decomposed", "\u0627\u0654\u0627\u0655\u0627\u0653",
         "\u0623\u0625\u0622"},
        {"a vowel over a hamza", "\u0623\u064E", "\u0623"},
        {"Quranic annotation", "\u0645\u06D6", "\u0645"},
        {"tatweel is no mark", "\u0645\u0640\u0645", "\u0645\u0640\u0645"},
        {"Persian and Urdu letters", "\u067E\u06AF\u0679\u06D3", "\u067E\u06AF\u0679\u06D3"},
    });
}

TEST(Folding, KanaKeepTheirVoicing) {
    expectFolded({
        {"composed", "\u304C\u3071\u30AC\u30D1", "\u304C\u3071\u30AC\u30D1"},
        {"decomposed", "\u304B\u3099\u306F\u309A\u30AB\u3099", "\u304C\u3071\u30AC"},
        {"half-width, voiced", "\uFF76\uFF9E", "\u30AC"},
        {"half-width, half voiced", "\uFF8A\uFF9F", "\u30D1"},
        {"half-width word", "\uFF83\uFF9E\uFF70\uFF80", "\u30C7\u30FC\u30BF"},
        {"half-width punctuation", "\uFF61\uFF62\uFF65", "\u3002\u300C\u30FB"},
        {"a mark on what it cannot voice stays", "\u3042\u3099", "\u3042\u3099"},
        {"small kana", "\u3063\uFF6F", "\u3063\u30C3"},
        {"Han", "\u8A9E\u65E5", "\u8A9E\u65E5"},
    });
}

TEST(Folding, IndicAndThaiSignsMakeOtherLettersAndStay) {
    expectFolded({
        {"Devanagari vowel signs, virama, anusvara", "\u0939\u093F\u0928\u094D\u0926\u0940\u0902",
         "\u0939\u093F\u0928\u094D\u0926\u0940\u0902"},
        {"Devanagari nukta, composed and not", "\u0929\u0928\u093C\u0915\u093C",
         "\u0929\u0929\u0915\u093C"},
        {"excluded from composition", "\u0958", "\u0915\u093C"},
        {"Bengali", "\u09AC\u09BE\u0982\u09B2\u09BE\u09CB\u09DF",
         "\u09AC\u09BE\u0982\u09B2\u09BE\u09CB\u09AF\u09BC"},
        {"Tamil", "\u0BA4\u0BAE\u0BBF\u0BB4\u0BCD\u0BCA", "\u0BA4\u0BAE\u0BBF\u0BB4\u0BCD\u0BCA"},
        {"Thai vowels and tones", "\u0E01\u0E34\u0E48\u0E19\u0E49\u0E33\u0E38",
         "\u0E01\u0E34\u0E48\u0E19\u0E49\u0E33\u0E38"},
        {"Lao, Khmer, Myanmar, Tibetan",
         "\u0EAA\u0EBB\u0EC9\u1780\u17B7\u17D2\u1000\u102D\u1039\u0F40\u0F72",
         "\u0EAA\u0EBB\u0EC9\u1780\u17B7\u17D2\u1000\u102D\u1039\u0F40\u0F72"},
    });
}

TEST(Folding, HangulStays) {
    expectFolded({
        {"syllables", "\uD55C\uAE00", "\uD55C\uAE00"},
        {"jamo compose", "\u1112\u1161\u11AB", "\uD55C"},
        {"half-width letters", "\uFFA1\uFFC2", "\u3131\u314F"},
    });
}

TEST(Folding, WidthsAndInvisibleMarksGo) {
    expectFolded({
        {"full-width digits and letters", "\uFF11\uFF12\uFF21\uFF42", "12Ab"},
        {"full-width punctuation", "\uFF03\uFF0D\uFF0C\uFF0E\uFF07\uFF5E", "#-,.'~"},
        {"ideographic space", "\u3000", " "},
        {"signs", "\uFFE0\uFFE5\uFFE6\uFFE3\uFFE8", "\u00A2\u00A5\u20A9\u00AF\u2502"},
        {"full-width letter with an accent", "\uFF45\u0301", "e"},
        {"variation selectors", "\u2764\uFE0F\u8A9E\U000E0100", "\u2764\u8A9E"},
        {"keycap", "1\uFE0F\u20E3", "1"},
        {"grapheme joiner", "e\u034F\u0301", "e"},
        {"emoji and flags stay", "\U0001F44D\U0001F3FD\U0001F1E9\U0001F1EA\u200D",
         "\U0001F44D\U0001F3FD\U0001F1E9\U0001F1EA\u200D"},
        {"superscripts and circled digits are not widths", "\u00B2\u2460\u00BD",
         "\u00B2\u2460\u00BD"},
    });
}

TEST(Folding, AsciiAndEmptyStayAndNulIsKept) {
    std::string ascii;
    for (char c = 0; c < 127; ++c)
        ascii += c;
    ascii += '\x7F';
    EXPECT_EQ(folded(ascii).utf8(), ascii);
    EXPECT_EQ(folded("").utf8(), "");
    EXPECT_EQ(folded(std::string_view("\0e\u0301\0", 5)).utf8(), std::string("\0e\0", 3));
}

bool isComposedAndStable(const Text& text) {
    const Text once = folded(text);
    return once.composed().utf8() == once.utf8() && folded(once).utf8() == once.utf8();
}

TEST(Folding, EveryAssignedCodePointFoldsOnceAndForAll) {
    Tests::forEachCodePoint([](char32_t c) {
        const auto category = u_charType(static_cast<UChar32>(c));
        if (category == U_UNASSIGNED || category == U_PRIVATE_USE_CHAR) return;
        const std::string it = Tests::utf8Of(c);
        if (!isComposedAndStable(it) || !isComposedAndStable("e" + it + "\u0301"))
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c);
    });
}

TEST(Folding, IsFoldedAwayOnlyForNonSpacingAndEnclosingMarks) {
    Tests::forEachCodePoint([](char32_t c) {
        const auto category = u_charType(static_cast<UChar32>(c));
        const bool mark = category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK;
        if (isFoldedAway(c) && !mark) ADD_FAILURE() << std::hex << static_cast<unsigned>(c);
    });
}

TEST(Folding, IsIdempotentComposedAndTheSameForEquivalentTexts) {
    Tests::forAll(
        [](const Tests::TwoTexts& two) {
            RC_ASSERT(isComposedAndStable(two.a));
            if (two.a == two.b) RC_ASSERT(folded(two.a).utf8() == folded(two.b).utf8());
        },
        2000);
}

TEST(Lowercasing, IsFullAndKnowsTheFinalSigma) {
    struct Lower {
        const char* what;
        std::string_view text, lower;
    };
    const Lower cases[] = {
        {"ASCII", "Hello, WORLD 42 [@", "hello, world 42 [@"},
        {"empty", "", ""},
        {"final sigma", "\u03A3\u0391\u03A3", "\u03C3\u03B1\u03C2"},
        {"final before a full stop", "\u0391\u03A3. \u0391", "\u03B1\u03C2. \u03B1"},
        {"Turkish dotted I: i with its dot", "\u0130", "i\u0307"},
        {"I is i in every locale", "I\u00C9", "i\u00E9"},
        {"sharp s", "\u1E9E\u00DF", "\u00DF\u00DF"},
        {"Cyrillic", "\u0416\u0401", "\u0436\u0451"},
        {"full-width", "\uFF21", "\uFF41"},
        {"Deseret, outside the first plane", "\U00010400", "\U00010428"},
        {"Georgian capital", "\u1C90", "\u10D0"},
        {"no case", "\u304C\u05D0", "\u304C\u05D0"},
    };
    for (const auto& [what, text, lower] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(lowercased(text).utf8(), lower);
    }
}

TEST(Lowercasing, IsThatOfTheUnicodeLibraryForEveryCodePointAndNastyTexts) {
    const auto reference = [](const std::string& bytes) {
        std::string lower;
        return icu::UnicodeString::fromUTF8(bytes)
            .toLower(icu::Locale::getRoot())
            .toUTF8String(lower);
    };
    Tests::forEachCodePoint([&reference](char32_t c) {
        const std::string it = Tests::utf8Of(c);
        if (lowercased(it).utf8() != reference(it))
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c);
    });
    Tests::forAll([&reference](const Text& text) {
        RC_ASSERT(lowercased(text).utf8() == reference(text.utf8()));
    });
}

TEST(Lowercasing, KeepsEquivalentTextsEquivalent) {
    Tests::forAll(
        [](const Tests::TwoTexts& two) {
            if (two.a == two.b) RC_ASSERT(lowercased(two.a) == lowercased(two.b));
        },
        2000);
}

TEST(Folding, UpperCasingIsFull) {
    EXPECT_EQ(uppercased("").utf8(), "");
    EXPECT_EQ(uppercased("ff8000 Az").utf8(), "FF8000 AZ");
    EXPECT_EQ(uppercased("stra\u00DFe").utf8(), "STRASSE");
    EXPECT_EQ(uppercased("\uFB00").utf8(), "FF") << "a ligature becomes two letters";
    EXPECT_EQ(uppercased("i\u0131").utf8(), "II") << "no locale";
    EXPECT_EQ(uppercased("\uFF41").utf8(), "\uFF21") << "widths stay";
}

}  // namespace
}  // namespace PrompterCore

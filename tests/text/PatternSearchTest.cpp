#include <concepts>
#include <string>

#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/PatternSearch.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<PatternSearch> && std::equality_comparable<PatternSearch>);

TEST(CaseFolding, MakesTextsEqualThatDifferOnlyInCase) {
    struct Case {
        const char* what;
        Text a, b;
        bool equal;
    };
    const Case cases[] = {
        {"ASCII", "Notes", "nOTES", true},
        {"accents stay", "CAF\u00C9", "cafe\u0301", true},
        {"another letter", "CAFE", "caf\u00E9", false},
        {"sharp s", "STRASSE", "stra\u00DFe", true},
        {"all sigmas", "\u03A3\u03B1\u03A3", "\u03C3\u03B1\u03C2", true},
        {"dotless i is no i", "I", "\u0131", false},
        {"full width is another letter", "\uFF21", "a", false},
        {"full width has case", "\uFF21", "\uFF41", true},
    };
    for (const auto& [what, a, b, equal] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(caseFolded(a) == caseFolded(b), equal);
    }
    EXPECT_EQ(caseFolded("I", LetterI::dotless), "\u0131");
    EXPECT_EQ(caseFolded("\u0130", LetterI::dotless), "i");
}

TEST(PatternSearch, DoesWhatItsManualShows) {
    EXPECT_TRUE(PatternSearch("e").isIn("cafe"));
    EXPECT_FALSE(PatternSearch("e").isIn("caf\u00E9"));
    EXPECT_TRUE(PatternSearch::ignoringCase("STRASSE", Locale()).isIn("Alte Stra\u00DFe"));
}

TEST(PatternSearch, WithoutCaseALocaleMayPartTheDottedFromTheDotlessI) {
    struct Case {
        const char *locale, *pattern, *text;
        bool isIn;
    };
    const Case cases[] = {
        {"en", "I", "i", true},         {"en", "I", "\u0131", false},
        {"tr", "I", "i", false},        {"tr", "I", "\u0131", true},
        {"tr_TR", "\u0130", "i", true}, {"az-Latn", "I\u0307", "i", true},
        {"tr", "s", "\u00DF", false},   {"tr", "SS", "\u00DF", true},
    };
    for (const auto& [locale, pattern, text, isIn] : cases) {
        SCOPED_TRACE(std::string(locale) + ": " + pattern + " in " + text);
        const PatternSearch search =
            PatternSearch::ignoringCase(pattern, Locale::fromIdentifier(locale).value());
        EXPECT_EQ(search.isIn(text), isIn);
    }
}

TEST(PatternSearch, FindsWholeCharactersOnly) {
    struct Case {
        const char* what;
        Text pattern, text;
        bool isIn;
    };
    const std::string flags = "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7";
    const Case cases[] = {
        {"inside", "b", "abc", true},
        {"case counts", "B", "abc", false},
        {"empty in anything", "", "abc", true},
        {"empty in empty", "", "", true},
        {"not in empty", "a", "", false},
        {"longer than the text", "abcd", "abc", false},
        {"composed", "\u00E9", "cafe\u0301", true},
        {"decomposed", "e\u0301", "caf\u00E9", true},
        {"without its accent", "e", "cafe\u0301", false},
        {"a mark alone", "\u0301", "cafe\u0301", false},
        {"found behind a false start", "e", "e\u0301e", true},
        {"across two flags", "\U0001F1EA\U0001F1EB", Text(flags), false},
        {"one flag", "\U0001F1EB\U0001F1F7", Text(flags), true},
        {"half a line break", "\n", "a\r\nb", false},
        {"a line break", "\r\n", "a\r\nb", true},
        {"right to left", "\u05D1", "\u05D0\u05D1\u05D2", true},
    };
    for (const auto& [what, pattern, text, isIn] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PatternSearch(pattern).isIn(text), isIn);
    }
}

// Every stretch of characters, compared as a text.
bool plainIsIn(const Text& pattern, const Text& text) {
    if (pattern.isEmpty()) return true;
    const Characters characters(text);
    for (std::int64_t first = 0; first < characters.count(); ++first)
        for (std::int64_t last = first + 1; last <= characters.count(); ++last)
            if (Text(WellFormed{characters.slice(CharacterRange(first, last))}) == pattern)
                return true;
    return false;
}

TEST(PatternSearch, AgreesWithComparingEveryStretch) {
    const auto letters = Tests::textOver(
        {"a", "e", "\u0301", "\u00E9", "\u0323", "\U0001F1E9", "\U0001F1EA", "\r", "\n"});
    Tests::forAll(
        [&] {
            const Text text = *letters;
            const Text pattern = *letters;
            RC_ASSERT(PatternSearch(pattern).isIn(text) == plainIsIn(pattern, text));
        },
        1000);
}

TEST(PatternSearch, EveryTextIsInItselfWhateverItsCase) {
    const Locale english = Locale::fromIdentifier("en").value();
    Tests::forAll([&](const Text& text) {
        RC_ASSERT(PatternSearch(text).isIn(text));
        RC_ASSERT(PatternSearch::ignoringCase(caseFolded(text), english).isIn(text));
    });
}

}  // namespace
}  // namespace PrompterCore

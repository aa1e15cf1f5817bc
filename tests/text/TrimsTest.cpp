#include <string>

#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Trims.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

TEST(Trims, TakeWholeCharactersOfTheirClass) {
    struct Case {
        const char* what;
        std::string_view bytes, ofWhiteSpace, ofBlanks;
    };
    const Case cases[] = {
        {"nothing", "", "", ""},
        {"nothing to trim", "a b", "a b", "a b"},
        {"spaces and tabs", " \ta b\t ", "a b", "a b"},
        {"only blanks", " \t\u00A0\u3000", "", ""},
        {"a line break is no blank", " a\n ", "a", "a\n"},
        {"inner breaks stay", "\n a\r\n b\n", "a\r\n b", "\n a\r\n b\n"},
        {"only a line break", " \r\n ", "", "\r\n"},
        {"no-break and ideographic space", "\u00A0a\u3000", "a", "a"},
        {"next line and line separator", "\u0085a\u2028", "a", "\u0085a\u2028"},
        {"a space goes with its mark", " \u0301a \u0301", "a", "a"},
        {"a mark alone stays", "\u0301 a", "\u0301 a", "\u0301 a"},
        {"a mark behind a tab is alone", "\t\u0301 a", "\u0301 a", "\u0301 a"},
        {"a mark behind a line break is alone", "\n\u0301 a", "\u0301 a", "\n\u0301 a"},
        {"a space with a joiner", " \u200Da", "a", "a"},
        {"zero-width space is neither", "\u200Ba\u200B", "\u200Ba\u200B", "\u200Ba\u200B"},
        {"byte order mark is neither", "\uFEFF a", "\uFEFF a", "\uFEFF a"},
        {"NUL is neither", std::string_view(" \0 ", 3), std::string_view("\0", 1),
         std::string_view("\0", 1)},
        {"vertical tab and form feed", "\v\fa", "a", "\v\fa"},
    };
    for (const auto& [what, bytes, ofWhiteSpace, ofBlanks] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Text(trimmedOfWhiteSpace(bytes)).utf8(), ofWhiteSpace);
        EXPECT_EQ(Text(trimmedOfBlanks(bytes)).utf8(), ofBlanks);
    }
}

TEST(Trims, NeverAllocate) {
    const std::string text =
        "\t\u3000 \u0301a \U0001F468\u200D\U0001F469 \u0915\u094D\u0937 \u2028 ";
    EXPECT_EQ(Tests::allocationsDuring([&text] {
                  static_cast<void>(trimmedOfWhiteSpace(text));
                  static_cast<void>(trimmedOfBlanks(text));
              }),
              0);
}

TEST(Trims, LeaveOneBlankBetweenRuns) {
    struct Case {
        const char* what;
        std::string_view bytes, single;
    };
    const Case cases[] = {
        {"nothing", "", ""},
        {"only white space", " \t\r\n\u3000", ""},
        {"nothing to do", "a b", "a b"},
        {"runs, and white space around them", "  a \t\r\n b\u00A0\u2028c  ", "a b c"},
        {"a space goes with its mark", "a \u0301b", "a b"},
        {"a mark behind a line break is alone and stays", "a\n\u0301b", "a \u0301b"},
        {"nothing before the first run", "\n\u0301 a", "\u0301 a"},
        {"a zero-width space is none", "a\u200B b", "a\u200B b"},
    };
    for (const auto& [what, bytes, single] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(withSingleBlanks(bytes), single);
    }
}

TEST(Trims, AreAStretchOfTheCharactersWithNoneToTrimAtItsEnds) {
    const auto law = [](const Text& text, std::string_view trimmed, auto&& isTrimmed) {
        const Characters characters(text);
        std::int64_t from = 0;
        std::int64_t to = characters.count();
        while (from < to && isTrimmed(characters[from]))
            ++from;
        while (from < to && isTrimmed(characters[to - 1]))
            --to;
        RC_ASSERT(trimmed == characters.slice(CharacterRange(from, to)));
    };
    const auto blanky = Tests::textOver(
        {"a", " ", "\n", "\t", "\r", "\u0301", "\u00A0", "\u2028", "\u200D", "\u3000"});
    const auto check = [&law](const Text& text) {
        law(text, trimmedOfWhiteSpace(text.utf8()), [](Character c) { return c.isWhiteSpace(); });
        law(text, trimmedOfBlanks(text.utf8()),
            [](Character c) { return CharacterClasses::isHorizontalBlank(c.firstCodePoint()); });
    };
    Tests::forAll([&] { check(*blanky); }, 2000);
    Tests::forAll(check, 500);
}

}  // namespace
}  // namespace PrompterCore

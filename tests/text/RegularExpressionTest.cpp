#include <string>
#include <tuple>

#include "PrompterCore/text/RegularExpression.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

TEST(RegularExpression, MatchAnywhereCodePointByCodePoint) {
    struct Case {
        const char* what;
        Text text;
        const char* pattern;
        bool matches;
    };
    const Case cases[] = {
        {"in the middle", "take 12 b", "\\d{2}", true},
        {"nowhere", "take", "\\d", false},
        {"nothing matches nothing", "", "", true},
        {"digits of any script", "\u0663\uFF13", "^\\d\\d$", true},
        {"the end", "a1", "1$", true},
        {"the place before a line break at the end", "a1\r\n", "1$", true},
        {"not before a second one", "a1\n\n", "1$", false},
        {"not before one in the middle", "a1\nb", "1$", false},
        {"a mark is a code point of its own", "e\u0301", "e$", false},
        {"composed is not decomposed", "\u00E9", "e", false},
        {"zeros are characters too", std::string("a\0b", 3), "b$", true},
    };
    for (const auto& [what, text, pattern, matches] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(RegularExpression::containsMatch(text, pattern), matches);
    }
}

TEST(RegularExpressionDeathTest, WhatIsNoPatternStopsTheProgram) {
    EXPECT_DEATH(std::ignore = RegularExpression::containsMatch("a", "("),
                 "a pattern is a regular expression");
}

}  // namespace
}  // namespace PrompterCore

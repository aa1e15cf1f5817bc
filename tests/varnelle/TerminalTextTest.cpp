#include <gtest/gtest.h>

#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Utf8.h"
#include "apps/varnelle/TerminalText.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace Varnelle {
namespace {

using PrompterCore::columnsOf;
using PrompterCore::Text;

TEST(TerminalText, SendsWhatEveryTerminalShowsAlike) {
    using namespace std::string_view_literals;
    struct Case {
        const char* what;
        std::string_view text, shown;
    };
    const Case cases[] = {
        {"plain", "Hello", "Hello"},
        {"nothing", "", ""},
        {"a NUL", "a\0b"sv, "ab"},
        {"an escape sequence", "\x1B[2Jx\x07", "[2Jx"},
        {"an 8-bit control", "\u009B31m", "31m"},
        {"a tab", "a\tb", "a b"},
        {"line breaks", "a\r\nb\u2028c", "abc"},
        {"a right-to-left override", "a\u202Eb\u2066c", "abc"},
        {"a soft hyphen, a zero-width space", "a\u00AD\u200Bb", "ab"},
        {"an accent", "e\u0301", "e\u0301"},
        {"an accent without its letter", "\u0301a", "a"},
        {"Hebrew with points", "\u05E9\u05C1", "\u05E9\u05C1"},
        {"a joiner within Persian", "\u0645\u06CC\u200C\u0631", "\u0645\u06CC\u200C\u0631"},
        {"Hangul in parts", "\u1112\u1161\u11AB", "\u1112\u1161\u11AB"},
        {"a vowel sign", "\u0915\u093F", "\u0915\u093F"},
        {"wide", "\u65E5\u672C", "\u65E5\u672C"},
        {"a flag", "\U0001F1E9\U0001F1EA", "\U0001F1E9\U0001F1EA"},
        {"a heart as an emoji", "\u2764\uFE0F!", "\u2764 !"},
        {"a keycap", "1\uFE0F\u20E3", "1\u20E3 "},
        {"a skin tone", "\U0001F44D\U0001F3FD", "\U0001F44D"},
        {"joined in Devanagari", "\u0915\u094D\u200D\u0937", "\u0915\u094D\u200D\u0937"},
        {"a joiner and nothing to join", "\U0001F468\u200D\u0007\U0001F469",
         "\U0001F468\U0001F469"},
        {"a skin tone of nothing", "\U0001F44D\u0007\U0001F3FD", "\U0001F44D\uFFFD "},
        {"a family", "\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F468"},
    };
    for (const auto& [what, text, shown] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(terminalText(text), shown);
    }
}

TEST(TerminalText, AHeapOfMarksIsCut) {
    std::string heap = "e";
    for (int i = 0; i < 100000; ++i)
        heap += "\u0301";
    EXPECT_LT(terminalText(heap).size(), 150U);
    EXPECT_EQ(columnsOf(terminalText(heap)), 1);
}

TEST(TerminalText, TakesTheColumnsOfTheTextCodePointByCodePoint) {
    PrompterCore::Tests::forAll([](const Text& text) {
        const std::string shown = terminalText(text.utf8());
        std::int64_t sum = 0;
        for (std::size_t at = 0; at < shown.size();) {
            const std::size_t start = at;
            static_cast<void>(PrompterCore::Utf8::next(shown, at));
            sum += columnsOf(std::string_view(shown).substr(start, at - start));
        }
        RC_ASSERT(sum == columnsOf(text.utf8()));
        RC_ASSERT(sum == columnsOf(shown));
        RC_ASSERT(terminalText(shown) == shown);
    });
}

TEST(TerminalText, ShortenedEndsInAnEllipsisAndHalvesNothing) {
    struct Case {
        std::string_view text;
        std::int64_t columns;
        std::string_view shown;
    };
    const Case cases[] = {
        {"Hello", 5, "Hello"},
        {"Hello", 4, "Hel\u2026"},
        {"Hello", 1, "\u2026"},
        {"Hello", 0, ""},
        {"Hello", -3, ""},
        {"", 3, ""},
        {"\u65E5\u672C\u8A9E", 6, "\u65E5\u672C\u8A9E"},
        {"\u65E5\u672C\u8A9E", 5, "\u65E5\u672C\u2026"},
        {"\u65E5\u672C\u8A9E", 4, "\u65E5\u2026"},
        {"\u65E5", 1, "\u2026"},
        {"ae\u0301i", 2, "a\u2026"},
        {"ae\u0301", 2, "ae\u0301"},
    };
    for (const auto& [text, columns, shown] : cases) {
        SCOPED_TRACE(std::string(text) + " in " + std::to_string(columns));
        EXPECT_EQ(shortened(text, columns), shown);
    }
}

TEST(TerminalText, ShortenedNeverTakesMoreThanItMay) {
    PrompterCore::Tests::forAll([](const Text& text) {
        const auto columns = *rc::gen::inRange<std::int64_t>(-2, 30);
        const std::string shown = shortened(text.utf8(), columns);
        RC_ASSERT(columnsOf(shown) <= std::max<std::int64_t>(columns, 0));
        if (columnsOf(text.utf8()) <= columns) RC_ASSERT(shown == terminalText(text.utf8()));
    });
}

}  // namespace
}  // namespace Varnelle

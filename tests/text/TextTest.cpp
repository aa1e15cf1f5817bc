#include <concepts>
#include <map>
#include <string>
#include <unordered_set>

#include <unicode/unistr.h>

#include "PrompterCore/text/Text.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using namespace std::string_view_literals;

template <class T>
concept MadeFromZero = requires {
    T(0);
};
template <class T>
concept MadeFromNull = requires {
    T(nullptr);
};
static_assert(std::copyable<Text> && std::totally_ordered<Text>);
static_assert(!MadeFromZero<Text> && !MadeFromNull<Text>);
static_assert(!std::constructible_from<Text, int> && !std::constructible_from<Text, bool>);
static_assert(!std::constructible_from<Text, char>);
static_assert(std::convertible_to<const char*, Text> && std::convertible_to<char*, Text>);
static_assert(std::convertible_to<std::string, Text> &&
              std::convertible_to<std::string_view, Text>);
static_assert(!std::convertible_to<Text, std::string> &&
              !std::convertible_to<Text, std::string_view>);
static_assert(std::is_nothrow_move_constructible_v<Text> &&
              std::is_nothrow_move_assignable_v<Text>);

std::size_t hashOf(const Text& text) { return std::hash<Text>()(text); }

TEST(Text, KeepsItsBytesAndComparesCanonically) {
    const Text composed("caf\u00E9"), decomposed("cafe\u0301");
    EXPECT_EQ(composed, decomposed);
    EXPECT_NE(composed.utf8(), decomposed.utf8());
    EXPECT_EQ(decomposed.utf8(), "cafe\u0301");
    EXPECT_EQ(decomposed.composed().utf8(), "caf\u00E9");
    EXPECT_EQ(hashOf(composed), hashOf(decomposed));
    EXPECT_TRUE((composed <=> decomposed) == 0);
}

TEST(Text, EqualityIsCanonicalAndNothingMore) {
    struct Case {
        const char* what;
        std::string_view a, b;
        bool equal;
    };
    const Case cases[] = {
        {"empty", "", "", true},
        {"marks in another order", "a\u0323\u0302", "a\u0302\u0323", true},
        {"marks of one class in another order", "a\u0301\u0308", "a\u0308\u0301", false},
        {"angstrom sign and letter", "\u212B", "\u00C5", true},
        {"Hangul syllable and its jamo", "\uAC01", "\u1100\u1161\u11A8", true},
        {"kana with its voicing mark", "\u304C", "\u304B\u3099", true},
        {"compatibility ideograph", "\uF900", "\u8C48", true},
        {"Greek question mark", "\u037E", ";", true},
        {"ligature: only compatible", "\uFB01", "fi", false},
        {"full-width digit: only compatible", "\uFF11", "1", false},
        {"half-width kana: only compatible", "\uFF76", "\u30AB", false},
        {"case", "a", "A", false},
        {"no-break space", "\u00A0", " ", false},
        {"CR LF and LF", "\r\n", "\n", false},
        {"a mark missing", "e\u0301", "e", false},
        {"NUL counts", "a\0"sv, "a", false},
        {"behind a NUL it still compares", "a\0\u00E9"sv, "a\0e\u0301"sv, true},
        {"a prefix", "abc", "ab", false},
    };
    for (const auto& [what, a, b, equal] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Text(a) == Text(b), equal);
        EXPECT_EQ(Text(b) == Text(a), equal);
        EXPECT_EQ((Text(a) <=> Text(b)) == 0, equal);
        if (equal) {
            EXPECT_EQ(hashOf(a), hashOf(b));
        }
    }
}

TEST(Text, OrdersByTheCodePointsOfTheComposedForm) {
    const Text ascending[] = {"",        "A",      "Z",      "a",         "e\u0323",
                              "e\u0301", "\u00EA", "\uFFFD", "\U0001F44D"};
    // e with a dot below composes to U+1EB9, behind U+00E9.
    EXPECT_LT(Text("e\u0301"), Text("e\u0323"));
    EXPECT_LT(Text("e"), Text("e\u0301"));
    EXPECT_LT(Text("z"), Text("e\u0301"));
    EXPECT_LT(Text("\uFFFD"), Text("\U0001F44D"));
    EXPECT_LT(Text("a"), Text("a\0"sv));
    for (const Text& a : ascending) {
        for (const Text& b : ascending) {
            const icu::UnicodeString left = icu::UnicodeString::fromUTF8(a.composed().utf8());
            const icu::UnicodeString right = icu::UnicodeString::fromUTF8(b.composed().utf8());
            EXPECT_EQ((a <=> b) < 0, left.compareCodePointOrder(right) < 0) << a << ' ' << b;
        }
    }
}

TEST(Text, ComparesWithLiteralsStringsAndViews) {
    const Text text("e\u0301");
    EXPECT_TRUE(text == "\u00E9");
    EXPECT_TRUE("\u00E9" == text);
    EXPECT_TRUE(text == "\u00E9"sv);
    EXPECT_TRUE("\u00E9"sv == text);
    EXPECT_TRUE(text == std::string("\u00E9"));
    EXPECT_TRUE(std::string("\u00E9") == text);
    EXPECT_TRUE(text != "e"sv);
    EXPECT_TRUE(text > "e"sv);
    EXPECT_TRUE("e" < text);
    EXPECT_TRUE(std::string("e") <= text);
}

TEST(Text, KeysMapsAndSetsCanonically) {
    std::map<Text, int> map;
    map["caf\u00E9"] = 1;
    map["cafe\u0301"] = 2;
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map["caf\u00E9"], 2);
    const std::unordered_set<Text> set = {"caf\u00E9", "cafe\u0301", "cafe"};
    EXPECT_EQ(set.size(), 2u);
}

TEST(Text, OneReplacementForEachMaximalIllFormedPart) {
    struct Case {
        const char* what;
        std::string_view bytes, mended;
    };
    // The first four are the Unicode Standard's own examples, tables 3-8 to 3-11.
    const Case cases[] = {
        {"non-shortest forms", "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41",
         "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"surrogates", "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41",
         "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"other ill-formed sequences", "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42",
         "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
        {"truncated sequences", "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41",
         "\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"cut off at the end", "a\xF0\x9F\x91", "a\uFFFD"},
        {"a lone trail", "\x80", "\uFFFD"},
        {"a lead before a lead", "\xC3\xC3\xA9", "\uFFFD\u00E9"},
        {"encoded NUL", "\xC0\x80", "\uFFFD\uFFFD"},
        {"well-formed stays, NUL too", "a\0\u00E9\U0001F44D"sv, "a\0\u00E9\U0001F44D"sv},
    };
    for (const auto& [what, bytes, mended] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Text(bytes).utf8(), mended);
        EXPECT_EQ(Text(std::string(bytes)).utf8(), mended);
        EXPECT_EQ(Text::fromUtf8(std::string(bytes)).has_value(), bytes == mended);
    }
}

TEST(Text, ALiteralEndsAtItsZeroAndAViewDoesNot) {
    EXPECT_EQ(Text("a\0b").utf8(), "a");
    EXPECT_EQ(Text("a\0b"sv).utf8().size(), 3u);
    char buffer[] = "abc";
    char* pointer = buffer;
    EXPECT_EQ(Text(pointer).utf8(), "abc");
    EXPECT_EQ(Text(buffer).utf8(), "abc");
}

TEST(TextDeathTest, RefusesANullPointer) {
    const char* null = nullptr;
    EXPECT_DEATH(Text{null}, "a text is made of characters, not of null");
}

TEST(Text, EmptyOnlyWithoutBytes) {
    EXPECT_TRUE(Text().isEmpty());
    EXPECT_TRUE(Text("").isEmpty());
    EXPECT_FALSE(Text("\u200B").isEmpty());
    EXPECT_FALSE(Text("\0"sv).isEmpty());
}

TEST(Text, MendingIsWhatTheUnicodeLibraryDoes) {
    Tests::forAll(
        [] {
            const std::string bytes = *Tests::anyBytes();
            std::string reference;
            icu::UnicodeString::fromUTF8(bytes).toUTF8String(reference);
            RC_ASSERT(Text(bytes).utf8() == reference);
            RC_ASSERT(Text::fromUtf8(bytes).has_value() == (bytes == reference));
            RC_ASSERT(Text::fromUtf8(Text(bytes).utf8()).has_value());
        },
        2000);
}

TEST(Text, EqualityOrderAndHashAreThoseOfTheComposedBytes) {
    Tests::forAll(
        [](const Tests::TwoTexts& two) {
            const auto& [a, b] = two;
            const std::string left = a.composed().utf8(), right = b.composed().utf8();
            RC_CLASSIFY(left == right && a.utf8() != b.utf8());
            RC_ASSERT((a == b) == (left == right));
            RC_ASSERT((a < b) == (left < right));
            RC_ASSERT((b < a) == (right < left));
            if (a == b) RC_ASSERT(hashOf(a) == hashOf(b));
        },
        2000);
}

}  // namespace
}  // namespace PrompterCore

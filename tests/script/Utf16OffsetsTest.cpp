#include <concepts>
#include <iterator>
#include <utility>
#include <vector>

#include "PrompterCore/script/Utf16Offsets.h"
#include "PrompterCore/text/Characters.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<Utf16Offsets> && std::equality_comparable<Utf16Offsets>);
static_assert(std::forward_iterator<Utf16Offsets::Iterator>);

Utf16Offsets offsetsOf(const char* text) { return Utf16Offsets(Characters(Text(text))); }

TEST(Utf16Offsets, CountTheUnitsBeforeEachCharacter) {
    struct Case {
        const char* what;
        const char* text;
        std::vector<std::int64_t> offsets;
    };
    const Case cases[] = {
        {"nothing", "", {0}},
        {"one unit each", "abc", {0, 1, 2, 3}},
        {"one unit each, several bytes", "\u00E9\u65E5", {0, 1, 2}},
        {"a surrogate pair", "a\U0001F600b", {0, 1, 3, 4}},
        {"a mark belongs to its character", "e\u0301x", {0, 2, 3}},
        {"CR LF", "a\r\nb", {0, 1, 3, 4}},
        {"a flag", "\U0001F1E9\U0001F1EA", {0, 4}},
    };
    for (const auto& [what, text, expected] : cases) {
        SCOPED_TRACE(what);
        const Utf16Offsets offsets = offsetsOf(text);
        EXPECT_EQ(offsets, expected);
        EXPECT_EQ(expected, offsets);
        const std::vector<std::int64_t> list = offsets;
        EXPECT_EQ(list, expected);
        EXPECT_EQ(offsets.size(), expected.size());
        EXPECT_EQ(offsets.back(), expected.back());
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(offsets[static_cast<std::int64_t>(i)], expected[i]);
    }
    EXPECT_EQ(Utf16Offsets(), std::vector<std::int64_t>{0});
}

TEST(Utf16Offsets, DifferFromAnyOtherList) {
    for (const char* text : {"abc", "a\U0001F600b"}) {
        const Utf16Offsets offsets = offsetsOf(text);
        std::vector<std::int64_t> other = offsets;
        ++other.back();
        EXPECT_NE(offsets, other);
        other.pop_back();
        EXPECT_NE(offsets, other);
        EXPECT_NE(offsets, std::vector<std::int64_t>());
    }
}

TEST(Utf16Offsets, TheCharacterAtAnOffsetIsTheLastThatStartsThere) {
    for (const char* text : {"abc", "a\U0001F600b"}) {
        const Utf16Offsets offsets = offsetsOf(text);
        EXPECT_EQ(offsets.lastAtOrBefore(INT64_MIN), 0);
        EXPECT_EQ(offsets.lastAtOrBefore(-1), 0);
        EXPECT_EQ(offsets.lastAtOrBefore(0), 0);
        EXPECT_EQ(offsets.lastAtOrBefore(1), 1);
        EXPECT_EQ(offsets.lastAtOrBefore(offsets[3]), 3);
        EXPECT_EQ(offsets.lastAtOrBefore(INT64_MAX), 3);
    }
    EXPECT_EQ(offsetsOf("a\U0001F600b").lastAtOrBefore(2), 1) << "between the two halves";
}

TEST(Utf16Offsets, WhatWasMovedFromIsThatOfTheEmptyText) {
    for (const char* text : {"abc", "a\U0001F600b"}) {
        Utf16Offsets from = offsetsOf(text);
        const Utf16Offsets to = std::move(from);
        EXPECT_EQ(to, offsetsOf(text));
        EXPECT_EQ(from, Utf16Offsets());  // NOLINT: what is left is what is tested
        from = to;
        EXPECT_EQ(from, to);
    }
}

TEST(Utf16OffsetsDeathTest, AnIndexLiesInTheList) {
    const Utf16Offsets offsets = offsetsOf("ab");
    EXPECT_DEATH(static_cast<void>(offsets[-1]), "index");
    EXPECT_DEATH(static_cast<void>(offsets[3]), "index");
}

}  // namespace
}  // namespace PrompterCore

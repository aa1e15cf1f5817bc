#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/LineEnds.h"
#include "tests/support/Properties.h"

namespace Varnelle {
namespace {

TEST(LineEnds, AreKnownWhereAllLinesEndAlike) {
    struct Case {
        std::string_view text;
        std::optional<std::string_view> end;
    };
    const Case cases[] = {
        {"", std::nullopt},        {"one line", std::nullopt}, {"a\n", "\n"},
        {"a\nb\n\nc", "\n"},       {"a\r\n\r\nb", "\r\n"},     {"\r\n", "\r\n"},
        {"a\rb\r\r", "\r"},        {"a\r\nb\n", std::nullopt}, {"a\nb\r\n", std::nullopt},
        {"a\r\r\n", std::nullopt}, {"a\n\r", std::nullopt},
    };
    for (const auto& [text, end] : cases) {
        EXPECT_EQ(lineEndOf(text), end) << ::testing::PrintToString(text);
    }
}

TEST(LineEnds, OfAllKindsBecomeTheOneThatIsAskedFor) {
    EXPECT_EQ(withLineEnd("a\nb\r\nc\r\n\rd", "\r\n"), "a\r\nb\r\nc\r\n\r\nd");
    EXPECT_EQ(withLineEnd("a\nb\r\nc\r\n\rd", "\n"), "a\nb\nc\n\nd");
    EXPECT_EQ(withLineEnd("\n\n", "\r"), "\r\r");
    EXPECT_EQ(withLineEnd("", "\r\n"), "");
    EXPECT_EQ(withLineEnd("a", "\r\n"), "a");
}

TEST(LineEnds, OnceAlikeStayAsTheyAre) {
    PrompterCore::Tests::forAll([] {
        const auto text =
            *rc::gen::container<std::string>(rc::gen::element('\r', '\n', 'a', ' ', '\0'));
        for (const std::string_view end : {"\n", "\r\n", "\r"}) {
            const std::string alike = withLineEnd(text, end);
            RC_ASSERT(lineEndOf(alike).value_or(end) == end);
            RC_ASSERT(withLineEnd(alike, end) == alike);
            if (lineEndOf(text) == end) RC_ASSERT(alike == text);
        }
    });
}

}  // namespace
}  // namespace Varnelle

#include <gtest/gtest-spi.h>

#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

TEST(Properties, TheSameSeedGivesTheSameValues) {
    const auto drawn = [] {
        std::string all;
        Tests::forAll([&all](const Text& text) { all += text.utf8(); }, 20);
        return all;
    };
    EXPECT_EQ(drawn(), drawn());
    EXPECT_FALSE(drawn().empty());
}

TEST(Properties, AFailureNamesItsSeedAndTheSmallestExample) {
    const auto claim = [](const Text& text) {
        RC_ASSERT(text.utf8().find('b') == std::string::npos);
    };
    EXPECT_NONFATAL_FAILURE(Tests::forAll(claim), "\"b\"");
    EXPECT_NONFATAL_FAILURE(Tests::forAll(claim), "Seed: RC_PARAMS=\"seed=");
}

TEST(Printing, TextsShowWhatIsInvisible) {
    struct Case {
        const char* what;
        std::string_view bytes;
        const char* shown;
    };
    using namespace std::string_view_literals;
    const Case cases[] = {
        {"plain", "a \"b\" \\", R"("a \"b\" \\")"},
        {"controls", "\r\n\t\0"sv, R"("\r\n\t\u{0}")"},
        {"marks and emoji", "e\u0301\U0001F44D", R"("e\u{301}\u{1F44D}")"},
        {"ill-formed", "a\xE2\x82z\xFF", R"("a\xE2\x82z\xFF")"},
    };
    for (const auto& [what, bytes, shown] : cases) {
        SCOPED_TRACE(what);
        std::ostringstream out;
        Tests::printEscaped(out, bytes);
        EXPECT_EQ(out.str(), shown);
    }
    EXPECT_EQ(::testing::PrintToString(Text("\u00A0")), R"("\u{A0}")");
    EXPECT_EQ(::testing::PrintToString(TokenRange(2, 5)), "[2, 5)");
    EXPECT_EQ(::testing::PrintToString(Required<double>(2.5)), "2.5");
}

TEST(Printing, RecordsShowTheirFieldsByName) {
    std::ostringstream out;
    Tests::printRecord(out, "Word", "text", Text("a"), "range", TokenRange(0, 1));
    EXPECT_EQ(out.str(), R"(Word{.text = "a", .range = [0, 1)})");
}

}  // namespace
}  // namespace PrompterCore

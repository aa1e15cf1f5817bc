#include <string>

#include <gtest/gtest.h>

#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Segmentation.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

TEST(Columns, OfEachKindOfCharacter) {
    using namespace std::string_view_literals;
    struct Case {
        const char* what;
        std::string_view text;
        std::int64_t columns;
    };
    const Case cases[] = {
        {"nothing", "", 0},
        {"ASCII", "Hello, world", 12},
        {"an accent, composed and decomposed", "\u00E9e\u0301", 2},
        {"two accents on one letter", "e\u0302\u0301", 1},
        {"an accent without a letter", "\u0301", 0},
        {"an enclosing circle", "a\u20DD", 1},
        {"Han and kana", "\u65E5\u3042", 4},
        {"full-width letters", "\uFF21", 2},
        {"half-width kana", "\uFF76", 1},
        {"an ideographic space", "\u3000", 2},
        {"Hangul: a syllable, and one in parts", "\uD55C\u1112\u1161\u11AB", 4},
        {"ambiguous characters are narrow", "\u2026\u00B1\u03B1", 3},
        {"Devanagari with a spacing vowel sign", "\u0915\u093F", 2},
        {"Devanagari with a virama", "\u0915\u094D", 1},
        {"Thai with a vowel above and a tone", "\u0E17\u0E35\u0E48", 1},
        {"Hebrew with points", "\u05E9\u05C1\u05B0", 1},
        {"the Arabic number sign is seen", "\u0600", 1},
        {"a soft hyphen, a joiner, a zero-width space, a mark of order", "\u00AD\u200D\u200B\u200E",
         0},
        {"a byte order mark", "\uFEFF", 0},
        {"controls", "\0\x07\x1B\x7F\u009B"sv, 0},
        {"line breaks", "\r\n\u0085\u2028\u2029", 0},
        {"a tab", "\t", 1},
        {"the replacement character", "\uFFFD", 1},
        {"for private use", "\uE000", 1},
    };
    for (const auto& [what, text, columns] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(columnsOf(text), columns);
    }
}

TEST(Columns, AnEmojiTakesTwoHoweverManyCodePointsItHas) {
    struct Case {
        const char* what;
        std::string_view text;
        std::int64_t columns;
    };
    const Case cases[] = {
        {"shown as one by itself", "\U0001F600", 2},
        {"with a skin tone", "\U0001F44D\U0001F3FD", 2},
        {"a narrow sign with a skin tone", "\u261D\U0001F3FD", 2},
        {"a family", "\U0001F468\u200D\U0001F469\u200D\U0001F467", 2},
        {"a flag", "\U0001F1E9\U0001F1EA", 2},
        {"half a flag", "\U0001F1E9", 1},
        {"a flag and a half", "\U0001F1E9\U0001F1EA\U0001F1EB", 3},
        {"England's flag", "\U0001F3F4\U000E0067\U000E0062\U000E0065\U000E006E\U000E0067\U000E007F",
         2},
        {"a heart as text", "\u2764", 1},
        {"a heart as an emoji", "\u2764\uFE0F", 2},
        {"a burning heart", "\u2764\uFE0F\u200D\U0001F525", 2},
        {"a keycap", "1\uFE0F\u20E3", 2},
        {"a keycap's parts without the selector", "1\u20E3", 1},
        {"the selector on what is no emoji", "a\uFE0F", 1},
        {"the text selector does not narrow", "\u231A\uFE0E", 2},
        {"with an accent", "\U0001F600\u0301", 2},
        {"with a half-width sound mark behind it", "\u2764\uFE0F\uFF9E", 3},
    };
    for (const auto& [what, text, columns] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(columnsOf(text), columns);
    }
}

TEST(Columns, AreTheSumOverTheCharacters) {
    Tests::forAll([](const Text& text) {
        const std::string_view bytes = text.utf8();
        std::int64_t sum = 0;
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t end = Segmentation::clusterEnd(bytes, at);
            sum += columnsOf(bytes.substr(at, end - at));
            at = end;
        }
        RC_ASSERT(columnsOf(bytes) == sum);
    });
}

TEST(Columns, AreCountedWithoutAllocating) {
    std::string all;
    for (const std::string& piece : Tests::nastyPieces())
        all += piece;
    EXPECT_EQ(Tests::allocationsDuring([&all] { static_cast<void>(columnsOf(all)); }), 0);
}

TEST(Columns, PrintableAsciiTakesOneEachAndNoOtherAsciiButTheTabAny) {
    for (int byte = 0; byte < 0x80; ++byte) {
        SCOPED_TRACE(byte);
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(columnsOf(text), (byte >= 0x20 && byte < 0x7F) || byte == '\t' ? 1 : 0);
    }
}

}  // namespace
}  // namespace PrompterCore

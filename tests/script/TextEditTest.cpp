#include <concepts>
#include <optional>
#include <string>
#include <vector>

#include "PrompterCore/script/TextEdit.h"
#include "PrompterCore/text/Characters.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<TextEdit> && std::equality_comparable<TextEdit>);

TextEdit replacing(std::int64_t lower, std::int64_t upper, Text replacement) {
    return {.range = CharacterRange(lower, upper),
            .replacement = std::move(replacement),
            .selection = std::nullopt};
}

TEST(TextEdit, ReplacesCharacters) {
    struct Case {
        const char* what;
        Text text;
        TextEdit edit;
        const char* edited;
    };
    const Case cases[] = {
        {"an insertion", "Hello world", replacing(5, 5, ","), "Hello, world"},
        {"a deletion", "abc", replacing(1, 2, ""), "ac"},
        {"everything", "abc", replacing(0, 3, "x"), "x"},
        {"nothing of nothing", "", replacing(0, 0, ""), ""},
        {"at the end", "abc", replacing(3, 3, "d"), "abcd"},
        {"whole characters", "e\u0301\r\n\U0001F1E9\U0001F1EAz", replacing(1, 3, "-"), "e\u0301-z"},
        {"what was not replaced keeps its bytes", "cafe\u0301 a", replacing(5, 6, "caf\u00E9"),
         "cafe\u0301 caf\u00E9"},
        {"a mark joins what stands before it", "ab", replacing(1, 1, "\u0301"), "a\u0301b"},
    };
    for (const auto& [what, text, edit, edited] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(edit.appliedTo(text).utf8(), edited);
    }
}

TEST(TextEdit, IsAListOfCharactersCutAndJoined) {
    Tests::forAll([](const Text& text, const Text& replacement) {
        const Characters characters(text);
        std::vector<std::string> list;
        for (const Character character : characters)
            list.emplace_back(character.utf8());
        const auto upper = *rc::gen::inRange<std::int64_t>(0, characters.count() + 1);
        const auto lower = *rc::gen::inRange<std::int64_t>(0, upper + 1);
        list.erase(list.begin() + lower, list.begin() + upper);
        list.insert(list.begin() + lower, replacement.utf8());
        std::string joined;
        for (const std::string& piece : list)
            joined += piece;
        RC_ASSERT(replacing(lower, upper, replacement).appliedTo(text).utf8() == joined);
    });
}

TEST(TextEdit, ComparesAllFields) {
    const TextEdit edit{CharacterRange(1, 2), "a", CharacterRange(3, 4)};
    EXPECT_EQ(edit, (TextEdit{CharacterRange(1, 2), "a", CharacterRange(3, 4)}));
    EXPECT_NE(edit, (TextEdit{CharacterRange(1, 3), "a", CharacterRange(3, 4)}));
    EXPECT_NE(edit, (TextEdit{CharacterRange(1, 2), "b", CharacterRange(3, 4)}));
    EXPECT_NE(edit, (TextEdit{CharacterRange(1, 2), "a", std::nullopt}));
}

TEST(TextEditDeathTest, ARangeOutsideTheTextStopsTheProgram) {
    for (const TextEdit& edit :
         {replacing(0, 3, ""), replacing(-1, 0, ""), replacing(3, 3, ""), replacing(-2, 9, "")})
        EXPECT_DEATH(static_cast<void>(edit.appliedTo("ae\u0301")),
                     "the edit's range lies within the text");
}

}  // namespace
}  // namespace PrompterCore

#include <string>
#include <vector>

#include "PrompterCore/library/LibraryNaming.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Trims.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Texts = std::vector<Text>;

std::string repeated(int count, const std::string& piece) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += piece;
    return result;
}

TEST(LibraryNaming, SanitizesWhateverIsTyped) {
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    struct Case {
        const char* what;
        Text name, sanitized;
    };
    const Case cases[] = {
        {"forbidden characters and blanks at the ends", "  a/b:c  ", "abc"},
        {"a line feed inside", "a\nb", "ab"},
        {"every line break", "a\v\f\r\n\r\u0085\u2028\u2029b", "ab"},
        {"dots alone", "...", "Untitled"},
        {"dots at the start", "..a", "a"},
        {"a dot behind the dot and blanks stays", "  .  .x", ".x"},
        {"empty", "", "Untitled"},
        {"blanks alone", " \t\u00A0\u3000", "Untitled"},
        {"forbidden alone", "/:/", "Untitled"},
        {"dots and blanks inside stay", "a . b\tc", "a . b\tc"},
        {"130 letters", repeated(130, "x"), repeated(120, "x")},
        {"120 letters", repeated(120, "x"), repeated(120, "x")},
        {"a blank before the cut", repeated(119, "x") + " y", repeated(119, "x")},
        {"characters are counted, not bytes", repeated(121, family), repeated(120, family)},
        {"decomposed ones too", repeated(121, "e\u0301"), repeated(120, "e\u0301")},
        {"a full-width slash is no slash", "a\uFF0Fb", "a\uFF0Fb"},
        {"right to left", " \u05D0/\u05D1 ", "\u05D0\u05D1"},
    };
    for (const auto& [what, name, sanitized] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LibraryNaming::sanitize(name), sanitized);
    }
}

TEST(LibraryNaming, NumbersANameThatIsTaken) {
    struct Case {
        const char* what;
        Text name;
        Texts existing;
        Text unique;
    };
    const Case cases[] = {
        {"alone", "Notes", {}, "Notes"},
        {"taken in another case", "Notes", {"notes"}, "Notes 2"},
        {"numbers taken too", "Notes", {"Notes", "Notes 2", "NOTES 3"}, "Notes 4"},
        {"a gap is used", "Notes", {"Notes", "Notes 3"}, "Notes 2"},
        {"empty", "", {"Untitled"}, "Untitled 2"},
        {"sanitized first", " no/tes", {"Notes"}, "notes 2"},
        {"existing names are taken as they are", "ab", {"a/b"}, "ab"},
        {"composed or not", "Caf\u00E9", {"cafe\u0301"}, "Caf\u00E9 2"},
        {"Cyrillic", "\u0416", {"\u0436"}, "\u0416 2"},
    };
    for (const auto& [what, name, existing, unique] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LibraryNaming::unique(name, existing), unique);
    }
    const Text longest(repeated(120, "x"));
    EXPECT_EQ(LibraryNaming::unique(longest, {longest}), Text(repeated(120, "x") + " 2"));
}

TEST(LibraryNaming, CountsAsFarAsItTakes) {
    Texts existing{"notes"};
    for (int n = 2; n < 20'000; ++n)
        existing.emplace_back("NOTES " + std::to_string(n));
    EXPECT_EQ(LibraryNaming::unique("Notes", existing), "Notes 20000");
}

TEST(LibraryNaming, ACopyIsCalledOne) {
    EXPECT_EQ(LibraryNaming::copyNameOf("Talk", {"Talk"}), "Talk copy");
    EXPECT_EQ(LibraryNaming::copyNameOf("Talk", {"Talk", "Talk copy"}), "Talk copy 2");
    const Text longest(repeated(120, "x"));
    EXPECT_EQ(LibraryNaming::copyNameOf(longest, {longest}), Text(repeated(120, "x") + " 2"));
    EXPECT_EQ(LibraryNaming::copyNameOf(longest, {}), longest) << "there is no room for the suffix";
    EXPECT_EQ(LibraryNaming::copyNameOf(Text(repeated(117, "x")), {}),
              Text(repeated(117, "x") + " co"));
}

TEST(LibraryNaming, ANameIsSanitizedBeforeItIsCalledACopy) {
    EXPECT_EQ(LibraryNaming::copyNameOf("", {}), "Untitled copy");
    EXPECT_EQ(LibraryNaming::copyNameOf(" ... ", {"untitled COPY"}), "Untitled copy 2");
    EXPECT_EQ(LibraryNaming::copyNameOf("Talk ", {}), "Talk copy") << "one blank between them";
    EXPECT_EQ(LibraryNaming::copyNameOf("Talk\n", {}), "Talk copy");
    EXPECT_EQ(LibraryNaming::copyNameOf(" . .x", {}), "x copy") << "and what is left once more";
}

TEST(LibraryNaming, ASanitizedNameIsSafe) {
    Tests::forAll([](const Text& typed) {
        const Text name = LibraryNaming::sanitize(typed);
        const Characters characters(name);
        RC_ASSERT(!name.isEmpty());
        RC_ASSERT(characters.count() <= LibraryNaming::longestName);
        for (const Character character : characters)
            RC_ASSERT(!character.is('/') && !character.is(':'));
        RC_ASSERT(trimmedOfBlanks(name.utf8()) == name.utf8());
    });
}

TEST(LibraryNaming, AUniqueNameIsNoneOfTheExisting) {
    Tests::forAll([](const Text& name, const Texts& existing) {
        const Text lowered = lowercased(LibraryNaming::unique(name, existing));
        for (const Text& other : existing)
            RC_ASSERT(lowercased(other) != lowered);
    });
}

}  // namespace
}  // namespace PrompterCore

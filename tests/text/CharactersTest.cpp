#include <algorithm>
#include <concepts>
#include <iterator>
#include <ranges>
#include <string>

#include "PrompterCore/text/Characters.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<Characters> && std::equality_comparable<Characters>);
static_assert(std::copyable<Character> && std::equality_comparable<Character>);
static_assert(std::random_access_iterator<Characters::Iterator>);
static_assert(std::ranges::random_access_range<const Characters>);
static_assert(std::ranges::sized_range<const Characters>);
static_assert(!std::convertible_to<std::string_view, Character>);

std::vector<std::string> listed(const Characters& characters) {
    std::vector<std::string> result;
    for (const Character character : characters)
        result.emplace_back(character.utf8());
    return result;
}

TEST(Characters, AreWhatAReaderSeesAsOne) {
    struct Case {
        const char* what;
        std::string text;
        std::vector<std::string> characters;
    };
    const std::string flagDe = "\U0001F1E9\U0001F1EA", flagFr = "\U0001F1EB\U0001F1F7";
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    const Case cases[] = {
        {"nothing", "", {}},
        {"ASCII", "ab c", {"a", "b", " ", "c"}},
        {"CR LF is one", "a\r\nb", {"a", "\r\n", "b"}},
        {"LF CR is two", "\n\r", {"\n", "\r"}},
        {"CR CR LF", "\r\r\n", {"\r", "\r\n"}},
        {"a mark stays with its letter", "ae\u0301\u0323b", {"a", "e\u0301\u0323", "b"}},
        {"a mark at the start is alone", "\u0301a", {"\u0301", "a"}},
        {"a mark does not join a line break", "\n\u0301", {"\n", "\u0301"}},
        {"a mark joins a space", " \u0301", {" \u0301"}},
        {"flags pair up", flagDe + flagFr, {flagDe, flagFr}},
        {"half a flag is left over", flagDe + "\U0001F1EB", {flagDe, "\U0001F1EB"}},
        {"half a flag, a letter, half a flag",
         "\U0001F1E9a\U0001F1EA",
         {"\U0001F1E9", "a", "\U0001F1EA"}},
        {"a family is one", family + "a", {family, "a"}},
        {"a joiner does not join letters", "a\u200Db", {"a\u200D", "b"}},
        {"skin tone", "\U0001F44D\U0001F3FD\U0001F44D", {"\U0001F44D\U0001F3FD", "\U0001F44D"}},
        {"keycap",
         "1\uFE0F\u20E3"
         "2",
         {"1\uFE0F\u20E3", "2"}},
        {"jamo make a syllable", "\u1100\u1161\u11A8\u1100", {"\u1100\u1161\u11A8", "\u1100"}},
        {"a syllable takes a final", "\uAC00\u11A8", {"\uAC00\u11A8"}},
        {"Devanagari vowel sign", "\u0915\u093F\u0924", {"\u0915\u093F", "\u0924"}},
        {"Devanagari conjunct",
         "\u0915\u094D\u0937\u093F\u0915",
         {"\u0915\u094D\u0937\u093F", "\u0915"}},
        {"three consonants, two viramas",
         "\u0938\u094D\u0924\u094D\u0930\u0940",
         {"\u0938\u094D\u0924\u094D\u0930\u0940"}},
        {"a vowel sign ends a conjunct",
         "\u0915\u093F\u094D\u0937",
         {"\u0915\u093F\u094D", "\u0937"}},
        {"a virama does not join a Latin letter", "\u0915\u094Da", {"\u0915\u094D", "a"}},
        {"Tamil does not conjoin", "\u0B95\u0BCD\u0BB7", {"\u0B95\u0BCD", "\u0BB7"}},
        {"Thai am", "\u0E01\u0E33", {"\u0E01\u0E33"}},
        {"Hebrew points", "\u05E9\u05C1\u05B8\u05DC", {"\u05E9\u05C1\u05B8", "\u05DC"}},
        {"half-width voicing mark", "\uFF76\uFF9E", {"\uFF76\uFF9E"}},
        {"NUL", std::string("a\0b", 3), {"a", std::string(1, '\0'), "b"}},
    };
    for (const auto& [what, text, characters] : cases) {
        SCOPED_TRACE(what);
        const Characters split{Text(text)};
        EXPECT_EQ(listed(split), characters);
        EXPECT_EQ(split.count(), signedCount(characters.size()));
        EXPECT_EQ(split.isEmpty(), characters.empty());
    }
}

TEST(Characters, ReachAnyCharacterAndStretch) {
    const Characters characters(Text("e\u0301a\r\n\U0001F44D"));
    EXPECT_EQ(characters[0], Character("\u00E9"));
    EXPECT_EQ(characters[3].utf8(), "\U0001F44D");
    EXPECT_EQ(characters.slice(CharacterRange(1, 3)), "a\r\n");
    EXPECT_EQ(characters.slice(CharacterRange(0, 4)), characters.text().utf8());
    EXPECT_EQ(characters.slice(CharacterRange::emptyAt(4)), "");
    EXPECT_EQ(characters.byteOffset(1), 3u);
    EXPECT_EQ(characters.byteOffset(4), characters.text().utf8().size());
    EXPECT_EQ(Characters().byteOffset(0), 0u);
}

TEST(Characters, MovedFromAreEmptyOrWholeButNeverTorn) {
    Characters from(Text(std::string("e\u0301 and a text too long to be kept in place")));
    const Characters to = std::move(from);
    EXPECT_EQ(to.count(), 41);
    if (!from.isEmpty()) {  // NOLINT: what is left is what is tested
        EXPECT_EQ(listed(from), listed(to));
    }
    EXPECT_EQ(from.isEmpty(), from.count() == 0);
}

TEST(CharactersDeathTest, RefuseIndicesOutside) {
    const Characters ascii(Text("ab")), wide(Text("\u00E9\u00E9"));
    for (const Characters* characters : {&ascii, &wide}) {
        EXPECT_DEATH(static_cast<void>((*characters)[2]), "a character index lies within");
        EXPECT_DEATH(static_cast<void>((*characters)[-1]), "a character index lies within");
        EXPECT_DEATH(static_cast<void>(characters->slice(CharacterRange(1, 3))), "lies within");
        EXPECT_DEATH(static_cast<void>(characters->byteOffset(3)), "lies within");
    }
    EXPECT_DEATH(static_cast<void>(Character("")), "a character is not empty");
}

TEST(Character, HasTheClassOfItsFirstCodePoint) {
    struct Case {
        const char* what;
        std::string_view character;
        bool whiteSpace, lineBreak, letter, numeric;
        std::int64_t utf16;
    };
    const Case cases[] = {
        {"letter", "a", false, false, true, false, 1},
        {"letter with a mark", "e\u0301", false, false, true, false, 2},
        {"space with a mark", " \u0301", true, false, false, false, 2},
        {"no-break space", "\u00A0", true, false, false, false, 1},
        {"CR LF", "\r\n", true, true, false, false, 2},
        {"next line", "\u0085", true, true, false, false, 1},
        {"line separator", "\u2028", true, true, false, false, 1},
        {"zero-width space", "\u200B", false, false, false, false, 1},
        {"NUL", std::string_view("\0", 1), false, false, false, false, 1},
        {"one half", "\u00BD", false, false, false, true, 1},
        {"Han three: a letter and a numeral", "\u4E09", false, false, true, true, 1},
        {"Roman eight: a letter and a numeral", "\u2167", false, false, true, true, 1},
        {"full-width digit", "\uFF11", false, false, false, true, 1},
        {"keycap", "1\uFE0F\u20E3", false, false, false, true, 3},
        {"a mark alone", "\u0301", false, false, false, false, 1},
        {"a vowel sign alone is Alphabetic", "\u093F", false, false, true, false, 1},
        {"thumbs up with a skin tone", "\U0001F44D\U0001F3FD", false, false, false, false, 4},
    };
    for (const auto& [what, bytes, whiteSpace, lineBreak, letter, numeric, utf16] : cases) {
        SCOPED_TRACE(what);
        const Character character(bytes);
        EXPECT_EQ(character.isWhiteSpace(), whiteSpace);
        EXPECT_EQ(character.isLineBreak(), lineBreak);
        EXPECT_EQ(character.isLetter(), letter);
        EXPECT_EQ(character.isNumeric(), numeric);
        EXPECT_EQ(character.utf16Length(), utf16);
    }
}

TEST(Character, IsAnAsciiCharacterOnlyWithNothingCombined) {
    EXPECT_TRUE(Character("-").is('-'));
    EXPECT_FALSE(Character("-\u0301").is('-'));
    EXPECT_FALSE(Character("\r\n").is('\r'));
    EXPECT_FALSE(Character("\uFF0D").is('-'));
}

TEST(Characters, TileTheirTextAndIterateAsTheyIndex) {
    Tests::forAll(
        [](const Text& text) {
            const Characters characters(text);
            std::string tiled;
            std::int64_t index = 0;
            for (const Character character : characters) {
                RC_ASSERT(characters.byteOffset(index) == tiled.size());
                RC_ASSERT(character.utf8().data() == characters[index].utf8().data());
                tiled += character.utf8();
                ++index;
            }
            RC_ASSERT(tiled == text.utf8());
            RC_ASSERT(index == characters.count());
            RC_ASSERT(characters.end() - characters.begin() == index);
            const auto from = *rc::gen::inRange<std::int64_t>(0, index + 1);
            const auto to = *rc::gen::inRange<std::int64_t>(from, index + 1);
            std::string slice;
            for (auto at = from; at < to; ++at)
                slice += characters[at].utf8();
            RC_ASSERT(characters.slice(CharacterRange(from, to)) == slice);
        },
        1000);
}

TEST(Characters, EqualTextsHaveEqualCharacters) {
    Tests::forAll(
        [](const Tests::TwoTexts& two) {
            const Characters a(two.a), b(two.b);
            RC_ASSERT((a == b) == std::ranges::equal(a, b));
        },
        1000);
}

}  // namespace
}  // namespace PrompterCore

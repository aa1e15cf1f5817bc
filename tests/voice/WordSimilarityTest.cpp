#include <algorithm>
#include <string>
#include <vector>

#include "PrompterCore/voice/WordSimilarity.h"
#include "tests/reference/PlainAligner.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::nan;

TEST(WordSimilarity, DistancesCountCharactersThatAReaderSees) {
    struct Case {
        const char* what;
        Text a, b;
        std::int64_t distance;
    };
    const Case cases[] = {
        {"equal", "color", "color", 0},
        {"one letter more", "colour", "color", 1},
        {"substitution", "hat", "cat", 1},
        {"all three kinds", "kitten", "sitting", 3},
        {"both empty", "", "", 0},
        {"one empty", "", "four", 4},
        {"the other empty", "four", "", 4},
        {"composed and decomposed are one", "caf\u00E9", "cafe\u0301", 0},
        {"an accent is one substitution", "cafe", "cafe\u0301", 1},
        {"an emoji sequence is one character", "\U0001F468\u200D\U0001F469\u200D\U0001F467", "a",
         1},
        {"a flag is one character", "\U0001F1E9\U0001F1EA", "", 1},
        {"jamo and syllable are one", "\u1100\u1161\u11A8", "\uAC01", 0},
        {"a syllable without its final", "\uAC01\uB098", "\uAC00\uB098", 1},
        {"CR LF is one character", "a\r\nb", "ab", 1},
        {"the Kelvin sign is a K", "\u212A", "K", 0},
        {"no letters in common", "abc", "xyz", 3},
    };
    for (const auto& [what, a, b, distance] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(WordSimilarity::editDistance(a, b), distance);
    }
}

TEST(WordSimilarity, IsTheShareOfTheLongerWordThatStays) {
    EXPECT_EQ(WordSimilarity::of("colour", "color", 0.0), 1.0 - 1.0 / 6.0);
    EXPECT_EQ(WordSimilarity::of("color", "colour", 0.0), 1.0 - 1.0 / 6.0);
    EXPECT_EQ(WordSimilarity::of("hat", "dog", 0.0), 0.0);
    EXPECT_EQ(WordSimilarity::of("", "dog", 0.0), 0.0);
    EXPECT_EQ(WordSimilarity::of("dog", "", -1.0), 0.0);
    EXPECT_EQ(WordSimilarity::of("", "", 0.0), 1.0);
}

TEST(WordSimilarity, CountsNothingBelowTheFloorButEqualWords) {
    const double fiveSixths = 1.0 - 1.0 / 6.0;
    EXPECT_EQ(WordSimilarity::of("colour", "color", 0.9), 0.0);
    EXPECT_EQ(WordSimilarity::of("colour", "color", fiveSixths), fiveSixths);
    EXPECT_EQ(WordSimilarity::of("colour", "color", std::nextafter(fiveSixths, 1.0)), 0.0);
    EXPECT_EQ(WordSimilarity::of("colour", "color", -3.0), fiveSixths);
    EXPECT_EQ(WordSimilarity::of("colour", "color", nan), 0.0);
    for (const double floor : {0.9, 1.0, 2.0, nan}) {
        SCOPED_TRACE(floor);
        EXPECT_EQ(WordSimilarity::of("color", "color", floor), 1.0);
        EXPECT_EQ(WordSimilarity::of("caf\u00E9", "cafe\u0301", floor), 1.0);
        EXPECT_EQ(WordSimilarity::of("", "", floor), 1.0);
    }
}

// The characters are compared in the composed form, so composing may not move their boundaries.
TEST(WordSimilarity, ComposingKeepsTheNumberOfCharactersAndEachOfThem) {
    Tests::forAll(
        [](const Text& text) {
            const Characters given(text);
            const Characters composed(text.composed());
            RC_ASSERT(given.count() == composed.count());
            for (std::int64_t i = 0; i < given.count(); ++i) {
                RC_ASSERT(given[i] == composed[i]);
                RC_ASSERT(Text(given[i].utf8()).composed().utf8() == composed[i].utf8());
            }
        },
        2000);
}

TEST(WordSimilarity, AgreesWithTwoRowsOnAllShortWords) {
    const std::vector<std::string> pieces = {"a", "b", "e\u0301", "\u00E9", "\r", "\n"};
    std::vector<Text> words = {""};
    for (std::size_t from = 0; from < 1 + 6 + 36; ++from) {
        for (const std::string& piece : pieces) {
            words.emplace_back(words[from].utf8() + piece);
        }
    }
    ASSERT_EQ(words.size(), 259U);
    for (const Text& a : words) {
        for (const Text& b : words) {
            ASSERT_EQ(WordSimilarity::editDistance(a, b),
                      Plain::editDistance(Characters(a), Characters(b)))
                << a << b;
            ASSERT_EQ(WordSimilarity::of(a, b, 0.5), Plain::similarity(a, b, 0.5)) << a << b;
        }
    }
}

TEST(WordSimilarity, AgreesWithTwoRowsOnNastyTexts) {
    Tests::forAll(
        [](const Tests::TwoTexts& two) {
            RC_ASSERT(WordSimilarity::editDistance(two.a, two.b) ==
                      Plain::editDistance(Characters(two.a), Characters(two.b)));
            const double floor = *rc::gen::element(0.0, 0.5, 0.75, 1.0, 2.0, -1.0);
            RC_ASSERT(WordSimilarity::of(two.a, two.b, floor) ==
                      Plain::similarity(two.a, two.b, floor));
        },
        2000);
}

TEST(WordSimilarity, AgreesWithTwoRowsAroundAMachineWordsLength) {
    for (const std::size_t length : {62U, 63U, 64U, 65U, 66U, 130U}) {
        for (const char* piece : {"ab", "a", "\u0436x", "e\u0301"}) {
            std::string a;
            while (Characters(Text(a)).count() < static_cast<std::int64_t>(length)) {
                a += piece;
            }
            const Text changed[] = {a + "z", "z" + a, a.substr(2), "qq" + a.substr(2), "z", ""};
            for (const Text& b : changed) {
                SCOPED_TRACE(::testing::Message() << length << ' ' << Text(piece) << ' ' << b);
                const std::int64_t expected =
                    Plain::editDistance(Characters(Text(a)), Characters(b));
                EXPECT_EQ(WordSimilarity::editDistance(a, b), expected);
                EXPECT_EQ(WordSimilarity::editDistance(b, a), expected);
            }
        }
    }
}

TEST(WordSimilarity, DistanceIsAMetric) {
    Tests::forAll([](const Tests::TwoTexts& two, const Text& c) {
        const auto& [a, b] = two;
        const std::int64_t distance = WordSimilarity::editDistance(a, b);
        RC_ASSERT(distance == WordSimilarity::editDistance(b, a));
        RC_ASSERT((distance == 0) == (a == b));
        RC_ASSERT(distance <=
                  WordSimilarity::editDistance(a, c) + WordSimilarity::editDistance(c, b));
        RC_ASSERT(distance <= std::max(Characters(a).count(), Characters(b).count()));
        const double similarity = WordSimilarity::of(a, b, 0.0);
        RC_ASSERT(0.0 <= similarity && similarity <= 1.0);
        RC_ASSERT((similarity == 1.0) == (a == b));
    });
}

}  // namespace
}  // namespace PrompterCore

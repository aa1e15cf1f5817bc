#include <cmath>
#include <concepts>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "PrompterCore/voice/VoiceAligner.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<VoiceAligner> && std::equality_comparable<VoiceAligner>);
static_assert(std::copyable<Alignment> && std::equality_comparable<Alignment>);
static_assert(std::copyable<AlignerConfig> && std::equality_comparable<AlignerConfig>);
static_assert(!std::is_default_constructible_v<AlignerConfig>);
static_assert(std::is_nothrow_move_constructible_v<VoiceAligner> &&
              std::is_nothrow_move_assignable_v<VoiceAligner>);

using Tests::infinity;
using Tests::nan;
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

using Heard = std::vector<Text>;

// Penalties that are exact in binary.
AlignerConfig usual() {
    return {.tailLength = 8,
            .lookBehind = 15,
            .lookAhead = 45,
            .acceptScore = 0.5,
            .fuzzyFloor = 0.5,
            .recencyDecay = 0.5,
            .backwardPenalty = 0.25,
            .forwardPenalty = 0.125};
}

AlignerConfig oneWord() {
    AlignerConfig config = usual();
    config.tailLength = 1;
    return config;
}

// Tokens that have nothing in common.
const Script alphabet(Text("aa bb cc dd ee ff gg hh ii jj kk ll mm"));

TEST(VoiceAligner, FollowsTheScriptWordByWord) {
    VoiceAligner aligner(Script("Good evening and welcome"), usual());
    EXPECT_EQ(aligner.cursor(), -1);
    EXPECT_EQ(aligner.observe(Heard{"good", "evening"}), (Alignment{1, 0.875}));
    EXPECT_EQ(aligner.cursor(), 1);
    EXPECT_EQ(aligner.observe(Heard{"good", "evening", "and"}), (Alignment{2, 1.0}));
    aligner.seekTo(-5);
    EXPECT_EQ(aligner.cursor(), -1);
}

TEST(VoiceAligner, AFirstWindowOfTwoIsTokensZeroAndOne) {
    AlignerConfig config = oneWord();
    config.lookAhead = 2;
    const VoiceAligner aligner(Script("red green blue"), config);
    EXPECT_EQ(VoiceAligner(aligner).observe(Heard{"red"}), (Alignment{0, 1.0}));
    EXPECT_EQ(VoiceAligner(aligner).observe(Heard{"green"}), (Alignment{1, 0.875}));
    EXPECT_EQ(VoiceAligner(aligner).observe(Heard{"blue"}), std::nullopt);
}

TEST(VoiceAligner, WhatIsNotSpokenMovesNothing) {
    VoiceAligner aligner(alphabet, usual());
    aligner.seekTo(3);
    EXPECT_EQ(aligner.observe(Heard{}), std::nullopt);
    EXPECT_EQ(aligner.observe(Heard{"...", " \t\n", "\u2014", "", "?!"}), std::nullopt);
    EXPECT_EQ(aligner.cursor(), 3);
}

TEST(VoiceAligner, AnEmptyTailNeverAligns) {
    AlignerConfig config = usual();
    config.tailLength = 0;
    config.acceptScore = -infinity;
    VoiceAligner aligner(alphabet, config);
    EXPECT_EQ(aligner.observe(Heard{"aa"}), std::nullopt);
    EXPECT_EQ(aligner.cursor(), -1);
}

TEST(VoiceAligner, AnEmptyScriptNeverAligns) {
    AlignerConfig config = usual();
    config.acceptScore = -infinity;
    VoiceAligner aligner(Script("# Only a heading\n..."), config);
    EXPECT_EQ(aligner.observe(Heard{"only"}), std::nullopt);
    aligner.seekTo(4);
    EXPECT_EQ(aligner.cursor(), -1);
}

TEST(VoiceAligner, OnlyPairsThatExistAreAveraged) {
    VoiceAligner aligner(alphabet, usual());
    EXPECT_EQ(aligner.observe(Heard{"zz", "yy", "aa"}), (Alignment{0, 1.0}));
}

TEST(VoiceAligner, TheEarliestOfEqualCandidatesWins) {
    AlignerConfig config = oneWord();
    config.backwardPenalty = 0.0;
    config.forwardPenalty = 0.0;
    VoiceAligner aligner(Script("la la la la"), config);
    EXPECT_EQ(aligner.observe(Heard{"la"}), (Alignment{0, 1.0}));
    aligner.seekTo(3);
    EXPECT_EQ(aligner.observe(Heard{"la"}), (Alignment{0, 1.0}));
}

TEST(VoiceAligner, TheCursorAndTheNextTokenAreFreeOfPenalty) {
    struct Case {
        const char* what;
        Text heard;
        Alignment expected;
    };
    const Case cases[] = {
        {"the cursor's own token", "kk", {10, 1.0}}, {"the next", "ll", {11, 1.0}},
        {"the second after", "mm", {12, 0.875}},     {"the one before", "jj", {9, 0.75}},
        {"the second before", "ii", {8, 0.5}},
    };
    for (const auto& [what, heard, expected] : cases) {
        SCOPED_TRACE(what);
        VoiceAligner aligner(alphabet, oneWord());
        aligner.seekTo(10);
        EXPECT_EQ(aligner.observe(Heard{heard}), expected);
        EXPECT_EQ(aligner.cursor(), expected.tokenIndex);
    }
}

TEST(VoiceAligner, AScoreAtTheThresholdIsAccepted) {
    AlignerConfig config = oneWord();
    config.acceptScore = 0.875;
    VoiceAligner aligner(alphabet, config);
    EXPECT_EQ(aligner.observe(Heard{"bb"}), (Alignment{1, 0.875}));
    config.acceptScore = std::nextafter(0.875, 1.0);
    VoiceAligner stricter(alphabet, config);
    EXPECT_EQ(stricter.observe(Heard{"bb"}), std::nullopt);
    EXPECT_EQ(stricter.cursor(), -1);
}

TEST(VoiceAligner, SeekingTakesTheNearestPosition) {
    VoiceAligner aligner(Script("a b c d e f g h i j"), usual());
    struct Case {
        std::int64_t index, cursor;
    };
    for (const auto& [index, cursor] : {Case{-5, -1},
                                        {1000, 9},
                                        {9, 9},
                                        {10, 9},
                                        {0, 0},
                                        {-1, -1},
                                        {smallest, -1},
                                        {largest, 9}}) {
        aligner.seekTo(index);
        EXPECT_EQ(aligner.cursor(), cursor) << index;
    }
    aligner.reset();
    EXPECT_EQ(aligner.cursor(), -1);
}

TEST(VoiceAligner, WordsBelowTheFuzzyFloorCountAsDifferent) {
    AlignerConfig config = oneWord();
    VoiceAligner aligner(Script("color"), config);
    EXPECT_EQ(aligner.observe(Heard{"colour"}), (Alignment{0, 1.0 - 1.0 / 6.0}));
    config.fuzzyFloor = 0.9;
    EXPECT_EQ(VoiceAligner(Script("color"), config).observe(Heard{"colour"}), std::nullopt);
}

TEST(VoiceAligner, HeardTextsAreBroughtToTheirSpokenForms) {
    VoiceAligner aligner(Script("I don't owe you 42 dollars"), usual());
    EXPECT_EQ(aligner.observe(Heard{"I", "Don\u2019t", "owe"}), (Alignment{3, 1.0 - 3 * 0.125}));
    EXPECT_EQ(aligner.observe(Heard{"You", "42"}), (Alignment{6, 1.0 - 2 * 0.125}));
}

TEST(VoiceAligner, ATextIsOneWordWhateverItHolds) {
    // "helloworld", of which "hello" is one half.
    EXPECT_EQ(VoiceAligner(Script("hello world"), oneWord()).observe(Heard{"hello world"}),
              (Alignment{0, 0.5}));
    EXPECT_EQ(VoiceAligner(Script("helloworld"), oneWord()).observe(Heard{"hello world"}),
              (Alignment{0, 1.0}));
}

TEST(VoiceAligner, TheTailCountsSpokenFormsAndNotTexts) {
    AlignerConfig config = usual();
    config.tailLength = 2;
    config.acceptScore = 1.0;
    // "don't" alone fills the tail, so "never" is not compared.
    VoiceAligner aligner(Script("I do not"), config);
    aligner.seekTo(1);
    EXPECT_EQ(aligner.observe(Heard{"never", "don't"}), (Alignment{2, 1.0}));
    // Of the oldest text that still counts, the newest forms do.
    config.tailLength = 1;
    EXPECT_EQ(VoiceAligner(Script("not"), config).observe(Heard{"don't"}), (Alignment{0, 1.0}));
}

TEST(VoiceAligner, TheCursorsOwnTokenCanBeTheBestAgain) {
    VoiceAligner aligner(alphabet, usual());
    const Heard heard = {"aa", "bb"};
    aligner.seekTo(0);
    EXPECT_EQ(aligner.observe(heard), (Alignment{1, 1.0}));
    const VoiceAligner before = aligner;
    EXPECT_EQ(aligner.observe(heard), (Alignment{1, 1.0}));
    EXPECT_EQ(aligner, before);
}

TEST(VoiceAligner, DecayWeighsOlderWordsLess) {
    struct Case {
        double decay, confidence;
    };
    // The newest word fits, the one before it does not.
    for (const auto& [decay, confidence] :
         {Case{1.0, 0.5}, {0.5, 1.0 / 1.5}, {0.0, 1.0}, {-0.5, 2.0}, {-1.0, infinity}}) {
        AlignerConfig config = usual();
        config.recencyDecay = decay;
        VoiceAligner aligner(alphabet, config);
        aligner.seekTo(0);
        EXPECT_EQ(aligner.observe(Heard{"zz", "bb"}), (Alignment{1, confidence})) << decay;
    }
}

TEST(VoiceAligner, AScoreThatIsNoNumberIsNeverAccepted) {
    AlignerConfig config = usual();
    config.acceptScore = -infinity;
    config.recencyDecay = nan;
    config.lookBehind = 0;
    VoiceAligner aligner(alphabet, config);
    aligner.seekTo(4);
    EXPECT_EQ(aligner.observe(Heard{"dd", "ee"}), std::nullopt);
    EXPECT_EQ(aligner.cursor(), 4);
}

TEST(VoiceAligner, AFirstCandidateThatIsNoNumberIsNotReplaced) {
    AlignerConfig config = oneWord();
    config.backwardPenalty = nan;
    VoiceAligner aligner(alphabet, config);
    aligner.seekTo(4);
    EXPECT_EQ(aligner.observe(Heard{"ff"}), std::nullopt);
    aligner.seekTo(-1);  // nothing lies behind
    EXPECT_EQ(aligner.observe(Heard{"aa"}), (Alignment{0, 1.0}));
}

TEST(VoiceAligner, AThresholdBelowEverythingTakesTheEarliestOfTheWorst) {
    AlignerConfig config = oneWord();
    config.acceptScore = -infinity;
    config.backwardPenalty = infinity;
    config.lookAhead = -1;
    VoiceAligner aligner(alphabet, config);
    aligner.seekTo(4);
    EXPECT_EQ(aligner.observe(Heard{"zz"}), (Alignment{0, -infinity}));
    config.acceptScore = nan;
    EXPECT_EQ(VoiceAligner(alphabet, config).observe(Heard{"aa"}), std::nullopt);
}

TEST(VoiceAligner, AnEmptyWindowNeverAligns) {
    AlignerConfig config = oneWord();
    config.acceptScore = -infinity;
    for (const std::int64_t lookAhead : {std::int64_t{0}, std::int64_t{-7}, smallest + 1}) {
        config.lookAhead = lookAhead;
        EXPECT_EQ(VoiceAligner(alphabet, config).observe(Heard{"aa"}), std::nullopt);
    }
    config = oneWord();
    config.lookBehind = smallest;  // -1 minus it still fits
    EXPECT_EQ(VoiceAligner(alphabet, config).observe(Heard{"aa"}), std::nullopt);
}

TEST(VoiceAligner, TheWidestWindowIsTheWholeScript) {
    AlignerConfig config = oneWord();
    config.tailLength = largest;
    config.lookBehind = largest;
    config.lookAhead = largest;
    config.forwardPenalty = 0.0;
    VoiceAligner aligner(alphabet, config);
    EXPECT_EQ(aligner.observe(Heard{"mm"}), (Alignment{12, (1.0 / 1.0)}));
}

TEST(VoiceAligner, EqualityIsOfScriptCursorAndConfiguration) {
    const VoiceAligner aligner(Script("a b"), usual());
    EXPECT_EQ(aligner, VoiceAligner(Script("a b"), usual()));
    EXPECT_NE(aligner, VoiceAligner(Script("a c"), usual()));
    EXPECT_NE(aligner, VoiceAligner(Script("a b"), oneWord()));
    VoiceAligner moved = aligner;
    moved.seekTo(1);
    EXPECT_NE(aligner, moved);
}

TEST(VoiceAligner, CopiesShareTheScript) {
    const VoiceAligner aligner(alphabet, usual());
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  const VoiceAligner made(alphabet, usual());
                  const VoiceAligner copy = made;
                  EXPECT_EQ(&copy.script().tokens(), &alphabet.tokens());
              }),
              0);
}

// Memory asked for stands for work done: neither the words before the tail nor the script outside
// the window may add to it.
TEST(VoiceAligner, CostsNoMoreThanItsWindow) {
    AlignerConfig config = usual();
    config.lookAhead = 5;
    config.tailLength = 2;
    const auto allocations = [&](const Script& script, const Heard& heard) {
        VoiceAligner aligner(script, config);
        return Tests::allocationsDuring([&] { EXPECT_TRUE(aligner.observe(heard)); });
    };
    std::string longText = "aa bb cc dd ee ff gg";
    for (int i = 0; i < 10'000; ++i) {
        longText += " another";
    }
    const Script longScript{Text(longText)};
    Heard longHeard(10'000, "something else entirely, and long enough for the heap");
    longHeard.insert(longHeard.end(), {"aa", "bb"});
    const std::int64_t least = allocations(alphabet, {"aa", "bb"});
    EXPECT_EQ(allocations(longScript, {"aa", "bb"}), least);
    EXPECT_EQ(allocations(alphabet, longHeard), least);
}

TEST(VoiceAlignerDeath, StopsOnANegativeTail) {
    AlignerConfig config = usual();
    config.tailLength = -1;
    EXPECT_DEATH(std::ignore = VoiceAligner(alphabet, config).observe(Heard{"aa"}),
                 "tail's length is not negative");
    EXPECT_DEATH(std::ignore = VoiceAligner(Script(""), config).observe(Heard{}),
                 "tail's length is not negative");
}

TEST(VoiceAlignerDeath, StopsWhereTheWindowDoesNotFit) {
    AlignerConfig behind = usual();
    behind.lookBehind = smallest;
    AlignerConfig ahead = usual();
    ahead.lookAhead = largest;
    AlignerConfig before = usual();
    before.lookAhead = smallest;
    const auto observeAt = [](const AlignerConfig& config, std::int64_t cursor, const Text& heard) {
        VoiceAligner aligner(alphabet, config);
        aligner.seekTo(cursor);
        aligner.observe(Heard{heard});
    };
    EXPECT_DEATH(observeAt(behind, 0, "aa"), "difference fits 64 bits");
    EXPECT_DEATH(observeAt(ahead, 1, "aa"), "sum fits 64 bits");
    EXPECT_DEATH(observeAt(before, -1, "aa"), "sum fits 64 bits");
    observeAt(behind, 0, "...");  // with nothing to search for, no window is asked for
    observeAt(ahead, 0, "aa");    // fits just so
}

}  // namespace
}  // namespace PrompterCore

// The aligner against the plain one: the same token and the same bits of confidence.

#include <bit>
#include <limits>
#include <string>
#include <vector>

#include "tests/reference/PlainAligner.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

bool sameBits(const std::optional<Alignment>& a, const std::optional<Alignment>& b) {
    if (!a || !b) return a.has_value() == b.has_value();
    return a->tokenIndex == b->tokenIndex && std::bit_cast<std::uint64_t>(a->confidence) ==
                                                 std::bit_cast<std::uint64_t>(b->confidence);
}

// Empty when `aligner` does with `heard` what the plain one says.
std::string difference(VoiceAligner aligner, const std::vector<Text>& heard) {
    const std::int64_t before = aligner.cursor();
    const std::optional<Alignment> expected = Plain::observed(aligner, heard);
    const std::optional<Alignment> got = aligner.observe(heard);
    if (sameBits(got, expected) && aligner.cursor() == (expected ? expected->tokenIndex : before))
        return "";
    std::ostringstream message;
    message << aligner.script().text() << " at " << before << " heard "
            << ::testing::PrintToString(heard) << ": got " << ::testing::PrintToString(got)
            << ", not " << ::testing::PrintToString(expected);
    return message.str();
}

const AlignerConfig narrow{.tailLength = 2,
                           .lookBehind = 1,
                           .lookAhead = 2,
                           .acceptScore = 0.4,
                           .fuzzyFloor = 0.5,
                           .recencyDecay = 0.8,
                           .backwardPenalty = 0.02,
                           .forwardPenalty = 0.01};
const AlignerConfig wide{.tailLength = 3,
                         .lookBehind = 9,
                         .lookAhead = 9,
                         .acceptScore = 0.0,
                         .fuzzyFloor = 0.0,
                         .recencyDecay = 0.3,
                         .backwardPenalty = 0.3,
                         .forwardPenalty = 0.2};

// All lists of up to `length` of `words`.
std::vector<std::vector<Text>> lists(const std::vector<Text>& words, std::size_t length) {
    std::vector<std::vector<Text>> all = {{}};
    for (std::size_t from = 0; from < all.size(); ++from) {
        if (all[from].size() == length) break;
        for (const Text& word : words) {
            all.push_back(all[from]);
            all.back().push_back(word);
        }
    }
    return all;
}

Script scriptOf(const std::vector<Text>& words) {
    std::string text;
    for (const Text& word : words) {
        text += word.utf8() + " ";
    }
    return Script(Text(text));
}

TEST(VoiceAlignerTwin, AgreesOnAllShortScriptsAndTails) {
    const auto heards = lists({"ab", "b\u304C", "don't"}, 3);
    for (const auto& words : lists({"ab", "a", "b\u304B\u3099", "don't"}, 3)) {
        const Script script = scriptOf(words);
        for (const AlignerConfig& config : {narrow, wide}) {
            VoiceAligner aligner(script, config);
            for (std::int64_t cursor = -1; cursor < signedCount(script.tokens().size()); ++cursor) {
                aligner.seekTo(cursor);
                for (const auto& heard : heards) {
                    const std::string found = difference(aligner, heard);
                    ASSERT_EQ(found, "");
                }
            }
        }
    }
}

// Words near each other, so that scores are neither 0 nor 1; and words that fold, split, compose.
rc::Gen<std::vector<Text>> words() {
    const auto near = Tests::textOver({"a", "b", "ab", "\u304C", "\u304B\u3099", "\u0436"});
    const auto odd = rc::gen::elementOf(std::vector<Text>{
        "", "...", "don't", "1905", "3.14", "well-known", "a b", "\uAC01", "\u1100\u1161\u11A8",
        "\u0915\u093F", "\U0001F44D\U0001F3FD", "\U0001F1E9\U0001F1EA", "\u2460", "e\u0301",
        "\u00BD\u20E3", std::string(70, 'a'), std::string(64, 'a') + "b"});
    return rc::gen::container<std::vector<Text>>(
        rc::gen::oneOf(near, near, odd, Tests::nastyText()));
}

rc::Gen<double> parameter() {
    return rc::gen::element(0.5, 0.0, 1.0, 0.8, 0.02, 0.55, 0.9, 2.0, -0.5, -1.0,
                            std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity());
}

rc::Gen<AlignerConfig> anyConfig() {
    return rc::gen::exec([] {
        return AlignerConfig{.tailLength = *rc::gen::inRange<std::int64_t>(0, 12),
                             .lookBehind = *rc::gen::inRange<std::int64_t>(-2, 20),
                             .lookAhead = *rc::gen::inRange<std::int64_t>(-2, 50),
                             .acceptScore = *parameter(),
                             .fuzzyFloor = *parameter(),
                             .recencyDecay = *parameter(),
                             .backwardPenalty = *parameter(),
                             .forwardPenalty = *parameter()};
    });
}

TEST(VoiceAlignerTwin, AgreesOnNastyWordsAndAnyConfiguration) {
    Tests::forAll(
        [] {
            VoiceAligner aligner(scriptOf(*words()), *anyConfig());
            aligner.seekTo(*rc::gen::inRange<std::int64_t>(-1, 40));
            RC_ASSERT(difference(aligner, *words()) == "");
        },
        600);
}

TEST(VoiceAlignerTwin, AgreesOnALongReading) {
    Tests::forAll(
        [] {
            const std::vector<Text> script = *words();
            VoiceAligner aligner(scriptOf(script), *rc::gen::element(narrow, wide));
            std::vector<Text> heard;
            for (const Text& word : script) {
                heard.push_back(*rc::gen::oneOf(rc::gen::just(word), Tests::nastyText()));
                RC_ASSERT(difference(aligner, heard) == "");
                aligner.observe(heard);
                RC_ASSERT(-1 <= aligner.cursor());
                RC_ASSERT(aligner.cursor() < signedCount(aligner.script().tokens().size()));
            }
        },
        60);
}

}  // namespace
}  // namespace PrompterCore

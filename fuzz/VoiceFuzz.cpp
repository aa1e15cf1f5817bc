// A reading is followed by a sequence of calls on the aligner and the scroll model, each beside its
// plain twin.
//
// Bytes: the fields of both configurations, the script's text up to a byte FF, then the calls: what
// to do, a token, a time step, and for heard words their texts up to a byte FF, parted by a |.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/voice/ScrollModel.h"
#include "PrompterCore/voice/VoiceAligner.h"
#include "PrompterCore/voice/WordSimilarity.h"
#include "fuzz/Bytes.h"
#include "tests/reference/PlainAligner.h"
#include "tests/reference/PlainScrollModel.h"

using namespace PrompterCore;

namespace {

bool sameNumber(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

AlignerConfig alignerConfig(Bytes& bytes) {
    return {.tailLength = bytes.next() % 16,
            .lookBehind = bytes.count(),
            .lookAhead = bytes.count(),
            .acceptScore = bytes.number(),
            .fuzzyFloor = bytes.number(),
            .recencyDecay = bytes.number(),
            .backwardPenalty = bytes.number(),
            .forwardPenalty = bytes.number()};
}

ScrollConfig scrollConfig(Bytes& bytes) {
    return {.defaultRate = bytes.number(),
            .minRate = bytes.number(),
            .maxRate = bytes.number(),
            .rateSmoothing = bytes.number(),
            .convergence = bytes.number(),
            .maxLead = bytes.number(),
            .holdAfterSilence = bytes.number(),
            .predictionGain = bytes.number(),
            .backStepThreshold = bytes.number(),
            .backStepDelay = bytes.number()};
}

std::vector<Text> heardWords(Bytes& bytes) {
    const std::string all = bytes.textUpToFF(200);
    std::vector<Text> words;
    for (std::size_t from = 0; from <= all.size();) {
        const std::size_t to = std::min(all.find('|', from), all.size());
        words.emplace_back(all.substr(from, to - from));
        from = to + 1;
    }
    return words;
}

std::optional<Alignment> observeBoth(VoiceAligner& aligner, const std::vector<Text>& words) {
    const std::int64_t before = aligner.cursor();
    const auto expected = Plain::observed(aligner, words);
    const auto got = aligner.observe(words);
    require(got.has_value() == expected.has_value(), "both accept alike");
    if (got) {
        require(got->tokenIndex == expected->tokenIndex, "both find the token");
        require(sameNumber(got->confidence, expected->confidence), "both score alike");
        require(!std::isnan(got->confidence), "what is accepted is a number");
    }
    require(aligner.cursor() == (got ? got->tokenIndex : before), "the cursor goes with it");
    return got;
}

void compareWords(const Text& a, const Text& b, double floor) {
    const std::int64_t distance = WordSimilarity::editDistance(a, b);
    require(distance == Plain::editDistance(Characters(a), Characters(b)), "both count the edits");
    require(WordSimilarity::of(a, b, floor) == Plain::similarity(a, b, floor), "both are as like");
}

void checkCursor(const VoiceAligner& aligner) {
    require(-1 <= aligner.cursor(), "the cursor is not before the beginning");
    require(aligner.cursor() < signedCount(aligner.script().tokens().size()),
            "the cursor is not past the end");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes({data, size});
    const AlignerConfig config = alignerConfig(bytes);
    ScrollModel model(scrollConfig(bytes));
    Plain::PlainScrollModel plain{model.config()};
    VoiceAligner aligner(Script(Text(bytes.textUpToFF(400))), config);
    double now = 0.0;
    while (!bytes.isEmpty()) {
        const std::uint8_t call = bytes.next();
        const std::int64_t token = bytes.count();
        now += bytes.number();
        switch (call % 7) {
            case 0: {
                const std::vector<Text> words = heardWords(bytes);
                compareWords(words.front(), words.back(), config.fuzzyFloor);
                if (const auto alignment = observeBoth(aligner, words)) {
                    model.anchor(alignment->tokenIndex, now);
                    plain.anchor(alignment->tokenIndex, now);
                }
                break;
            }
            case 1:
                aligner.seekTo(token);
                model.jumpTo(token, now);
                plain.jump(token, now);
                break;
            case 2:
                model.anchor(token, now);
                plain.anchor(token, now);
                break;
            case 3:
                model.setSpeaking(token > 0);
                plain.speaking = token > 0;
                break;
            case 4:
                aligner.reset();
                model.reset();
                plain = {model.config()};
                now = 0.0;
                break;
            default: require(sameNumber(model.tickAt(now), plain.tick(now)), "both move alike");
        }
        checkCursor(aligner);
        require(sameNumber(model.position(), plain.position), "both stand alike");
        require(sameNumber(model.rate(), plain.rate), "both rate alike");
    }
    return 0;
}

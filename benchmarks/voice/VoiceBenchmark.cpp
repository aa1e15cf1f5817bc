// What a recogniser's update and a display frame cost, each beside the plain way in the same run.
// Each row's answer is checked against the other's before it is timed.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "PrompterCore/voice/ScrollModel.h"
#include "PrompterCore/voice/VoiceAligner.h"
#include "PrompterCore/voice/WordSimilarity.h"
#include "tests/reference/PlainAligner.h"
#include "tests/reference/PlainScrollModel.h"

namespace PrompterCore {

namespace {

// Sixty tokens around the cursor, eight heard words.
const AlignerConfig alignerConfig{.tailLength = 8,
                                  .lookBehind = 15,
                                  .lookAhead = 44,
                                  .acceptScore = 0.6,
                                  .fuzzyFloor = 0.55,
                                  .recencyDecay = 0.8,
                                  .backwardPenalty = 0.02,
                                  .forwardPenalty = 0.01};

struct Reading {
    const char* name;
    Text paragraph;
    std::vector<Text> heard;  // a stretch of it, some words misheard
};

const Reading readings[] = {
    {"english",
     "Good evening and welcome to everyone who found the door in spite of the rain. Tonight we "
     "open "
     "a museum that began as a quarrel between two neighbours about a broken clock. One wanted it "
     "repaired, the other thought that silence suited the square far better than any bell. They "
     "argued through several winters until a carpenter offered to build a room around it, so that "
     "whoever wished to listen could step inside, and whoever did not might walk past undisturbed. "
     "The room grew shelves, then visitors, then a roof that leaked only on Thursdays. What you "
     "see before you is the fourth roof and the same stubborn clock, which has never once agreed "
     "with the station. ",
     {"they", "argue", "through", "several", "winter", "until", "the", "carpenter"}},
    {"russian",
     "Добрый вечер и добро пожаловать всем, кто нашёл нашу дверь, несмотря на сильный дождь. "
     "Сегодня мы открываем музей, который начался со спора двух соседей о сломанных часах. Один "
     "хотел их починить, другой считал, что тишина подходит старой площади гораздо лучше любого "
     "колокола. Они спорили несколько зим подряд, пока плотник не предложил построить вокруг часов "
     "комнату, чтобы каждый желающий мог войти и послушать, а остальные спокойно прошли мимо. ",
     {"они", "спорил", "несколько", "зим", "подряд", "пока", "плотника", "не"}},
};

VoiceAligner alignerFor(const Reading& reading) {
    std::string text;
    while (text.size() < 100'000) {
        text += reading.paragraph.utf8();
    }
    return VoiceAligner(Script(Text(std::move(text))), alignerConfig);
}

// Just before what was heard, in the script's second paragraph.
std::int64_t cursorOf(const Reading& reading) {
    const std::vector<ScriptToken>& tokens = Script(reading.paragraph).tokens();
    std::int64_t at = 0;
    while (!(tokens[static_cast<std::size_t>(at)].text == reading.heard.front())) {
        ++at;
    }
    return signedCount(tokens.size()) + at + 4;
}

void observe(benchmark::State& state, const Reading& reading) {
    VoiceAligner aligner = alignerFor(reading);
    const std::int64_t cursor = cursorOf(reading);
    aligner.seekTo(cursor);
    const auto expected = Plain::observed(aligner, reading.heard);
    if (!expected || aligner.observe(reading.heard) != expected)
        return state.SkipWithError("the alignment differs from the plain one");
    for (auto _ : state) {
        aligner.seekTo(cursor);
        benchmark::DoNotOptimize(aligner.observe(reading.heard));
    }
}

void observePlain(benchmark::State& state, const Reading& reading) {
    VoiceAligner aligner = alignerFor(reading);
    aligner.seekTo(cursorOf(reading));
    for (auto _ : state) {
        benchmark::DoNotOptimize(Plain::observed(aligner, reading.heard));
    }
}

// Pairs of words as the aligner meets them: mostly unlike, some near.
std::vector<std::pair<Text, Text>> pairsOf(const Reading& reading) {
    const Script script(reading.paragraph);
    std::vector<std::pair<Text, Text>> pairs;
    for (std::size_t i = 0; i < 60; ++i) {
        pairs.emplace_back(reading.heard[i % reading.heard.size()], script.tokens()[i].text);
    }
    return pairs;
}

template <class Similarity>
void similarity(benchmark::State& state, const Reading& reading, Similarity of) {
    const auto pairs = pairsOf(reading);
    for (const auto& [a, b] : pairs) {
        if (of(a, b, 0.5) != Plain::similarity(a, b, 0.5))
            return state.SkipWithError("the similarity differs from the plain one");
    }
    std::size_t next = 0;
    for (auto _ : state) {
        const auto& [a, b] = pairs[next];
        benchmark::DoNotOptimize(of(a, b, 0.5));
        next = (next + 1) % pairs.size();
    }
}

const ScrollConfig scrollConfig{.defaultRate = 2.5,
                                .minRate = 0.5,
                                .maxRate = 6.0,
                                .rateSmoothing = 0.3,
                                .convergence = 5.0,
                                .maxLead = 6.0,
                                .holdAfterSilence = 1.5,
                                .predictionGain = 1.0,
                                .backStepThreshold = 2.0,
                                .backStepDelay = 0.5};

// Both models after 100 s of reading at 60 frames a second; `agreed` as long as they moved alike.
struct Scrolled {
    ScrollModel model{scrollConfig};
    Plain::PlainScrollModel plain{scrollConfig};
    double time = 0.0;
    bool agreed = true;

    Scrolled() {
        const bool speaking = true;
        model.setSpeaking(speaking);
        plain.speaking = speaking;
        for (int frame = 0; frame < 6000; ++frame) {
            if (frame % 60 == 0) {
                model.anchor(frame / 20, time);
                plain.anchor(frame / 20, time);
            }
            time += 1.0 / 60;
            agreed = agreed && model.tickAt(time) == plain.tick(time);
        }
    }
};

constexpr double tinyStep = 1e-9;  // s, so that a whole run stays within one prediction

void tick(benchmark::State& state) {
    Scrolled scrolled;
    if (!scrolled.agreed) return state.SkipWithError("the position differs from the plain one");
    for (auto _ : state) {
        scrolled.time += tinyStep;
        benchmark::DoNotOptimize(scrolled.model.tickAt(scrolled.time));
    }
}

void tickPlain(benchmark::State& state) {
    Scrolled scrolled;
    for (auto _ : state) {
        scrolled.time += tinyStep;
        benchmark::DoNotOptimize(scrolled.plain.tick(scrolled.time));
    }
}

const bool added = [] {
    for (const Reading& reading : readings) {
        const auto named = [&](const char* row) { return std::string(reading.name) + "/" + row; };
        benchmark::RegisterBenchmark(named("observe").c_str(), observe, reading);
        benchmark::RegisterBenchmark(named("observe/plain").c_str(), observePlain, reading);
        benchmark::RegisterBenchmark(
            named("similarity").c_str(),
            [reading](benchmark::State& state) { similarity(state, reading, WordSimilarity::of); });
        benchmark::RegisterBenchmark(
            named("similarity/plain").c_str(),
            [reading](benchmark::State& state) { similarity(state, reading, Plain::similarity); });
    }
    benchmark::RegisterBenchmark("tick", tick);
    benchmark::RegisterBenchmark("tick/plain", tickPlain);
    return true;
}();

}  // namespace

}  // namespace PrompterCore

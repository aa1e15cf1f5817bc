#pragma once

// Readings that never took place: the words of a script with the times at which they would be
// spoken, changed as presenters and recognisers change them, and how well a read-through keeps the
// place in them. Everything follows from a seed.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/script/Script.h"
#include "host/HeardWords.h"
#include "host/ReadThrough.h"
#include "host/Tuning.h"

namespace Varnelle::Tests {

/// One word of a reading.
struct SpokenWord {
    Text word;
    std::int64_t token = -1;  ///< the last token of the script's word; -1: it is not in the script
};

/// Words [from, to) of the script as they stand there.
inline std::vector<SpokenWord> spoken(const Script& script, std::size_t from, std::size_t to) {
    std::vector<SpokenWord> words;
    for (std::size_t i = from; i < to; ++i) {
        const ScriptWord& word = script.words()[i];
        if (!word.tokenRange.isEmpty())
            words.push_back({.word = word.text, .token = word.tokenRange.upper() - 1});
    }
    return words;
}

/// Words that are not in the script: a thought of the moment.
inline std::vector<SpokenWord> adLib(std::size_t count) {
    static const char* const words[] = {
        "so",   "actually", "let",   "me",  "tell", "you",  "what",  "happened", "last",  "week",
        "when", "I",        "was",   "at",  "the",  "door", "of",    "a",        "house", "and",
        "it",   "is",       "in",    "the", "way",  "but",  "to",    "be",       "fair",  "he",
        "said", "that",     "every", "one", "of",   "them", "comes", "by",       "the",   "sea"};
    std::vector<SpokenWord> result;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back({.word = words[i % std::size(words)], .token = -1});
    }
    return result;
}

inline std::vector<SpokenWord> operator+(std::vector<SpokenWord> a,
                                         const std::vector<SpokenWord>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// How a reading was followed.
struct Followed {
    double inPlace = 0;      ///< share of the frames with the eye line within one line of the place
    double longestLost = 0;  ///< seconds, the longest time in a row without
    double meanDistance = 0;  ///< tokens between the shown position and the word being spoken
    std::int64_t last = -1;   ///< the cursor at the end
};

struct Hearing {
    double wordsPerSecond = 2.6;
    double errors = 0;         ///< share of the words that are heard wrongly
    double delay = 0.2;        ///< seconds from a word's end to the update that brings it
    double provisional = 0.3;  ///< share of the updates whose last word is withdrawn at once
    unsigned seed = 1;
};

/// Reads `words` to a new read-through of `script` and says how well it kept the place.
inline Followed follow(const Script& script, const std::vector<SpokenWord>& words,
                       const Hearing& hearing, const AlignerConfig& aligner = Tuning::aligner,
                       const ScrollConfig& scroll = Tuning::scroll) {
    std::mt19937 random(hearing.seed);
    const auto chance = [&](double share) {
        return static_cast<double>(random() % 10'000) < share * 10'000;
    };
    const LineBreaker breaker{.width = 40, .measure = [](std::string_view text) {
                                  return static_cast<double>(text.size());
                              }};
    const std::vector<PromptLine> lines = breaker.linesFor(script);
    ReadThrough reading(script, lines, aligner, scroll);

    // The times at which the words are spoken: a long word takes longer, a sentence ends in a
    // pause.
    std::vector<double> starts;
    std::vector<double> ends;
    double time = 1;
    for (const SpokenWord& word : words) {
        const double length = static_cast<double>(word.word.utf8().size());
        const double seconds = (0.5 + 0.1 * length) / hearing.wordsPerSecond;
        starts.push_back(time);
        ends.push_back(time + seconds);
        const char lastSign = word.word.utf8().back();
        time += seconds + (lastSign == '.' ? 0.5 : lastSign == ',' ? 0.2 : 0);
    }

    Followed result;
    std::size_t said = 0;   // words whose update has come
    std::size_t begun = 0;  // words that somebody has begun to speak
    std::int64_t keep = 0;
    std::int64_t truth = -1;
    std::int64_t frames = 0;
    std::int64_t judged = 0;
    std::int64_t good = 0;
    double lostSince = -1;
    for (double now = 0; now < ends.back() + 0.5; now = static_cast<double>(++frames) / 30) {
        while (begun < words.size() && starts[begun] <= now) {
            // While somebody speaks beside the script, the place to hold is where they left it.
            if (words[begun].token >= 0) truth = words[begun].token;
            ++begun;
        }
        while (said < words.size() && ends[said] + hearing.delay <= now) {
            std::string heard = words[said].word.utf8();
            bool isDropped = false;
            if (chance(hearing.errors)) {
                static const char* const wrong[] = {"the", "and", "light", "a", "of", "he"};
                isDropped = random() % 3 == 0;
                heard = wrong[random() % std::size(wrong)];
            }
            if (!isDropped) {
                WordsUpdate update{.time = ends[said] + hearing.delay,
                                   .keep = keep,
                                   .words = {{.word = heard,
                                              .start = starts[said],
                                              .end = ends[said],
                                              .confidence = std::nullopt}},
                                   .final = false};
                ++keep;
                if (chance(hearing.provisional))
                    update.words.push_back({.word = "the",
                                            .start = ends[said],
                                            .end = ends[said] + 0.1,
                                            .confidence = std::nullopt});
                reading.hear(update);
            }
            ++said;
        }
        reading.level(begun > said ? 0.6 : 0.0, now);
        const Frame frame = reading.frameAt(now);
        result.last = frame.cursor;
        if (truth < 0) continue;  // before the beginning
        ++judged;
        result.meanDistance += std::abs(frame.position - static_cast<double>(truth));
        const double line = LineBreaker::lineIndexFor(static_cast<double>(truth), lines);
        const bool isGood = std::abs(frame.line - line) <= 1;
        good += isGood ? 1 : 0;
        if (isGood) lostSince = -1;
        if (!isGood && lostSince < 0) lostSince = now;
        if (!isGood) result.longestLost = std::max(result.longestLost, now - lostSince);
    }
    result.inPlace = static_cast<double>(good) / static_cast<double>(judged);
    result.meanDistance /= static_cast<double>(judged);
    return result;
}

}  // namespace Varnelle::Tests

// What holds for every form that words can come in. Each form's own traps stand in
// WordsReadersTest.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/words/WordsFormat.h"
#include "tests/host/WordsWriters.h"
#include "tests/support/Properties.h"

namespace Varnelle {

std::ostream& operator<<(std::ostream& out, const HeardWord& word) {
    return PrompterCore::Tests::printRecord(out, "HeardWord", "word", word.word, "start",
                                            word.start, "end", word.end, "confidence",
                                            word.confidence);
}

namespace {

using PrompterCore::allCases;
using PrompterCore::caseName;
using PrompterCore::fromRawValue;
using PrompterCore::rawValue;
using namespace Tests;  // NOLINT

double milliseconds(std::int64_t count) { return static_cast<double>(count) / 1000; }

// Words one after the other, with confidences of whole thousandths or none at all.
std::vector<HeardWord> anyWords() {
    const auto word = rc::gen::element<std::string>(
        "behind", "me", "it's", "3.14", "caf\u00E9", "e\u0301t\u00E9", "\u05E9\u05DC\u05D5\u05DD",
        "\u65E5\u672C", "AT&T", "\"x\"", "back\\slash", "\U0001F600", "{brace}", "a:b", "#1");
    std::vector<HeardWord> words;
    std::int64_t time = *rc::gen::inRange(0, 4'000'000);
    const auto count = *rc::gen::inRange(1, 30);
    for (int i = 0; i < count; ++i) {
        const std::int64_t start = time;
        time += *rc::gen::inRange(21, 900);  // a shorter cue may only repeat
        words.push_back({.word = *word,
                         .start = milliseconds(start),
                         .end = milliseconds(time),
                         .confidence = std::nullopt});
        if (*rc::gen::arbitrary<bool>()) time += *rc::gen::inRange(0, 3000);
    }
    return words;
}

// What a form can say of words.
std::vector<HeardWord> sayable(WordsFormat format, std::vector<HeardWord> words) {
    if (format == WordsFormat::webVtt || format == WordsFormat::srt ||
        format == WordsFormat::sherpa) {
        for (HeardWord& word : words) {
            word.confidence.reset();
        }
    }
    if (format == WordsFormat::sherpa) {
        constexpr std::size_t perSegment = 6;
        for (std::size_t i = 0; i < words.size(); ++i) {
            const bool isLast = i % perSegment == perSegment - 1 || i + 1 == words.size();
            words[i].end =
                isLast ? std::round(words[i].start * 1000 + 300) / 1000 : words[i + 1].start;
        }
    }
    return words;
}

TEST(WordsFormat, WhatIsWrittenInAnyFormReadsBackTheSame) {
    PrompterCore::Tests::forAll([] {
        std::vector<HeardWord> words = anyWords();
        if (*rc::gen::arbitrary<bool>()) {
            for (HeardWord& word : words) {
                word.confidence = milliseconds(*rc::gen::inRange(0, 1001));
            }
        }
        for (const WordsFormat format : allCases<WordsFormat>) {
            std::string text = textIn(format, words);
            if (*rc::gen::arbitrary<bool>()) {
                std::string withReturns;
                for (const char byte : text) {
                    withReturns += byte == '\n' ? "\r\n" : std::string(1, byte);
                }
                text = withReturns;
            }
            const auto recognised = recognisedFormat(text);
            RC_ASSERT(recognised.has_value());
            RC_ASSERT(caseName(*recognised) == caseName(format));
            for (const WordsArrival arrival : {WordsArrival::recorded, WordsArrival::live}) {
                const auto reader = wordsReader(format, arrival);
                const WordsRead read = readAll(*reader, text);
                RC_ASSERT(read.broken.empty());
                RC_ASSERT(wordsIn(read) == sayable(format, words));
            }
        }
    });
}

TEST(WordsFormat, EveryFormTakesAnEmptyText) {
    EXPECT_EQ(recognisedFormat(""), std::nullopt);
    EXPECT_EQ(recognisedFormat("\n\n"), std::nullopt);
    for (const WordsFormat format : allCases<WordsFormat>) {
        for (const char* text : {"", "\n", "\r\n\r\n"}) {
            const auto reader = wordsReader(format, WordsArrival::recorded);
            EXPECT_EQ(readAll(*reader, text), WordsRead{}) << caseName(format);
        }
    }
}

TEST(WordsFormat, ATextSaysItsForm) {
    struct Case {
        const char* text;
        std::optional<WordsFormat> format;
    };
    const Case cases[] = {
        {"{\"time\":1,\"keep\":0}\n", WordsFormat::jsonLines},
        {"nonsense\n{\"time\":1,\"keep\":0}\n", WordsFormat::jsonLines},
        {"{\"event\":\"words\",\"keep\":0}\n", WordsFormat::jsonLines},
        {"{\n  \"partial\" : \"\"\n}\n", WordsFormat::vosk},
        {"{\n", std::nullopt},
        {"{\n  \"text\" : \"\"\n", std::nullopt},
        {"{\n  \"text\" : \"\"\n}\n", WordsFormat::vosk},
        {"{\"text\":\"the keep\"}\n", WordsFormat::vosk},
        {"{\"alternatives\":[]}\n", WordsFormat::vosk},
        {"{\"spk\":[0.1],\"spk_frames\":9,\"text\":\"\"}\n", WordsFormat::vosk},
        {"{\"text\":\"the keep\",\"segments\":[],\"language\":\"en\"}\n", std::nullopt},
        {"{\"language\":\"en\",\"text\":\"the keep\"}\n", std::nullopt},
        {"{\n\t\"systeminfo\": \"\",\n", WordsFormat::whisper},
        {"{\"text\":\" A\",\"tokens\":[\"A\"]}\n", WordsFormat::sherpa},
        {"WEBVTT - a title\n", WordsFormat::webVtt},
        {"1\n", WordsFormat::srt},
        {"00:01,5 --> 00:02\n", WordsFormat::srt},
        {";; CTM\n", WordsFormat::ctm},
        {"talk A 1.0 .5 word\n", WordsFormat::ctm},
        {"talk A * * <ALT_BEGIN>\n", WordsFormat::ctm},
        {"four score and seven years\n", std::nullopt},
    };
    for (const auto& [text, format] : cases) {
        EXPECT_TRUE(recognisedFormat(text) == format) << text;
    }
}

TEST(WordsFormat, HasANameForEachForm) {
    for (const WordsFormat format : allCases<WordsFormat>) {
        EXPECT_TRUE(fromRawValue<WordsFormat>(rawValue(format)) == format);
    }
    EXPECT_EQ(fromRawValue<WordsFormat>("CTM"), std::nullopt);
}

TEST(WordsFormat, BytesThatAreNoTextAreStillWords) {
    const std::vector<HeardWord> words{
        {.word = "caf\u00E9", .start = 1.0, .end = 1.5, .confidence = std::nullopt}};
    for (const WordsFormat format : allCases<WordsFormat>) {
        std::string text = textIn(format, words);
        for (std::size_t at = 0; (at = text.find("\u00E9", at)) != std::string::npos;) {
            text.replace(at, 2, "\xE9");  // Latin-1
        }
        const auto reader = wordsReader(format, WordsArrival::recorded);
        const WordsRead read = readAll(*reader, text);
        if (format == WordsFormat::jsonLines) {
            EXPECT_EQ(read.broken.size(), 1U) << "ours is UTF-8";
            continue;
        }
        ASSERT_EQ(wordsIn(read).size(), 1U) << caseName(format);
        EXPECT_EQ(wordsIn(read)[0].word, "caf\uFFFD");
    }
}

}  // namespace
}  // namespace Varnelle

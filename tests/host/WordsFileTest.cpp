#include <string>

#include <gtest/gtest.h>

#include "host/WordsFile.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

WordsUpdate readBack(std::string_view line) {
    const auto read = wordsFromLine(line);
    const auto* update = std::get_if<WordsUpdate>(&read);
    EXPECT_NE(update, nullptr) << std::get<BrokenLine>(read).why;
    return update != nullptr ? *update : WordsUpdate{};
}

std::string whyBroken(std::string_view line) {
    const auto read = wordsFromLine(line);
    const auto* broken = std::get_if<BrokenLine>(&read);
    return broken != nullptr ? broken->why : "it is not";
}

TEST(WordsFile, ALineIsAnUpdate) {
    const WordsUpdate update = readBack(
        R"({"time":1.2,"keep":14,"words":[{"word":"the","start":0.9,"end":1.0}],"final":false})");
    EXPECT_EQ(update.time, 1.2);
    EXPECT_EQ(update.keep, 14);
    ASSERT_EQ(update.words.size(), 1U);
    EXPECT_EQ(update.words[0].word, "the");
    EXPECT_EQ(update.words[0].start, 0.9);
    EXPECT_EQ(update.words[0].end, 1.0);
    EXPECT_EQ(update.words[0].confidence, std::nullopt);
    EXPECT_FALSE(update.final);
}

TEST(WordsFile, ConfidenceMayStandOrBeNull) {
    const auto confidence = [](const std::string& value) {
        return readBack(
                   R"({"time":1,"keep":0,"words":[{"word":"a","start":0,"end":1,"confidence":)" +
                   value + R"(}],"final":true})")
            .words[0]
            .confidence;
    };
    EXPECT_EQ(confidence("0.5"), 0.5);
    EXPECT_EQ(confidence("null"), std::nullopt);
}

TEST(WordsFile, UnknownKeysAreIgnored) {
    EXPECT_EQ(readBack(R"({"event":"words","time":1,"keep":0,"words":[],"final":true,"x":[{}]})"),
              (WordsUpdate{.time = 1, .keep = 0, .words = {}, .final = true}));
}

TEST(WordsFile, WhatIsWrittenReadsBackTheSame) {
    const WordsUpdate update{
        .time = 0.1 + 0.2,
        .keep = 3,
        .words = {{.word = "caf\u00E9 \"x\"\n", .start = 0.1, .end = 0.3, .confidence = 0.25},
                  {.word = "\U0001F600", .start = 0.3, .end = 0.3, .confidence = std::nullopt}},
        .final = true};
    EXPECT_EQ(readBack(lineFromWords(update)), update);
    EXPECT_EQ(lineFromWords(update).find('\n'), std::string::npos);
}

TEST(WordsFile, ABrokenLineSaysWhatIsWrong) {
    struct Case {
        const char* line;
        const char* why;
    };
    const Case cases[] = {
        {"", "the line is no JSON"},
        {"{", "the line is no JSON"},
        {"\xFF", "the line is no JSON"},
        {"[1]", "the line is no JSON object"},
        {"{}", "\"time\" is missing"},
        {R"({"time":"1"})", "\"time\" is no number"},
        {R"({"time":true})", "\"time\" is no number"},
        {R"({"time":-1})", "\"time\" is no time"},
        {R"({"time":1000000.5})", "\"time\" is not in seconds"},
        {R"({"time":1700000000})", "\"time\" is not in seconds"},
        {R"({"time":1})", "\"keep\" is missing"},
        {R"({"time":1,"keep":1.5})", "\"keep\" is no count of words"},
        {R"({"time":1,"keep":-1})", "\"keep\" is no count of words"},
        {R"({"time":1,"keep":1e300})", "\"keep\" is no count of words"},
        {R"({"time":1,"keep":18446744073709551615})", "\"keep\" is no count of words"},
        {R"({"time":1,"keep":0})", "\"words\" is missing"},
        {R"({"time":1,"keep":0,"words":{}})", "\"words\" is no list"},
        {R"({"time":1,"keep":0,"words":[1]})", "an entry of \"words\" is no object"},
        {R"({"time":1,"keep":0,"words":[{}]})", "\"word\" is missing"},
        {R"({"time":1,"keep":0,"words":[{"word":1}]})", "\"word\" is no text"},
        {R"({"time":1,"keep":0,"words":[{"word":"a"}]})", "\"start\" is missing"},
        {R"({"time":1,"keep":0,"words":[{"word":"a","start":2,"end":1}]})",
         "a word ends before it starts"},
        {R"({"time":1,"keep":0,"words":[]})", "\"final\" is missing"},
        {R"({"time":1,"keep":0,"words":[],"final":0})", "\"final\" is neither true nor false"},
    };
    for (const auto& [line, why] : cases) {
        EXPECT_EQ(whyBroken(line), why) << line;
    }
}

TEST(WordsFile, DeepNestingIsNoDanger) {
    EXPECT_EQ(whyBroken(std::string(200'000, '[')), "the line is no JSON");
}

}  // namespace
}  // namespace Varnelle

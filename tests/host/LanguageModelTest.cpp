#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sphinxbase/err.h>
#include <sphinxbase/ngram_model.h>

#include "host/LanguageModel.h"
#include "host/MemoryFile.h"
#include "tests/support/Properties.h"

namespace Varnelle {
namespace {

using Words = std::vector<std::string_view>;

constexpr double tolerance = 1e-12;

// One wording for each word.
std::vector<Wording> inOrder(const Words& words) {
    std::vector<Wording> wordings;
    for (std::size_t token = 0; token < words.size(); ++token)
        wordings.push_back({static_cast<std::int64_t>(token), 1, std::string(words[token])});
    return wordings;
}

LanguageModel modelOf(const Words& words, const std::vector<CommonWord>& background = {},
                      double backgroundMass = 0) {
    return {static_cast<std::int64_t>(words.size()), inOrder(words), background, backgroundMass};
}

double probability(const LanguageModel& model, const Words& history, std::string_view word) {
    return model.probability(history, word);
}

// Every history of up to two words, also those that the script never has.
std::vector<Words> histories(const LanguageModel& model) {
    std::vector<Words> all = {{}};
    for (const std::string& one : model.words()) {
        all.push_back({one});
        for (const std::string& other : model.words())
            all.push_back({one, other});
    }
    return all;
}

double sumAfter(const LanguageModel& model, const Words& history) {
    double sum = 0;
    for (const std::string& word : model.words())
        sum += model.probability(history, word);
    return sum;
}

const std::vector<CommonWord> commonWords = {
    {"the", 0.04}, {"a", 0.02}, {"promise", 0.0001}, {"lamp", 0.0001}, {"</s>", 0.07}};

TEST(LanguageModel, CountsAsWittenAndBellDo) {
    // a b a c, then the end: five words in all.
    const LanguageModel model = modelOf({"a", "b", "a", "c"});
    struct Case {
        Words history;
        const char* word;
        double probability;
    };
    const Case cases[] = {
        {{}, "a", 2.0 / 5},
        {{}, "b", 1.0 / 5},
        {{}, "</s>", 1.0 / 5},
        {{}, "<s>", 0},
        {{"a"}, "b", (1 + 2 * 0.2) / 4},  // two followed it, both different
        {{"a"}, "a", 2.0 / 4 * 0.4},
        {{"b"}, "a", (1 + 0.4) / 2},
        {{"<s>"}, "a", (1 + 0.4) / 2},
        {{"b", "a"}, "c", (1 + 0.35) / 2},
        {{"b", "a"}, "b", 0.5 * 0.35},
        {{"<s>", "a"}, "b", (1 + 0.35) / 2},
        {{"c", "a"}, "b", 0.35},  // never seen: as after "a" alone
        {{"c"}, "</s>", (1 + 0.2) / 2},
        {{"unknown"}, "b", 1.0 / 5},
        {{"unknown", "a"}, "b", 0.35},
        {{"b", "unknown"}, "b", 1.0 / 5},
        {{"unknown", "b", "a"}, "c", 0.675},
        {{"a"}, "unknown", 0},
    };
    for (const auto& [history, word, expected] : cases) {
        SCOPED_TRACE(::testing::PrintToString(history) + ' ' + word);
        EXPECT_NEAR(model.probability(history, word), expected, tolerance);
    }
}

TEST(LanguageModel, ProbabilitiesAfterEveryHistorySumToOne) {
    const LanguageModel model =
        modelOf({"a", "promise", "is", "a", "promise", "and", "a", "lamp", "is", "a", "lamp"},
                commonWords, 0.5);
    for (const Words& history : histories(model)) {
        SCOPED_TRACE(::testing::PrintToString(history));
        EXPECT_NEAR(sumAfter(model, history), 1, tolerance);
    }
}

TEST(LanguageModel, AnyWordingsMakeADistribution) {
    PrompterCore::Tests::forAll(
        [] {
            const auto tokenCount = *rc::gen::inRange<std::int64_t>(0, 12);
            std::vector<Wording> wordings;
            for (std::int64_t token = 0; token < tokenCount; ++token) {
                for (int ways = *rc::gen::inRange(0, 3); ways > 0; --ways) {
                    const auto count = *rc::gen::inRange<std::int64_t>(
                        1, std::min<std::int64_t>(3, tokenCount - token) + 1);
                    wordings.push_back(
                        {token, count, *rc::gen::element<std::string>("a", "b", "c")});
                }
            }
            const double mass = *rc::gen::element(0.0, 0.25, 0.5, 1.0);
            const LanguageModel model(tokenCount, wordings, commonWords, mass);
            for (const Words& history : histories(model))
                RC_ASSERT(std::abs(sumAfter(model, history) - 1) < 1e-9);
        },
        60);
}

TEST(LanguageModel, TheScriptsNextWordIsExpectedMost) {
    const LanguageModel model = modelOf({"light", "is", "a", "promise"}, commonWords, 0.5);
    const double next = probability(model, {"is", "a"}, "promise");
    for (const std::string& word : model.words()) {
        if (word != "promise") {
            EXPECT_GT(next, 4 * probability(model, {"is", "a"}, word)) << word;
        }
    }
}

TEST(LanguageModel, EveryWordIsPossibleAfterEveryOther) {
    const LanguageModel model = modelOf({"light", "is", "a", "promise"}, commonWords, 0.5);
    for (const Words& history : histories(model)) {
        for (const std::string& word : model.words()) {
            if (word != "<s>") {
                EXPECT_GT(model.probability(history, word), 0) << word;
            }
        }
    }
}

TEST(LanguageModel, TheBackgroundHasItsShareOfTheGround) {
    const LanguageModel model = modelOf({"x", "y", "z"}, {{"the", 0.03}, {"a", 0.01}}, 0.5);
    EXPECT_NEAR(probability(model, {}, "the"), 0.5 * 0.75, tolerance);
    EXPECT_NEAR(probability(model, {}, "a"), 0.5 * 0.25, tolerance);
    EXPECT_NEAR(probability(model, {}, "x"), 0.5 / 4, tolerance);
}

TEST(LanguageModel, AnEmptyScriptLeavesTheBackgroundAlone) {
    const LanguageModel model({}, {}, commonWords, 0.5);
    EXPECT_EQ(model.words(),
              (std::vector<std::string>{"<s>", "</s>", "the", "a", "promise", "lamp"}));
    EXPECT_NEAR(probability(model, {}, "the"), 0.04 / 0.1302, tolerance);
    EXPECT_NEAR(probability(model, {"<s>"}, "the"), 0.04 / 0.1302, 0.5);
}

TEST(LanguageModel, AContractionStandsInThePlaceOfItsTokens) {
    // you do not drop
    const std::vector<Wording> wordings = {
        {0, 1, "you"}, {1, 1, "do"}, {1, 2, "don't"}, {2, 1, "not"}, {3, 1, "drop"}};
    const LanguageModel model(4, wordings, {}, 0);
    EXPECT_GT(probability(model, {"you"}, "don't"), 0.3);
    EXPECT_GT(probability(model, {"you"}, "do"), 0.3);
    EXPECT_GT(probability(model, {"you", "don't"}, "drop"), 0.6);
    EXPECT_GT(probability(model, {"do", "not"}, "drop"), 0.6);
    EXPECT_LT(probability(model, {"don't"}, "not"), 0.15);
}

TEST(LanguageModel, WhatStandsAroundATokenLeftOutIsNotJoined) {
    const std::vector<Wording> wordings = {{0, 1, "a"}, {2, 1, "b"}, {3, 1, "c"}};
    const LanguageModel model(4, wordings, {}, 0);
    EXPECT_NEAR(probability(model, {"a"}, "b"), 1.0 / 4, tolerance);
    EXPECT_NEAR(probability(model, {"b"}, "c"), (1 + 1.0 / 4) / 2, tolerance);
}

TEST(LanguageModel, WordsStandOnceInTheOrderTheyComeIn) {
    EXPECT_EQ(modelOf({"b", "a", "b"}, commonWords, 0.5).words(),
              (std::vector<std::string>{"<s>", "</s>", "b", "a", "the", "promise", "lamp"}));
}

TEST(LanguageModel, TheDecodersLibraryReadsTheSameModel) {
    err_set_logfp(nullptr);
    const LanguageModel model =
        modelOf({"a", "promise", "is", "a", "promise", "and", "a", "lamp", "is", "a", "lamp"},
                commonWords, 0.5);
    const MemoryFile file(model.arpa());
    const std::unique_ptr<logmath_t, int (*)(logmath_t*)> logarithms(logmath_init(1.0001, 0, 0),
                                                                     logmath_free);
    const std::unique_ptr<ngram_model_t, int (*)(ngram_model_t*)> read(
        ngram_model_read(nullptr, file.path().c_str(), NGRAM_AUTO, logarithms.get()),
        ngram_model_free);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(ngram_model_get_size(read.get()), 3);

    for (const Words& history : histories(model)) {
        std::vector<std::int32_t> newestFirst;
        for (auto word = history.rbegin(); word != history.rend(); ++word)
            newestFirst.push_back(ngram_wid(read.get(), std::string(*word).c_str()));
        for (const std::string& word : model.words()) {
            if (word == "<s>") continue;
            SCOPED_TRACE(::testing::PrintToString(history) + ' ' + word);
            std::int32_t used = 0;
            const int score =
                ngram_ng_prob(read.get(), ngram_wid(read.get(), word.c_str()), newestFirst.data(),
                              static_cast<std::int32_t>(newestFirst.size()), &used);
            const double expected = model.probability(history, word);
            EXPECT_NEAR(logmath_exp(logarithms.get(), score) / expected, 1, 1e-3);
        }
    }
}

TEST(LanguageModelDeathTest, AWordingLiesInTheScript) {
    const auto rule = "a wording's tokens lie in the script";
    const auto build = [](std::int64_t token, std::int64_t count) {
        const std::vector<Wording> wordings = {{token, count, "a"}};
        LanguageModel(2, wordings, {}, 0);
    };
    EXPECT_DEATH(build(-1, 1), rule);
    EXPECT_DEATH(build(2, 1), rule);
    EXPECT_DEATH(build(1, 2), rule);
    EXPECT_DEATH(build(0, 0), rule);
    EXPECT_DEATH(build(1, INT64_MAX), rule);
}

TEST(LanguageModelDeathTest, AMassLiesBetweenNoneAndAll) {
    EXPECT_DEATH(modelOf({"a"}, commonWords, -0.1), "a mass lies between 0 and 1");
    EXPECT_DEATH(modelOf({"a"}, commonWords, 1.1), "a mass lies between 0 and 1");
    EXPECT_DEATH(modelOf({"a"}, commonWords, std::nan("")), "a mass lies between 0 and 1");
}

}  // namespace
}  // namespace Varnelle

#include <concepts>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/HeardWords.h"

namespace Varnelle {
namespace {

static_assert(std::copyable<HeardWords> && std::equality_comparable<HeardWords>);
static_assert(std::copyable<WordsUpdate> && std::equality_comparable<WordsUpdate>);

WordsUpdate update(std::int64_t keep, const std::vector<const char*>& words) {
    WordsUpdate made{.time = 0, .keep = keep, .words = {}, .final = false};
    for (const char* word : words)
        made.words.push_back({word, 0, 0, {}});
    return made;
}

std::string textOf(const HeardWords& heard) {
    std::string text;
    for (const HeardWord& word : heard.words())
        text += word.word.utf8() + ' ';
    return text;
}

TEST(HeardWords, KeepsTheFirstWordsAndAppendsTheNewOnes) {
    struct Case {
        const char* what;
        WordsUpdate update;
        const char* words;
    };
    const Case cases[] = {
        {"appended", update(2, {"c"}), "a b c "},
        {"the last one replaced", update(1, {"c"}), "a c "},
        {"one replaced by two", update(1, {"c", "d"}), "a c d "},
        {"all replaced", update(0, {"c"}), "c "},
        {"the last one withdrawn", update(1, {}), "a "},
        {"all withdrawn", update(0, {}), ""},
        {"nothing changed", update(2, {}), "a b "},
        {"a negative number keeps none", update(-7, {"c"}), "c "},
        {"a number beyond the list keeps all", update(1000, {"c"}), "a b c "},
        {"the largest number keeps all", update(INT64_MAX, {"c"}), "a b c "},
    };
    for (const auto& [what, change, words] : cases) {
        SCOPED_TRACE(what);
        HeardWords heard;
        heard.apply(update(0, {"a", "b"}));
        heard.apply(change);
        EXPECT_EQ(textOf(heard), words);
    }
}

TEST(HeardWords, HoldNothingBeforeTheFirstUpdate) {
    EXPECT_TRUE(HeardWords().words().empty());
    HeardWords heard;
    heard.apply(update(3, {}));
    EXPECT_EQ(heard, HeardWords());
}

TEST(HeardWords, KeepTimesAndConfidenceAsTheyCome) {
    const HeardWord word{.word = "a", .start = 2, .end = 1, .confidence = 0.5};
    HeardWords heard;
    heard.apply({.time = 3, .keep = 0, .words = {word}, .final = true});
    EXPECT_EQ(heard.words(), std::vector{word});
}

}  // namespace
}  // namespace Varnelle

#include <concepts>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "PrompterCore/script/Contractions.h"
#include "tests/reference/PlainNumbers.h"
#include "tests/script/Built.h"
#include "tests/support/AllocationCounter.h"

namespace PrompterCore {

static_assert(std::copyable<Contraction> && std::equality_comparable<Contraction>);

namespace {

struct Case {
    const char* written;
    const char* key;
    const char* words;
};

constexpr Case cases[] = {
    {"can't", "cant", "cannot"},
    {"won't", "wont", "will not"},
    {"don't", "dont", "do not"},
    {"isn't", "isnt", "is not"},
    {"aren't", "arent", "are not"},
    {"wasn't", "wasnt", "was not"},
    {"weren't", "werent", "were not"},
    {"hasn't", "hasnt", "has not"},
    {"haven't", "havent", "have not"},
    {"didn't", "didnt", "did not"},
    {"doesn't", "doesnt", "does not"},
    {"couldn't", "couldnt", "could not"},
    {"wouldn't", "wouldnt", "would not"},
    {"shouldn't", "shouldnt", "should not"},
    {"it's", "its", "it is"},
    {"I'm", "im", "i am"},
    {"I've", "ive", "i have"},
    {"I'll", "ill", "i will"},
    {"I'd", "id", "i would"},
    {"you're", "youre", "you are"},
    {"you've", "youve", "you have"},
    {"they're", "theyre", "they are"},
    {"we're", "were", "we are"},
    {"that's", "thats", "that is"},
    {"there's", "theres", "there is"},
    {"what's", "whats", "what is"},
    {"let's", "lets", "let us"},
    {"he's", "hes", "he is"},
    {"she's", "shes", "she is"},
    {"we've", "weve", "we have"},
    {"we'd", "wed", "we would"},
};

}  // namespace

TEST(Contractions, All31ExpandWithAndWithoutTheirApostrophe) {
    static_assert(std::size(cases) == 31);
    for (const auto& [written, key, words] : cases) {
        SCOPED_TRACE(written);
        EXPECT_EQ(Tests::spoken(written), Plain::split(words));
        EXPECT_EQ(Tests::spoken(key), Plain::split(words));
        std::string curly = written;
        curly.replace(curly.find('\''), 1, "\u2019");
        EXPECT_EQ(Tests::spoken("\u201C" + curly + ",\u201D"), Plain::split(words));
    }
}

TEST(Contractions, ThereAreNoOthers) {
    std::set<std::string> keys;
    for (const Case& one : cases)
        keys.insert(one.key);
    EXPECT_EQ(contractions().size(), 31u);
    for (const Contraction& contraction : contractions())
        EXPECT_EQ(keys.count(std::string(contraction.key)), 1u) << contraction.key;
    for (const char* word : {"youll", "theyve", "shell", "hell", "mustnt", "shant", "aint"})
        EXPECT_EQ(Tests::spoken(word), Tests::Strings{word});
}

TEST(Contractions, AreFoundByTheirWholeKeyOnly) {
    for (const Contraction& contraction : contractions()) {
        EXPECT_EQ(contractionFor(contraction.key), contraction);
        EXPECT_EQ(contractionFor(std::string(contraction.key) + "x"), std::nullopt);
        EXPECT_EQ(contractionFor(contraction.key.substr(0, contraction.key.size() - 1)),
                  std::nullopt)
            << contraction.key;
    }
    for (const char* none : {"", "a", "zzz", "Dont", "don't", "\u00E9", "{", "`"})
        EXPECT_EQ(contractionFor(none), std::nullopt) << none;
    EXPECT_EQ(Tests::allocationsDuring([] { static_cast<void>(contractionFor("shouldnt")); }), 0);
}

}  // namespace PrompterCore

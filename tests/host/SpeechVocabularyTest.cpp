#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/script/SpokenForms.h"
#include "host/SpeechVocabulary.h"

namespace Varnelle {
namespace {

using PrompterCore::Text;

const Pronouncer nobody{.program = "no-such-program-here"};

constexpr std::string_view dictionary =
    "a AH\n"
    "a(2) EY\n"
    "a.m. EY EH M\n"
    "am AE M\n"
    "are AA R\n"
    "cannot K AE N AA T\n"
    "can't K AE N T\n"
    "do D UW\n"
    "don't D OW N T\n"
    "don't(2) D OW N\n"
    "it IH T\n"
    "it's IH T S\n"
    "its IH T S\n"
    "is IH Z\n"
    "kept K EH P T\n"
    "not N AA T\n"
    "well W EH L\n"
    "we'll W IY L\n"
    "we W IY\n"
    "well-kept W EH L K EH P T\n"
    "were W ER\n";

SpeechVocabulary vocabularyOf(std::string_view script, std::vector<std::string> common = {}) {
    std::vector<Text> tokens;
    while (!script.empty()) {
        const std::size_t end = std::min(script.find(' '), script.size());
        PrompterCore::appendSpokenForms(script.substr(0, end), tokens);
        script.remove_prefix(std::min(end + 1, script.size()));
    }
    std::vector<CommonWord> words;
    for (const std::string& word : common)
        words.push_back({word, 0.01});
    return speechVocabulary(tokens, dictionary, words, nobody);
}

TEST(SpeechVocabulary, HoldsTheScriptsWordsWithAllTheirPronunciations) {
    const auto vocabulary = vocabularyOf("a kept");
    EXPECT_EQ(vocabulary.wordings, (std::vector<Wording>{{0, 1, "a"}, {1, 1, "kept"}}));
    EXPECT_EQ(vocabulary.dictionary, "a AH\na(2) EY\nkept K EH P T\n");
}

TEST(SpeechVocabulary, SeveralTokensMayBeOneWord) {
    EXPECT_EQ(vocabularyOf("Don't").wordings,
              (std::vector<Wording>{{0, 1, "do"}, {0, 2, "don't"}, {1, 1, "not"}}));
    EXPECT_EQ(vocabularyOf("do not do").wordings,
              (std::vector<Wording>{{0, 1, "do"}, {0, 2, "don't"}, {1, 1, "not"}, {2, 1, "do"}}));
    EXPECT_EQ(vocabularyOf("Don't").dictionary,
              "do D UW\ndon't D OW N T\ndon't(2) D OW N\nnot N AA T\n");
}

TEST(SpeechVocabulary, PlainWordsAreContractionsOnlyWhenCommon) {
    EXPECT_EQ(vocabularyOf("it's", {"its"}).wordings,
              (std::vector<Wording>{{0, 1, "it"}, {0, 2, "it's"}, {0, 2, "its"}, {1, 1, "is"}}));
    EXPECT_EQ(vocabularyOf("were", {"were"}).wordings,
              (std::vector<Wording>{{0, 1, "we"}, {0, 2, "were"}, {1, 1, "are"}}));
}

TEST(SpeechVocabulary, ATokenSoundsLikeEveryWordThatItMayHaveBeen) {
    EXPECT_EQ(vocabularyOf("we'll").dictionary, "well W EH L\nwell(2) W IY L\n");
    EXPECT_EQ(vocabularyOf("9 a.m.").dictionary, "am EY EH M\nam(2) AE M\n");
    EXPECT_EQ(vocabularyOf("can't").dictionary, "cannot K AE N AA T\ncannot(2) K AE N T\n");
    EXPECT_EQ(vocabularyOf("well-kept").dictionary, "kept K EH P T\nwell W EH L\nwell(2) W IY L\n");
}

TEST(SpeechVocabulary, WordsWithoutASoundAreLeftOut) {
    const auto vocabulary = vocabularyOf("a 東京 varnelle kept", {"it", "zzz", "</s>"});
    EXPECT_EQ(vocabulary.wordings, (std::vector<Wording>{{0, 1, "a"}, {3, 1, "kept"}}));
    EXPECT_EQ(vocabulary.background, (std::vector<CommonWord>{{"it", 0.01}, {"</s>", 0.01}}));
    EXPECT_EQ(vocabulary.dictionary, "a AH\na(2) EY\nit IH T\nkept K EH P T\n");
}

TEST(SpeechVocabulary, EverythingListenedForHasASound) {
    const auto vocabulary =
        vocabularyOf("we'll were it's don't a.m. varnelle", {"do", "its", "well-kept", "</s>"});
    const std::string lines = '\n' + vocabulary.dictionary;
    for (const Wording& wording : vocabulary.wordings)
        EXPECT_NE(lines.find('\n' + wording.word + ' '), std::string::npos) << wording.word;
    for (const CommonWord& word : vocabulary.background) {
        if (word.word != "</s>") {
            EXPECT_NE(lines.find('\n' + word.word + ' '), std::string::npos) << word.word;
        }
    }
}

TEST(SpeechVocabulary, UnknownWordsAreGuessed) {
    const std::vector<Text> tokens = {"varnelle", "東京", "varnelle"};
    const auto vocabulary = speechVocabulary(tokens, dictionary, {});
    EXPECT_EQ(vocabulary.wordings, (std::vector<Wording>{{0, 1, "varnelle"}, {2, 1, "varnelle"}}));
    EXPECT_EQ(vocabulary.dictionary, "varnelle V AA R N EH L\n");
}

TEST(SpeechVocabulary, AnEmptyScriptHasTheCommonWords) {
    const auto vocabulary = vocabularyOf("", {"do", "not"});
    EXPECT_TRUE(vocabulary.wordings.empty());
    EXPECT_EQ(vocabulary.dictionary, "do D UW\nnot N AA T\n");
    EXPECT_EQ(speechVocabulary({}, "", {}, nobody), SpeechVocabulary());
}

}  // namespace
}  // namespace Varnelle

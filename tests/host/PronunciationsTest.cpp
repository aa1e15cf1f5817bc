#include <algorithm>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/Pronunciations.h"
#include "host/SpeechModel.h"
#include "tests/host/EditDistance.h"
#include "tests/host/TemporaryFile.h"

namespace Varnelle {
namespace {

using Guesses = std::vector<std::optional<std::string>>;
using Tests::TemporaryFile;

std::vector<std::string> split(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> parts;
    for (std::string part; stream >> part;)
        parts.push_back(part);
    return parts;
}

// A program that does what the shell's `commands` say.
class Script {
public:
    explicit Script(const std::string& commands) : file_("#!/bin/sh\n" + commands) {
        EXPECT_EQ(chmod(file_.name().c_str(), 0700), 0);
    }
    Pronouncer pronouncer() const { return {file_.name(), std::chrono::milliseconds(300)}; }

private:
    TemporaryFile file_;
};

Guesses guess(const std::vector<std::string>& words, const Pronouncer& pronouncer = {}) {
    return guessedPronunciations(words, pronouncer);
}

TEST(Pronunciations, MnemonicsBecomePhones) {
    const std::pair<const char*, const char*> cases[] = {
        {"h @ l 'oU", "HH AH L OW"},
        {"w '3: l d", "W ER L D"},
        {"f 'o@  k 'eI", "F AO R K EY"},             // two words
        {",eI tS t ,i: ; ,E m", "EY CH T IY EH M"},  // spelled out
        {"k 'O@ r i 'oU", "K AO R IY OW"},           // one R, not two
        {"'ai 3 r I", ""},                           // no such vowel
        {"f 'aI 3 r I N", "F AY ER IH NG"},          // none after ER
        {"r 'E r @", "R EH R AH"},
        {"(fr) b O: n (en) Z 'U@", "B AO N ZH UH R"},
        {"b '@ ?  n-", "B AH T AH N"},
        {"_: %n =oU", "N OW"},
        {"s t\\ r", ""},
        {"", ""},
        {"_ ;", ""},
        {"' ,", ""},
    };
    for (const auto& [mnemonics, phones] : cases) {
        SCOPED_TRACE(mnemonics);
        EXPECT_EQ(arpabetOf(mnemonics).value_or(""), phones);
    }
}

TEST(Pronunciations, EveryMnemonicOfTheVoiceHasPhonesThatTheModelKnows) {
    // What its phoneme table for American English holds, with what that inherits.
    constexpr std::string_view vowels =
        "@ a i 3 I2 @2 U a# aa A: E I I# I2# 0 02 O2 V A@ A# 3: i: O: O O@ o@ u: aU oU aI eI OI e@ "
        "i@ i@3 U@ aI@ aI3 aU@ @5 @L a2 E# E2 0# oU# IR VR o: A~ O~ e: e# a#2 @# @- e o u m- n- N- "
        "l- i::";
    constexpr std::string_view consonants =
        "? t t2 d# p k t[ tS tS; c q t# * b d d[ dZ dZ; J g r/ r- l r R R2 R3 l/ j w l/2 l/3 l^ l. "
        "L/ L ** r. n m n. n^ N z# w# h f T s S s. s; S; C x l# X z/2 r\" B v v# D z Z z. z; Z; J^ "
        "Q Q^ Q\"";
    constexpr std::string_view silent = "; _ _: _:: _! _| _;_ _^_ | || : -";
    std::set<std::string> known;
    forEachPronunciation(SpeechModel(speechModelFolder()).dictionary(),
                         [&known](std::string_view, std::string_view phones) {
                             for (const std::string& phone : split(phones))
                                 known.insert(phone);
                         });
    EXPECT_EQ(known.size(), 39U);
    for (const std::string& mnemonic : split(std::string(vowels) + ' ' + std::string(consonants))) {
        SCOPED_TRACE(mnemonic);
        for (const std::string& marked : {mnemonic, "'" + mnemonic, "," + mnemonic}) {
            const auto phones = arpabetOf(marked);
            ASSERT_TRUE(phones);
            for (const std::string& phone : split(*phones))
                EXPECT_TRUE(known.contains(phone));
        }
    }
    for (const std::string& mnemonic : split(silent))
        EXPECT_EQ(arpabetOf("n " + mnemonic + " oU"), "N OW") << mnemonic;
}

TEST(Pronunciations, DictionaryLinesComeInOrderWithoutTheirMarks) {
    std::vector<std::pair<std::string, std::string>> lines;
    forEachPronunciation("a AH\na's EY Z\na(2) EY\n\nnothing\nempty \n x\nlast L",
                         [&lines](std::string_view word, std::string_view phones) {
                             lines.emplace_back(word, phones);
                         });
    EXPECT_EQ(lines, (std::vector<std::pair<std::string, std::string>>{
                         {"a", "AH"}, {"a's", "EY Z"}, {"a", "EY"}, {"last", "L"}}));
}

TEST(Pronunciations, SpeakableIsWhatADictionaryCanHold) {
    for (const char* word : {"a", "promise", "o'clock", "4k", "mp3", "straße", "łódź", "ế", "Ærø"})
        EXPECT_TRUE(isSpeakable(word)) << word;
    EXPECT_TRUE(isSpeakable(std::string(40, 'a')));
    for (const char* word : {"", "東京", "a b", "a\nb", "a(2)", "<s>", "[noise]", "×", "½", "٣",
                             "при", "a\u0301", "\x01", "😀", "-"})
        EXPECT_FALSE(isSpeakable(word)) << word;
    EXPECT_FALSE(isSpeakable(std::string(41, 'a')));
    EXPECT_FALSE(isSpeakable(std::string_view("a\0b", 3)));
}

TEST(Pronunciations, GuessesKeepTheWordsOrder) {
    const Guesses guesses =
        guess({"kubernetes", "東京", "4k", "", "varnelle", std::string(100, 'a'), "html5"});
    EXPECT_EQ(guesses, (Guesses{"K Y UW B ER N IY T S", std::nullopt, "F AO R K EY", std::nullopt,
                                "V AA R N EH L", std::nullopt, "EY CH T IY EH M EH L F AY V"}));
}

TEST(Pronunciations, GuessesAgreeWithTheDictionary) {
    const SpeechModel model{speechModelFolder()};
    std::vector<std::string> words;
    for (const CommonWord& word : model.commonWords(150)) {
        if (isSpeakable(word.word)) words.push_back(word.word);
    }
    const std::string dictionary = model.dictionary();
    const Guesses guesses = guess(words);
    double phones = 0, wrong = 0;
    for (std::size_t word = 0; word < words.size(); ++word) {
        ASSERT_TRUE(guesses[word]) << words[word];
        std::optional<double> least;
        std::size_t length = 0;
        forEachPronunciation(dictionary, [&](std::string_view known, std::string_view sounds) {
            if (known != words[word]) return;
            const auto errors =
                static_cast<double>(Tests::editDistance(split(sounds), split(*guesses[word])));
            if (least && *least <= errors) return;
            least = errors;
            length = split(sounds).size();
        });
        phones += static_cast<double>(length);
        wrong += least.value_or(0);
    }
    EXPECT_GT(phones, 300);
    EXPECT_LT(wrong / phones, 0.1);
}

TEST(Pronunciations, WithoutTheProgramNothingIsGuessed) {
    EXPECT_EQ(guess({"varnelle", "kubernetes"}, {"no-such-program-here"}), Guesses(2));
    EXPECT_EQ(guess({}), Guesses());
    EXPECT_EQ(guess({"東京"}), Guesses(1));
}

TEST(Pronunciations, AnswersThatDoNotFitTheQuestionAreNotUsed) {
    struct Case {
        const char* what;
        const char* commands;
        Guesses guesses;
    };
    const Case cases[] = {
        {"a line a word", "echo 'n oU'; echo 'g oU'", {"N OW", "G OW"}},
        {"too few", "echo 'n oU'", Guesses(2)},
        {"too many", "echo 'n oU'; echo 'g oU'; echo 's oU'", Guesses(2)},
        {"not mnemonics", "echo 'n oU'; echo 'what is this'", {"N OW", std::nullopt}},
        {"nothing", "exit 0", Guesses(2)},
        {"a failure midway", "echo 'n oU'; exit 1", {"N OW", std::nullopt}},
        {"too slow for the second", "echo 'n oU'; exec sleep 60", {"N OW", std::nullopt}},
        {"half a line", "printf 'n oU\\ng'; exec sleep 60", {"N OW", std::nullopt}},
    };
    for (const auto& [what, commands, guesses] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(guess({"no", "go"}, Script(commands).pronouncer()), guesses);
    }
}

}  // namespace
}  // namespace Varnelle

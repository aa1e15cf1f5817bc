#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/SpokenForms.h"
#include "host/Failures.h"
#include "host/PocketSphinxRecogniser.h"
#include "host/TextFile.h"
#include "host/WordsFile.h"
#include "tests/host/EditDistance.h"
#include "tests/host/Sound.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

using PrompterCore::Text;

const std::string samplePath = VARNELLE_SAMPLE_DIRECTORY "/sample";

std::vector<Text> sampleTokens() {
    const PrompterCore::Script script(readText(samplePath + ".txt"));
    std::vector<Text> tokens;
    for (const auto& token : script.tokens())
        tokens.push_back(token.text);
    return tokens;
}

// The first `seconds` of the sample, or all of it.
std::vector<float> sampleSound(double seconds = 1000) {
    return Tests::recognisersSound(samplePath + ".flac", seconds);
}

// The words as they were spoken, with their true times.
std::vector<HeardWord> sampleWords() {
    HeardWords words;
    std::ifstream lines(samplePath + ".words.jsonl");
    for (std::string line; std::getline(lines, line);)
        words.apply(std::get<WordsUpdate>(wordsFromLine(line)));
    return words.words();
}

std::vector<WordsUpdate> updatesOf(Recogniser& recogniser, std::span<const float> sound,
                                   std::size_t chunk) {
    std::vector<WordsUpdate> updates;
    const auto take = [&updates](std::vector<WordsUpdate> more) {
        updates.insert(updates.end(), more.begin(), more.end());
    };
    for (; !sound.empty(); sound = sound.subspan(std::min(chunk, sound.size())))
        take(recogniser.hear(sound.first(std::min(chunk, sound.size()))));
    take(recogniser.finish());
    return updates;
}

HeardWords wordsAfter(const std::vector<WordsUpdate>& updates) {
    HeardWords words;
    for (const WordsUpdate& update : updates)
        words.apply(update);
    return words;
}

std::vector<Text> formsOf(const std::vector<HeardWord>& words) {
    std::vector<Text> forms;
    for (const HeardWord& word : words)
        PrompterCore::appendSpokenForms(word.word.utf8(), forms);
    return forms;
}

std::vector<WordsUpdate> hearSample(double seconds, std::size_t chunk,
                                    const PocketSphinxSettings& settings = {}) {
    PocketSphinxRecogniser recogniser(sampleTokens(), settings);
    return updatesOf(recogniser, sampleSound(seconds), chunk);
}

// The whole sample, heard once for all tests that look at it.
const std::vector<WordsUpdate>& sampleUpdates() {
    static const std::vector<WordsUpdate> updates = hearSample(1000, 800);
    return updates;
}

TEST(PocketSphinxRecogniser, HearsFewerThanTenWordsInAHundredWrong) {
    const std::vector<Text> spoken = formsOf(sampleWords());
    const std::vector<Text> heard = formsOf(wordsAfter(sampleUpdates()).words());
    const auto wrong = static_cast<double>(Tests::editDistance(spoken, heard));
    RecordProperty("wordErrors", std::to_string(wrong / static_cast<double>(spoken.size())));
    EXPECT_GT(spoken.size(), 150U);
    EXPECT_LT(wrong / static_cast<double>(spoken.size()), 0.1);
}

TEST(PocketSphinxRecogniser, WordsEndWhereTheyEndInTheSound) {
    const std::vector<HeardWord> heard = wordsAfter(sampleUpdates()).words();
    const std::vector<HeardWord> spoken = sampleWords();
    std::size_t right = 0;
    for (const HeardWord& word : spoken) {
        right += static_cast<std::size_t>(std::ranges::any_of(heard, [&](const HeardWord& other) {
            return formsOf({other}) == formsOf({word}) && std::abs(other.end - word.end) < 0.2;
        }));
    }
    EXPECT_GT(right, spoken.size() * 9 / 10);
}

TEST(PocketSphinxRecogniser, WordsAreHeardSoonAfterTheirEnd) {
    std::vector<double> delays;
    const std::vector<HeardWord> spoken = sampleWords();
    for (const HeardWord& word : spoken) {
        const auto first = std::ranges::find_if(sampleUpdates(), [&](const WordsUpdate& update) {
            return std::ranges::any_of(update.words, [&](const HeardWord& other) {
                return formsOf({other}) == formsOf({word}) &&
                       std::abs(other.start - word.start) < 0.3;
            });
        });
        if (first != sampleUpdates().end()) delays.push_back(first->time - word.end);
    }
    ASSERT_GT(delays.size(), spoken.size() * 9 / 10);
    std::ranges::sort(delays);
    EXPECT_LT(delays[delays.size() / 2], 0.1);
    EXPECT_LT(delays[delays.size() * 9 / 10], 0.2);
}

TEST(PocketSphinxRecogniser, WordsHoldNoMarksOfTheLibrary) {
    for (const WordsUpdate& update : sampleUpdates()) {
        for (const HeardWord& word : update.words) {
            EXPECT_EQ(word.word.utf8().find_first_of("<>[]()+"), std::string::npos)
                << word.word.utf8();
            EXPECT_FALSE(word.word.isEmpty());
            EXPECT_FALSE(word.confidence);
        }
    }
}

TEST(PocketSphinxRecogniser, EveryUpdateChangesTheWords) {
    HeardWords heard;
    double time = 0;
    ASSERT_FALSE(sampleUpdates().empty());
    for (const WordsUpdate& update : sampleUpdates()) {
        SCOPED_TRACE(update.time);
        EXPECT_GT(update.time, time);
        time = update.time;
        EXPECT_GE(update.keep, 0);
        EXPECT_LE(update.keep, std::ssize(heard.words()));
        const HeardWords before = heard;
        heard.apply(update);
        EXPECT_EQ(update.final, &update == &sampleUpdates().back());
        EXPECT_TRUE(update.final || heard != before);
        for (const HeardWord& word : update.words) {
            EXPECT_LT(word.start, word.end);
            EXPECT_LE(word.end, update.time + 0.02);
        }
    }
    const auto& words = heard.words();
    EXPECT_TRUE(std::ranges::is_sorted(words, {}, &HeardWord::start));
    EXPECT_LT(sampleUpdates().size(), 62U * 8);
}

TEST(PocketSphinxRecogniser, TheCutOfTheSoundChangesNothing) {
    const auto updates = hearSample(8, 960);
    EXPECT_GT(wordsAfter(updates).words().size(), 15U);
    for (const std::size_t chunk : {std::size_t{1}, std::size_t{777}, std::size_t{1'000'000}}) {
        SCOPED_TRACE(chunk);
        EXPECT_EQ(hearSample(8, chunk), updates);
    }
}

TEST(PocketSphinxRecogniser, WordsAreSettledAtPauses) {
    PocketSphinxSettings settings;
    settings.settleAfter = 8;
    std::int64_t settled = 0;
    int finals = 0;
    HeardWords heard;
    for (const WordsUpdate& update : hearSample(22, 800, settings)) {
        EXPECT_GE(update.keep, settled);
        heard.apply(update);
        if (!update.final) continue;
        settled = std::ssize(heard.words());
        ++finals;
    }
    EXPECT_GE(finals, 2);  // one at a pause, one at the end
    ASSERT_GT(heard.words().size(), 50U);
    // But for the last word, which may be cut off, it is what is heard without settling.
    for (std::size_t word = 0; word + 1 < heard.words().size(); ++word) {
        const HeardWord undisturbed = wordsAfter(sampleUpdates()).words()[word];
        EXPECT_EQ(heard.words()[word].word, undisturbed.word);
        EXPECT_NEAR(heard.words()[word].start, undisturbed.start, 0.1);
    }
}

TEST(PocketSphinxRecogniser, WithoutAPauseWordsAreSettledAnyway) {
    PocketSphinxSettings settings;
    settings.settleAfter = 1000;
    settings.settleAnyway = 3;
    const auto updates = hearSample(8, 800, settings);
    EXPECT_EQ(std::ranges::count(updates, true, &WordsUpdate::final), 3);
    EXPECT_TRUE(std::ranges::is_sorted(wordsAfter(updates).words(), {}, &HeardWord::start));
}

TEST(PocketSphinxRecogniser, ContractionsAreHeardAsTheyAreSaid) {
    const auto words = wordsAfter(sampleUpdates()).words();
    EXPECT_TRUE(std::ranges::any_of(
        words, [](const HeardWord& word) { return word.word == Text("won't"); }));
}

TEST(PocketSphinxRecogniser, SilenceHoldsNoWords) {
    PocketSphinxRecogniser recogniser(sampleTokens());
    const std::vector<float> silence(5 * recogniserRate, 0.0F);
    EXPECT_EQ(updatesOf(recogniser, silence, 800),
              (std::vector<WordsUpdate>{{.time = 5, .keep = 0, .words = {}, .final = true}}));
}

TEST(PocketSphinxRecogniser, SpeechIsHeardAfterALongSilence) {
    std::vector<float> sound(10 * recogniserRate, 0.0F);
    const std::vector<float> speech = sampleSound(8);
    sound.insert(sound.end(), speech.begin(), speech.end());
    PocketSphinxRecogniser recogniser(sampleTokens());
    const auto words = wordsAfter(updatesOf(recogniser, sound, 800)).words();
    const auto alone = wordsAfter(hearSample(8, 800)).words();
    EXPECT_LE(Tests::editDistance(formsOf(words), formsOf(alone)), 1U);
    ASSERT_FALSE(words.empty());
    EXPECT_NEAR(words.back().start, alone.back().start + 10, 0.1);
}

TEST(PocketSphinxRecogniser, AnySamplesAreTaken) {
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    std::mt19937 random(7);
    std::vector<float> noise(3 * recogniserRate);
    for (float& sample : noise) {
        sample = static_cast<float>(random()) / static_cast<float>(std::mt19937::max()) * 2 - 1;
    }
    std::vector<float> broken = sampleSound(3);
    for (std::size_t i = 0; i < broken.size(); i += 7)
        broken[i] = notANumber;
    std::vector<float> zeroed = broken;
    for (float& sample : zeroed)
        sample = std::isnan(sample) ? 0 : sample;
    std::vector<float> loud = sampleSound(3);
    std::vector<float> clipped = loud;
    for (std::size_t i = 0; i < loud.size(); ++i) {
        loud[i] = loud[i] > 0.1F ? infinite : loud[i] < -0.1F ? -5 : loud[i];
        clipped[i] = std::abs(clipped[i]) > 0.1F ? std::copysign(1.0F, clipped[i]) : clipped[i];
    }
    const auto heard = [](const std::vector<float>& sound) {
        PocketSphinxRecogniser recogniser(sampleTokens());
        return updatesOf(recogniser, sound, 800);
    };
    EXPECT_TRUE(heard(noise).back().final);
    EXPECT_EQ(heard(broken), heard(zeroed));
    EXPECT_EQ(heard(loud), heard(clipped));
}

TEST(PocketSphinxRecogniser, AnEmptySoundEndsAtOnce) {
    for (const std::size_t samples : {std::size_t{0}, std::size_t{1}, std::size_t{500}}) {
        SCOPED_TRACE(samples);
        PocketSphinxRecogniser recogniser(sampleTokens());
        EXPECT_TRUE(recogniser.hear({}).empty());
        const auto updates = updatesOf(recogniser, std::vector<float>(samples), 800);
        EXPECT_EQ(updates,
                  (std::vector<WordsUpdate>{{.time = static_cast<double>(samples) / recogniserRate,
                                             .keep = 0,
                                             .words = {},
                                             .final = true}}));
    }
}

TEST(PocketSphinxRecogniser, NothingIsHeardBehindTheEnd) {
    PocketSphinxRecogniser recogniser(sampleTokens());
    EXPECT_EQ(recogniser.finish().size(), 1U);
    EXPECT_TRUE(recogniser.hear(sampleSound(3)).empty());
    EXPECT_TRUE(recogniser.finish().empty());
}

TEST(PocketSphinxRecogniser, WithoutAScriptCommonWordsAreHeard) {
    PocketSphinxRecogniser recogniser({});
    const auto words = wordsAfter(updatesOf(recogniser, sampleSound(8), 800)).words();
    EXPECT_GT(words.size(), 10U);
    EXPECT_TRUE(std::ranges::any_of(
        words, [](const HeardWord& word) { return word.word == Text("small"); }));
}

TEST(PocketSphinxRecogniser, WithoutCommonWordsTheScriptIsHeard) {
    constexpr double firstSentence = 6.9;  // seconds
    PocketSphinxSettings settings;
    settings.commonWordCount = 0;
    const auto heard = formsOf(wordsAfter(hearSample(firstSentence, 800, settings)).words());
    EXPECT_GT(heard.size(), 15U);
    EXPECT_EQ(heard, formsOf(wordsAfter(hearSample(firstSentence, 800)).words()));
}

TEST(PocketSphinxRecogniser, AScriptMayHoldAnything) {
    std::vector<Text> tokens = sampleTokens();
    for (const std::string& odd :
         {std::string("東京"), std::string("😀"), std::string("a b\nc"), std::string(),
          std::string(100'000, 'a'), std::string("<s>"), std::string("</s>"), std::string("<sil>"),
          std::string("[NOISE]"), std::string("word(2)"), std::string("nul\0", 4), std::string("½"),
          std::string("varnelle"), std::string("łódź"), std::string("-")}) {
        tokens.insert(tokens.begin() + 3, Text(odd));
        tokens.emplace_back(odd);
    }
    PocketSphinxRecogniser recogniser(tokens);
    EXPECT_GT(wordsAfter(updatesOf(recogniser, sampleSound(8), 800)).words().size(), 15U);

    const std::vector<Text> nothingSpeakable = {"東京", "½"};
    PocketSphinxRecogniser other(nothingSpeakable);
    EXPECT_TRUE(updatesOf(other, sampleSound(1), 800).back().final);
}

TEST(PocketSphinxRecogniser, WithoutThePronouncerUnknownWordsAreNotHeard) {
    std::vector<Text> tokens = sampleTokens();
    tokens.emplace_back("varnelle");
    PocketSphinxSettings settings;
    settings.pronouncer.program = "no-such-program-here";
    PocketSphinxRecogniser recogniser(tokens, settings);
    EXPECT_GT(wordsAfter(updatesOf(recogniser, sampleSound(8), 800)).words().size(), 15U);
}

TEST(PocketSphinxRecogniser, PrintsNothing) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    hearSample(3, 800);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

// The system's model, file by file, to take something away from.
class ModelCopy {
public:
    ModelCopy() : folder_(::testing::TempDir() + "varnelleXXXXXX") {
        std::string name = folder_.string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
        std::filesystem::create_directory(folder_ / "en-us");
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(speechModelFolder())) {
            const auto file = std::filesystem::relative(entry.path(), speechModelFolder());
            if (!entry.is_directory())
                std::filesystem::create_symlink(entry.path(), folder_ / file);
        }
    }
    ModelCopy(const ModelCopy&) = delete;
    ModelCopy& operator=(const ModelCopy&) = delete;
    ~ModelCopy() { std::filesystem::remove_all(folder_); }

    std::filesystem::path pathOf(const std::string& file) const { return folder_ / file; }
    void remove(const std::string& file) const { std::filesystem::remove(pathOf(file)); }
    void replace(const std::string& file, const std::string& content) const {
        remove(file);
        std::ofstream(pathOf(file), std::ios::binary) << content;
    }

    // What a recogniser says that is made from it.
    std::string failure() const {
        try {
            PocketSphinxSettings settings;
            settings.model = folder_;
            const PocketSphinxRecogniser recogniser({}, settings);
        } catch (const Unavailable& unavailable) {
            return unavailable.what();
        }
        return "";
    }

private:
    std::filesystem::path folder_;
};

TEST(SpeechModel, AMissingFileIsNamedWithItsPackage) {
    EXPECT_EQ(ModelCopy().failure(), "");
    for (const char* file :
         {"en-us/mdef", "en-us/means", "en-us/noisedict", "en-us.lm.bin", "cmudict-en-us.dict"}) {
        const ModelCopy model;
        model.remove(file);
        EXPECT_EQ(model.failure(),
                  "the English speech model's file " + model.pathOf(file).string() +
                      " cannot be read; on Debian: apt-get install pocketsphinx-en-us");
    }
}

TEST(SpeechModel, ABrokenFileIsASentenceToo) {
    for (const char* file : {"en-us/feat.params", "en-us.lm.bin", "cmudict-en-us.dict"}) {
        const ModelCopy model;
        model.replace(file, "");
        EXPECT_NE(model.failure().find("pocketsphinx-en-us"), std::string::npos) << file;
    }
}

TEST(SpeechModelDeathTest, AFileThatTheLibrariesCannotBearEndsWithASentence) {
    const ModelCopy model;
    model.replace("en-us/mdef", "half a file");
    EXPECT_EXIT((void)model.failure(), ::testing::ExitedWithCode(69),
                "^varnelle: the English speech model is broken; on Debian: apt-get install "
                "--reinstall pocketsphinx-en-us\n$");
}

TEST(SpeechModel, TheEnvironmentMayNameAnotherFolder) {
    const auto usual = speechModelFolder();
    setenv("VARNELLE_SPEECH_MODEL", "/elsewhere", 1);
    EXPECT_EQ(speechModelFolder(), "/elsewhere");
    setenv("VARNELLE_SPEECH_MODEL", "", 1);
    EXPECT_EQ(speechModelFolder(), usual);
    unsetenv("VARNELLE_SPEECH_MODEL");
    EXPECT_EQ(speechModelFolder(), usual);
}

TEST(SpeechModel, CommonWordsComeCommonestFirstAndTheEndBehindThem) {
    const SpeechModel model{speechModelFolder()};
    const auto words = model.commonWords(5000);
    ASSERT_EQ(words.size(), 5001U);
    EXPECT_EQ(words[0].word, "the");
    EXPECT_EQ(words[1].word, "to");
    EXPECT_EQ(words[2].word, "i");
    EXPECT_EQ(words.back().word, "</s>");
    EXPECT_NEAR(words[0].probability, 0.0408, 0.001);
    EXPECT_TRUE(std::ranges::is_sorted(words.begin(), words.end() - 1, std::ranges::greater(),
                                       &CommonWord::probability));
    EXPECT_EQ(model.commonWords(0).size(), 1U);
    const auto all = model.commonWords(1'000'000);
    EXPECT_GT(all.size(), 10'000U);
    EXPECT_EQ(all.back().word, "</s>");
}

}  // namespace
}  // namespace Varnelle

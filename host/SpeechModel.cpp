#include "host/SpeechModel.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include <sphinxbase/err.h>
#include <sphinxbase/ngram_model.h>

#include "PrompterCore/support/Require.h"
#include "host/Failures.h"

namespace Varnelle {
namespace {

constexpr const char* acousticFolderName = "en-us";
constexpr const char* wordsName = "en-us.lm.bin";
constexpr const char* dictionaryName = "cmudict-en-us.dict";

struct Free {
    void operator()(logmath_t* logarithms) const { logmath_free(logarithms); }
    void operator()(ngram_model_t* words) const { ngram_model_free(words); }
};

// The libraries tell their whole inner life on standard error; nobody needs it. They also end the
// program over a broken model, with a message of their own: that must not happen in silence.
void hearOnlyOfTheEnd(void*, err_lvl_t level, const char*, ...) {
    if (level != ERR_FATAL) return;
    std::fputs(
        "varnelle: the English speech model is broken; on Debian: apt-get install "
        "--reinstall pocketsphinx-en-us\n",
        stderr);
    std::_Exit(69);
}

[[noreturn]] void failOn(const std::filesystem::path& file) {
    throw Unavailable("the English speech model's file " + file.string() +
                      " cannot be read; on Debian: apt-get install pocketsphinx-en-us");
}

}  // namespace

std::filesystem::path speechModelFolder() {
    const char* chosen = std::getenv("VARNELLE_SPEECH_MODEL");
    return chosen != nullptr && *chosen != '\0' ? chosen : VARNELLE_SPEECH_MODEL_FOLDER;
}

SpeechModel::SpeechModel(const std::filesystem::path& folder) : folder_(folder) {
    err_set_logfp(nullptr);
    err_set_callback(hearOnlyOfTheEnd, nullptr);
    // What the libraries end the program about when it is missing.
    for (const char* name : {"mdef", "means", "variances", "transition_matrices", "sendump",
                             "feat.params", "noisedict"}) {
        const auto path = folder_ / acousticFolderName / name;
        if (!std::ifstream(path) || std::filesystem::is_directory(path)) failOn(path);
    }
    for (const char* name : {wordsName, dictionaryName}) {
        if (!std::ifstream(folder_ / name)) failOn(folder_ / name);
    }
}

std::string SpeechModel::acousticFolder() const { return (folder_ / acousticFolderName).string(); }

std::string SpeechModel::dictionary() const {
    std::ifstream file(folder_ / dictionaryName, std::ios::binary);
    std::string lines{std::istreambuf_iterator<char>(file), {}};
    if (lines.empty()) failOn(folder_ / dictionaryName);
    return lines;
}

std::vector<CommonWord> SpeechModel::commonWords(std::int64_t count) const {
    PrompterCore::require(count >= 0, "a number of words is not negative");
    const std::unique_ptr<logmath_t, Free> logarithms(logmath_init(1.0001, 0, 0));
    const std::unique_ptr<ngram_model_t, Free> words(
        ngram_model_read(nullptr, (folder_ / wordsName).c_str(), NGRAM_BIN, logarithms.get()));
    if (!words) failOn(folder_ / wordsName);

    // Scores are logarithms; among equals the model's order decides.
    std::vector<std::pair<int, std::int32_t>> scores;
    CommonWord end{std::string(LanguageModel::sentenceEnd), 0};
    const auto known = static_cast<std::int32_t>(ngram_model_get_counts(words.get())[0]);
    for (std::int32_t id = 0; id < known; ++id) {
        std::int32_t used = 0;
        const int score = ngram_ng_prob(words.get(), id, nullptr, 0, &used);
        const std::string_view word = ngram_word(words.get(), id);
        if (word == end.word) {
            end.probability = logmath_exp(logarithms.get(), score);
        } else if (!word.starts_with('<')) {
            scores.emplace_back(-score, id);
        }
    }
    const auto last = scores.begin() + std::min(count, static_cast<std::int64_t>(scores.size()));
    std::partial_sort(scores.begin(), last, scores.end());

    std::vector<CommonWord> common;
    for (auto score = scores.begin(); score != last; ++score) {
        common.push_back(
            {ngram_word(words.get(), score->second), logmath_exp(logarithms.get(), -score->first)});
    }
    common.push_back(end);
    return common;
}

}  // namespace Varnelle

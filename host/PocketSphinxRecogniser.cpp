#include "host/PocketSphinxRecogniser.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <pocketsphinx.h>

#include "host/Failures.h"
#include "host/LanguageModel.h"
#include "host/MemoryFile.h"
#include "host/SpeechVocabulary.h"

namespace Varnelle {
namespace {

using PrompterCore::Text;

constexpr std::size_t chunkSize = 960;   // samples: 60 ms, six frames
constexpr double framesPerSecond = 100;  // of the decoder
constexpr double pause = 0.8;            // seconds without a word that end an utterance
constexpr double tolerance = 0.05;       // seconds that a published word may be off
constexpr double worthTelling = 0.15;    // seconds off that are published by themselves

std::int16_t toSixteenBits(float sample) {
    if (!(std::abs(sample) <= 1)) sample = std::isnan(sample) ? 0.0F : std::copysign(1.0F, sample);
    return static_cast<std::int16_t>(std::lround(sample * 32767));
}

// Silence and noise stand between the words in marks of their own.
bool isFiller(std::string_view word) {
    return word.starts_with('<') || word.starts_with('[') || word.starts_with("++");
}

struct IsSame {
    double tolerance;  // seconds

    bool operator()(const HeardWord& a, const HeardWord& b) const {
        return a.word == b.word && std::abs(a.start - b.start) < tolerance &&
               std::abs(a.end - b.end) < tolerance;
    }
};

}  // namespace

// The library's decoder and its configuration.
class PocketSphinxRecogniser::Decoder {
public:
    Decoder(const SpeechModel& model, std::string_view dictionary, std::string_view languageModel) {
        const MemoryFile dictionaryFile(dictionary);
        const MemoryFile languageFile(languageModel);
        configuration_ = cmd_ln_init(
            nullptr, ps_args(), TRUE,                //
            "-hmm", model.acousticFolder().c_str(),  //
            "-dict", dictionaryFile.path().c_str(),  //
            "-lm", languageFile.path().c_str(),      //
            "-remove_silence", "no",                 // times would drift with every pause
            "-fwdflat", "no", "-bestpath", "no",     // second passes change words after the fact
            "-pl_window", "0",                       // looking ahead costs 20 ms and saves little
            "-lw", "9.0",  // trust the script more than the default 6.5: half the errors in noise
            nullptr);
        decoder_ = configuration_ != nullptr ? ps_init(configuration_) : nullptr;
        if (decoder_ == nullptr) {
            cmd_ln_free_r(configuration_);
            throw Unavailable("the English speech model in " + model.acousticFolder() +
                              " cannot be used; on Debian: apt-get install --reinstall "
                              "pocketsphinx-en-us");
        }
        ps_start_stream(decoder_);
        ps_start_utt(decoder_);
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    ~Decoder() {
        ps_free(decoder_);
        cmd_ln_free_r(configuration_);
    }

    void hear(std::span<const std::int16_t> samples) {
        ps_process_raw(decoder_, samples.data(), samples.size(), FALSE, FALSE);
    }
    void endUtterance() { ps_end_utt(decoder_); }
    void startUtterance() { ps_start_utt(decoder_); }

    // The words of the utterance, which started at `start` seconds.
    std::vector<HeardWord> words(double start) const {
        std::vector<HeardWord> words;
        std::optional<int> origin;  // frames are counted from a place that the library chooses
        for (ps_seg_t* segment = ps_seg_iter(decoder_); segment != nullptr;
             segment = ps_seg_next(segment)) {
            int first = 0, last = 0;
            ps_seg_frames(segment, &first, &last);
            if (!origin) origin = first;
            const std::string_view word = ps_seg_word(segment);
            if (isFiller(word)) continue;
            words.push_back({.word = word.substr(0, word.find('(')),  // the pronunciation's number
                             .start = start + (first - *origin) / framesPerSecond,
                             .end = start + (last + 1 - *origin) / framesPerSecond,
                             .confidence = {}});
        }
        return words;
    }

private:
    cmd_ln_t* configuration_ = nullptr;
    ps_decoder_t* decoder_ = nullptr;
};

PocketSphinxRecogniser::PocketSphinxRecogniser(std::span<const Text> tokens,
                                               const PocketSphinxSettings& settings)
    : settleAfter_(settings.settleAfter), settleAnyway_(settings.settleAnyway) {
    const SpeechModel model(settings.model);
    const SpeechVocabulary vocabulary =
        speechVocabulary(tokens, model.dictionary(), model.commonWords(settings.commonWordCount),
                         settings.pronouncer);
    const LanguageModel language(static_cast<std::int64_t>(tokens.size()), vocabulary.wordings,
                                 vocabulary.background, settings.backgroundMass);
    decoder_ = std::make_unique<Decoder>(model, vocabulary.dictionary, language.arpa());
}

PocketSphinxRecogniser::~PocketSphinxRecogniser() = default;

std::vector<WordsUpdate> PocketSphinxRecogniser::hear(std::span<const float> samples) {
    std::vector<WordsUpdate> updates;
    if (finished_) return updates;
    for (const float sample : samples) {
        pending_.push_back(toSixteenBits(sample));
        if (pending_.size() == chunkSize) decodePending(updates);
    }
    return updates;
}

std::vector<WordsUpdate> PocketSphinxRecogniser::finish() {
    std::vector<WordsUpdate> updates;
    if (finished_) return updates;
    finished_ = true;
    decoder_->hear(pending_);
    samplesHeard_ += static_cast<std::int64_t>(pending_.size());
    decoder_->endUtterance();
    publish(decoder_->words(recogniserSeconds(utteranceStart_)), true, updates);
    return updates;
}

void PocketSphinxRecogniser::decodePending(std::vector<WordsUpdate>& updates) {
    decoder_->hear(pending_);
    samplesHeard_ += static_cast<std::int64_t>(pending_.size());
    pending_.clear();
    const double start = recogniserSeconds(utteranceStart_);
    std::vector<HeardWord> words = decoder_->words(start);

    const double now = recogniserSeconds(samplesHeard_);
    const double silence = now - (words.empty() ? start : words.back().end);
    const bool settles =
        (now - start >= settleAfter_ && silence >= pause) || now - start >= settleAnyway_;
    if (!settles) return publish(agreed(std::move(words)), false, updates);

    decoder_->endUtterance();
    publish(decoder_->words(start), true, updates);
    decoder_->startUtterance();
    previous_.clear();
    utteranceStart_ = samplesHeard_;
    settledWords_ = static_cast<std::int64_t>(published_.words().size());
}

// The first words that the last chunk brought alike. What is guessed from half a word hardly ever
// stands for two chunks, and a wrong guess costs a reader's place more than a late word does.
std::vector<HeardWord> PocketSphinxRecogniser::agreed(std::vector<HeardWord> words) {
    const auto agreed =
        std::ranges::mismatch(words, previous_, {}, &HeardWord::word, &HeardWord::word);
    const auto count = agreed.in1 - words.begin();
    previous_ = words;
    words.erase(words.begin() + count, words.end());
    return words;
}

void PocketSphinxRecogniser::publish(std::vector<HeardWord> utterance, bool final,
                                     std::vector<WordsUpdate>& updates) {
    const auto before =
        std::span(published_.words()).subspan(static_cast<std::size_t>(settledWords_));
    // A word grows for as long as it is spoken; that alone is no news.
    if (!final && std::ranges::equal(utterance, before, IsSame{worthTelling})) return;
    const auto changed = std::ranges::mismatch(utterance, before, IsSame{tolerance}).in1;
    const auto kept = changed - utterance.begin();

    utterance.erase(utterance.begin(), changed);
    updates.push_back({.time = recogniserSeconds(samplesHeard_),
                       .keep = settledWords_ + kept,
                       .words = std::move(utterance),
                       .final = final});
    published_.apply(updates.back());
}

}  // namespace Varnelle

#pragma once

// Speech recognised on this machine, by PocketSphinx and its English model.
//
//   PocketSphinxRecogniser recogniser(tokens);       // the texts of a script's tokens
//   for (const WordsUpdate& update : recogniser.hear(samples)) ...
//
// It listens for the script's words first and for the commonest English words beside them. A word
// is published when two chunks of 60 ms in a row brought it, mostly within 120 ms of its end; the
// last one is sometimes withdrawn again.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "PrompterCore/text/Text.h"
#include "host/Pronunciations.h"
#include "host/Recogniser.h"
#include "host/SpeechModel.h"

namespace Varnelle {

/// What the recogniser is made from, and how it divides its attention.
struct PocketSphinxSettings {
    std::filesystem::path model = speechModelFolder();
    Pronouncer pronouncer;                ///< for words that the model's dictionary lacks
    std::int64_t commonWordCount = 5000;  ///< words beside the script's
    double backgroundMass = 0.5;          ///< 0 to 1, the common words' share; see LanguageModel
    /// After so many seconds of sound the next pause settles the words, so that memory does not
    /// grow with the reading (it takes 1 MB a minute).
    double settleAfter = 180;
    /// Without any pause they are settled after so many seconds, which may cost a word.
    double settleAnyway = 900;
};

class PocketSphinxRecogniser final : public Recogniser {
public:
    /// Listens for `tokens`, in their order, which may be none. Takes a tenth of a second, and more
    /// for very long scripts. Throws Unavailable when the model is missing.
    explicit PocketSphinxRecogniser(std::span<const PrompterCore::Text> tokens,
                                    const PocketSphinxSettings& settings = {});
    ~PocketSphinxRecogniser() override;

    /// An update comes after each 60 ms of sound that changed the words or moved one by 150 ms,
    /// however the samples are cut; published times are right to 50 ms. A tenth of the sound's
    /// duration on a present machine.
    std::vector<WordsUpdate> hear(std::span<const float> samples) override;
    std::vector<WordsUpdate> finish() override;

private:
    class Decoder;

    void decodePending(std::vector<WordsUpdate>& updates);
    std::vector<HeardWord> agreed(std::vector<HeardWord> words);
    void publish(std::vector<HeardWord> utterance, bool final, std::vector<WordsUpdate>& updates);

    std::unique_ptr<Decoder> decoder_;
    double settleAfter_, settleAnyway_;  // seconds
    std::vector<std::int16_t> pending_;  // samples for the next 60 ms
    std::int64_t samplesHeard_ = 0;      // by the decoder
    std::int64_t utteranceStart_ = 0;    // samples
    std::int64_t settledWords_ = 0;      // those of the utterances before
    std::vector<HeardWord> previous_;    // of the utterance, a chunk ago
    HeardWords published_;
    bool finished_ = false;
};

}  // namespace Varnelle

#pragma once

// The English speech model of the system: where its files are, and how common words are in it.
//
//   const SpeechModel model(speechModelFolder());
//   model.commonWords(3);     // "the", "to", "i"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/LanguageModel.h"

namespace Varnelle {

/// Where the model is: the environment's VARNELLE_SPEECH_MODEL, else where the system's package
/// keeps it. The folder holds `en-us/` (how phones sound), `en-us.lm.bin` (how common words are)
/// and `cmudict-en-us.dict` (how words are pronounced).
[[nodiscard]] std::filesystem::path speechModelFolder();

/// A model that is there. A value.
class SpeechModel {
public:
    /// Throws Unavailable when a file of the model is missing in `folder` or cannot be read. One
    /// that is cut off may end the program later on, with a sentence and exit status 69: the
    /// libraries leave no other way.
    explicit SpeechModel(const std::filesystem::path& folder);

    [[nodiscard]] std::string acousticFolder() const;  ///< path
    /// The pronouncing dictionary's lines.
    [[nodiscard]] std::string dictionary() const;
    /// The `count` commonest words, the commonest first, and after them the sentence's end. Throws
    /// Unavailable when they cannot be read. Takes a twentieth of a second.
    [[nodiscard]] std::vector<CommonWord> commonWords(std::int64_t count) const;

private:
    std::filesystem::path folder_;
};

}  // namespace Varnelle

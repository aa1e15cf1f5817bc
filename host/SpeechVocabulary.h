#pragma once

// The words that a recogniser listens for while a script is read, how they sound, and where in the
// script they stand.
//
//   const auto vocabulary = speechVocabulary(tokens, dictionary, commonWords);
//   vocabulary.dictionary;   // "do D UW\ndon't D OW N T\n..."
//
// A script's tokens are spoken forms: "don't" stands there as "do" and "not", "we'll" as "well".
// People say what was written, so tokens also sound like every word of the dictionary that has
// them as its spoken form, and several tokens may be one word.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/text/Text.h"
#include "host/LanguageModel.h"
#include "host/Pronunciations.h"

namespace Varnelle {

/// What a language model and a decoder are made from. Every word in it has a pronunciation.
struct SpeechVocabulary {
    std::vector<Wording> wordings;       ///< of the script, by token
    std::vector<CommonWord> background;  ///< words of general speech, and the sentence's end
    std::string dictionary;              ///< lines "word PH OH N Z"; further ones "word(2) ..."

    friend bool operator==(const SpeechVocabulary&, const SpeechVocabulary&) = default;
};

/// The vocabulary for a script's `tokens` and for `commonWords`, with the pronunciations of
/// `dictionary`. For tokens that it lacks `pronouncer` is asked; those that it cannot say have no
/// wording, common words without a pronunciation are left out. O(n) in all of them.
[[nodiscard]] SpeechVocabulary speechVocabulary(std::span<const PrompterCore::Text> tokens,
                                                std::string_view dictionary,
                                                std::span<const CommonWord> commonWords,
                                                const Pronouncer& pronouncer = {});

}  // namespace Varnelle

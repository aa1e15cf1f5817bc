#pragma once

// How words sound: lines of a pronouncing dictionary, and guesses by the espeak-ng program for the
// words that it lacks. Sounds are ARPAbet phones without stress, separated by spaces.
//
//   arpabetOf("h @ l 'oU");            // "HH AH L OW"
//   const std::string words[] = {"varnelle", "東京"};
//   guessedPronunciations(words);      // "V AA R N EH L", and nothing

#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Varnelle {

/// Calls `visit(word, phones)` for each line of `dictionary`, in order; a word with several
/// pronunciations comes as often, without the mark "(2)" behind it. Lines without a sound are
/// passed over. O(n).
void forEachPronunciation(std::string_view dictionary,
                          const std::function<void(std::string_view, std::string_view)>& visit);

/// The phones for one line of espeak-ng's phoneme mnemonics for American English, separated by
/// spaces. Absent when it holds a mnemonic that has no phone in English, or no sound at all.
[[nodiscard]] std::optional<std::string> arpabetOf(std::string_view mnemonics);

/// True for a word of Latin letters, digits and apostrophes that is not longer than words are
/// (40 letters): the voice can say it, and a dictionary can hold it.
[[nodiscard]] bool isSpeakable(std::string_view word);

/// Who is asked for the pronunciation of unknown words, and for how long.
struct Pronouncer {
    std::string program = "espeak-ng";
    std::chrono::milliseconds timeLimit{2000};  ///< about 2500 words
};

/// One pronunciation a word, in order. Absent for words that are not speakable or that the program
/// cannot say in English; for all of them when it is not installed. One run for all words.
[[nodiscard]] std::vector<std::optional<std::string>> guessedPronunciations(
    std::span<const std::string> words, const Pronouncer& pronouncer = {});

}  // namespace Varnelle

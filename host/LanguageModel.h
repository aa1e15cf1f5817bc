#pragma once

// Which word follows which: what a recogniser expects to hear from somebody who reads a script,
// and who may say something else in between.
//
// A trigram model with Witten-Bell smoothing learns the script's own words; at its ground it is
// mixed with how common words are in general. So the next word of the script is expected most, any
// word of the script is possible at once, and what is not in the script is heard as what it is.
//
//   const Wording wordings[] = {{0, 1, "don't"}, {0, 2, "do"}, ...};
//   LanguageModel model(tokenCount, wordings, commonWords, 0.5);
//   model.probability({"drop", "a"}, "promise");   // well above 0.5 where the script says so
//   model.arpa();                                  // for the recogniser to read
//
// Source: I. H. Witten, T. C. Bell, The zero-frequency problem, 1991, method C, interpolated.

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Varnelle {

/// A word of the dictionary that says `tokenCount` tokens of the script, the first being `token`.
struct Wording {
    std::int64_t token = 0;       ///< token index
    std::int64_t tokenCount = 1;  ///< tokens, at least 1: "don't" says two, "do" and "not"
    std::string word;             ///< as the dictionary spells it

    friend bool operator==(const Wording&, const Wording&) = default;
};

/// How often a word is said in general.
struct CommonWord {
    std::string word;        ///< as the dictionary spells it
    double probability = 0;  ///< above 0, of all words said; need not sum to 1 over a list

    friend bool operator==(const CommonWord&, const CommonWord&) = default;
};

/// Immutable once built. Words are dictionary keys: compared by their bytes.
class LanguageModel {
public:
    static constexpr std::string_view sentenceStart = "<s>";
    static constexpr std::string_view sentenceEnd = "</s>";

    /// Learns every way to say `tokenCount` tokens with `wordings`, which may overlap and leave
    /// tokens out; what stands on both sides of a token left out is not joined. `background` has
    /// `backgroundMass` of the words' ground probability, all of it where there is no wording.
    /// Linear in the wordings but for sorting. Stops the program unless the tokens of each wording
    /// lie in the script and 0 <= `backgroundMass` <= 1.
    LanguageModel(std::int64_t tokenCount, std::span<const Wording> wordings,
                  std::span<const CommonWord> background, double backgroundMass);

    /// Every word once: the start, the end, the script's in order, then the background's.
    [[nodiscard]] const std::vector<std::string>& words() const noexcept { return words_; }

    /// How likely `word` follows `history`, oldest word first, of which the last two count. 0 for a
    /// word that is not in the model; a history that is not in it says nothing.
    [[nodiscard]] double probability(std::span<const std::string_view> history,
                                     std::string_view word) const;

    /// The model in the ARPA format, base 10 logarithms with five decimals.
    [[nodiscard]] std::string arpa() const;

private:
    using WordId = std::uint32_t;

    // A run of words that the script has, with what it says about the word after it.
    struct Gram {
        std::array<WordId, 3> ids{};  // as many as the list's order, oldest first
        std::int64_t count = 0;
        double probability = 0;  // of the last word after the ones before it
        double backoff = 1;      // left for words that the script never has after this run
    };

    WordId idOf(const std::string& word);
    void count(std::int64_t tokenCount, std::span<const Wording> wordings);
    void mixGround(std::span<const CommonWord> background, double backgroundMass);
    void smooth();
    static const Gram* find(const std::vector<Gram>& grams, std::span<const WordId> ids);

    std::vector<std::string> words_;  // by id
    std::unordered_map<std::string, WordId> ids_;
    std::vector<Gram> unigrams_;  // by id
    std::vector<Gram> bigrams_;   // sorted by ids
    std::vector<Gram> trigrams_;  // sorted by ids
};

}  // namespace Varnelle

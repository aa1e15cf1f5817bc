#include "host/SpeechVocabulary.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "PrompterCore/script/SpokenForms.h"
#include "PrompterCore/support/Integers.h"

namespace Varnelle {
namespace {

using PrompterCore::Text;

// A word that says several tokens.
struct Contraction {
    std::string word;
    std::vector<std::string> forms;  // at least 2
};

class Vocabulary {
public:
    Vocabulary(std::span<const Text> tokens, std::span<const CommonWord> commonWords)
        : tokens_(tokens) {
        for (const Text& token : tokens)
            tokenWords_.insert(token.utf8());
        for (const CommonWord& word : commonWords)
            commonWords_.insert(word.word);
    }

    // Takes what is of use in the dictionary.
    void takeFrom(std::string_view dictionary) {
        forEachPronunciation(dictionary, [this](std::string_view word, std::string_view phones) {
            const bool isCommon = commonWords_.contains(word);
            if (isCommon || tokenWords_.contains(word)) add(word, phones);
            // Of the words written in letters alone only common ones ("its") may be contractions.
            if (isCommon || !isPlain(word)) takeForms(word, phones);
        });
    }

    // Asks for the tokens that have no pronunciation yet.
    void askFor(const Pronouncer& pronouncer) {
        std::vector<std::string> unknown;
        std::unordered_set<std::string_view> seen;
        for (const Text& token : tokens_) {
            if (!sounds_.contains(token.utf8()) && seen.insert(token.utf8()).second)
                unknown.push_back(token.utf8());
        }
        const auto guesses = guessedPronunciations(unknown, pronouncer);
        for (std::size_t word = 0; word < unknown.size(); ++word) {
            if (guesses[word]) add(unknown[word], *guesses[word]);
        }
    }

    std::vector<Wording> wordings() const {
        std::vector<Wording> wordings;
        for (std::size_t token = 0; token < tokens_.size(); ++token) {
            const std::string& word = tokens_[token].utf8();
            const auto index = static_cast<std::int64_t>(token);
            if (sounds_.contains(word)) wordings.push_back({index, 1, word});
            const auto [first, last] = contractions_.equal_range(word);
            for (auto contraction = first; contraction != last; ++contraction) {
                const auto& [spelling, forms] = contraction->second;
                if (saysTokensAt(token, forms))
                    wordings.push_back({index, PrompterCore::signedCount(forms.size()), spelling});
            }
        }
        return wordings;
    }

    bool hasSound(const std::string& word) const { return sounds_.contains(word); }

    std::string dictionary() const {
        std::string lines;
        for (const auto& [word, pronunciations] : sounds_) {
            for (std::size_t variant = 0; variant < pronunciations.size(); ++variant) {
                lines += word;
                if (variant > 0) lines += '(' + std::to_string(variant + 1) + ')';
                lines += ' ' + pronunciations[variant] + '\n';
            }
        }
        return lines;
    }

private:
    static bool isPlain(std::string_view word) {
        return std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
    }

    void add(std::string_view word, std::string_view phones) {
        auto& pronunciations = sounds_[std::string(word)];
        if (std::ranges::find(pronunciations, phones) == pronunciations.end())
            pronunciations.emplace_back(phones);
    }

    void takeForms(std::string_view word, std::string_view phones) {
        forms_.clear();
        PrompterCore::appendSpokenForms(word, forms_);
        if (forms_.empty() || !std::ranges::all_of(forms_, [this](const Text& form) {
                return tokenWords_.contains(form.utf8());
            }))
            return;
        if (forms_.size() == 1) {
            add(forms_[0].utf8(), phones);
        } else if (word.find('-') == std::string_view::npos) {  // its parts sound the same
            add(word, phones);
            addContraction(word);
        }
    }

    void addContraction(std::string_view word) {
        const auto [first, last] = contractions_.equal_range(forms_[0].utf8());
        const bool isKnown = std::any_of(
            first, last, [word](const auto& known) { return known.second.word == word; });
        if (isKnown) return;  // by another pronunciation
        Contraction contraction{.word = std::string(word), .forms = {}};
        for (const Text& form : forms_)
            contraction.forms.push_back(form.utf8());
        contractions_.emplace(forms_[0].utf8(), std::move(contraction));
    }

    bool saysTokensAt(std::size_t token, const std::vector<std::string>& forms) const {
        return std::ranges::equal(
            tokens_.subspan(token, std::min(forms.size(), tokens_.size() - token)), forms, {},
            &Text::utf8);
    }

    std::span<const Text> tokens_;
    std::unordered_set<std::string_view> tokenWords_;
    std::unordered_set<std::string_view> commonWords_;
    std::map<std::string, std::vector<std::string>> sounds_;  // pronunciations by word
    std::multimap<std::string, Contraction> contractions_;    // by their first form
    std::vector<Text> forms_;                                 // of the word at hand
};

}  // namespace

SpeechVocabulary speechVocabulary(std::span<const Text> tokens, std::string_view dictionary,
                                  std::span<const CommonWord> commonWords,
                                  const Pronouncer& pronouncer) {
    Vocabulary vocabulary(tokens, commonWords);
    vocabulary.takeFrom(dictionary);
    vocabulary.askFor(pronouncer);

    SpeechVocabulary result{
        .wordings = vocabulary.wordings(), .background = {}, .dictionary = vocabulary.dictionary()};
    for (const CommonWord& word : commonWords) {
        if (word.word == LanguageModel::sentenceEnd || vocabulary.hasSound(word.word))
            result.background.push_back(word);
    }
    return result;
}

}  // namespace Varnelle

#include "PrompterCore/script/SpokenForms.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "PrompterCore/script/Contractions.h"
#include "PrompterCore/script/NumberWords.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

void appendAll(std::vector<Text> words, std::vector<Text>& forms) {
    std::move(words.begin(), words.end(), std::back_inserter(forms));
}

// A string of ASCII digits whose value fits 64 bits.
std::optional<std::int64_t> wholeNumber(std::string_view digits) {
    const bool allDigits =
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    std::int64_t value = 0;
    if (!allDigits ||
        std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc())
        return std::nullopt;
    return value;
}

// The word without the code points at its ends that are no letters, marks or digits.
std::string_view trimmedToAlphanumerics(std::string_view word) {
    std::size_t from = 0;
    while (from < word.size()) {
        std::size_t behind = from;
        if (CharacterClasses::isAlphanumeric(Utf8::next(word, behind))) break;
        from = behind;
    }
    std::size_t to = word.size();
    while (to > from) {
        std::size_t before = to;
        if (CharacterClasses::isAlphanumeric(Utf8::previous(word, before))) break;
        to = before;
    }
    return word.substr(from, to - from);
}

std::string withoutCommas(std::string_view word) {
    std::string result;
    for (const Character character : Characters(word)) {
        if (!character.is(',')) result.append(character.utf8());
    }
    return result;
}

// "3.14": digits, a point, digits, with commas anywhere. False when `word` is none such.
bool appendDecimalReading(std::string_view word, std::vector<Text>& forms) {
    if (word.find('.') == std::string_view::npos) return false;
    const Characters characters{Text(withoutCommas(word))};
    std::vector<CharacterRange> pieces;
    std::int64_t from = 0;
    for (std::int64_t i = 0; i <= characters.count(); ++i) {
        if (i < characters.count() && !characters[i].is('.')) {
            if (!characters[i].isNumeric()) return false;
            continue;
        }
        if (from < i) pieces.emplace_back(from, i);
        from = i + 1;
    }
    if (pieces.size() != 2) return false;
    const std::optional<std::int64_t> whole = wholeNumber(characters.slice(pieces[0]));
    if (!whole) return false;
    appendAll(numberWords(*whole), forms);
    forms.emplace_back("point");
    for (std::int64_t i = pieces[1].lower(); i < pieces[1].upper(); ++i) {
        const auto digit = CharacterClasses::decimalDigit(characters[i].firstCodePoint());
        if (digit) appendAll(numberWords(*digit), forms);
    }
    return true;
}

bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Letters and numerals only, lower case, accents and widths folded away; a hyphen-minus stays
// between them.
std::string normalised(std::string_view word) {
    std::string result;
    if (Utf8::isAscii(word)) {
        result.reserve(word.size());
        for (const char c : word) {
            if (isAsciiLetter(c)) {
                result.push_back(static_cast<char>(c | 0x20));
            } else if ((c >= '0' && c <= '9') || (c == '-' && !result.empty())) {
                result.push_back(c);
            }
        }
    } else {
        for (const Character character : Characters(lowercased(folded(word)))) {
            if (character.isLetter() || character.isNumeric() ||
                (character.is('-') && !result.empty()))
                result.append(character.utf8());
        }
    }
    result.erase(result.find_last_not_of('-') + 1);
    return result;
}

void appendPieces(std::string_view hyphenated, std::vector<Text>& forms) {
    for (std::size_t from = 0; from < hyphenated.size();) {
        const std::size_t to = std::min(hyphenated.find('-', from), hyphenated.size());
        if (from < to) appendSpokenForms(hyphenated.substr(from, to - from), forms);
        from = to + 1;
    }
}

}  // namespace

void appendSpokenForms(std::string_view word, std::vector<Text>& forms) {
    if (appendDecimalReading(trimmedToAlphanumerics(word), forms)) return;
    std::string spoken = normalised(word);
    if (spoken.empty()) return;
    if (const auto number = wholeNumber(spoken)) {
        // Four digits are read as a year, "1500" and "0042" alike.
        appendAll(spoken.size() == 4 ? yearWords(*number) : numberWords(*number), forms);
    } else if (const auto contraction = contractionFor(spoken)) {
        forms.emplace_back(contraction->first);
        if (!contraction->second.empty()) forms.emplace_back(contraction->second);
    } else if (spoken.find('-') != std::string::npos) {
        appendPieces(spoken, forms);
    } else {
        forms.emplace_back(std::move(spoken));
    }
}

std::vector<Text> spokenForms(const Text& word) {
    std::vector<Text> forms;
    appendSpokenForms(word.utf8(), forms);
    return forms;
}

}  // namespace PrompterCore

#pragma once

// A word's spoken forms on lists of characters, one step after the other, with nothing reused.

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "PrompterCore/script/Contractions.h"
#include "tests/reference/PlainNumbers.h"
#include "tests/reference/PlainUnicode.h"

namespace PrompterCore::Plain {

inline std::optional<std::int64_t> parsed(const std::string& digits) {
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    std::int64_t value = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc())
        return std::nullopt;
    return value;
}

inline std::string trimmedToAlphanumerics(const std::string& word) {
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(word);
    std::vector<UChar32> points;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1))
        points.push_back(text.char32At(i));
    const auto trims = [](UChar32 c) {
        return (U_GET_GC_MASK(c) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) == 0;
    };
    while (!points.empty() && trims(points.back()))
        points.pop_back();
    while (!points.empty() && trims(points.front()))
        points.erase(points.begin());
    std::string result;
    for (const UChar32 c : points)
        icu::UnicodeString(c).toUTF8String(result);
    return result;
}

inline std::vector<CharacterList> pieces(const CharacterList& list, const std::string& separator) {
    std::vector<CharacterList> all(1);
    for (const std::string& character : list) {
        if (character == separator) {
            all.emplace_back();
        } else {
            all.back().push_back(character);
        }
    }
    std::erase_if(all, [](const CharacterList& piece) { return piece.empty(); });
    return all;
}

inline std::optional<Words> decimalReading(const Unicode& unicode, const std::string& word) {
    CharacterList kept = unicode.characters(trimmedToAlphanumerics(word));
    std::erase(kept, ",");
    kept = unicode.characters(joined(kept, 0, kept.size()));
    const std::vector<CharacterList> both = pieces(kept, ".");
    if (both.size() != 2) return std::nullopt;
    for (const CharacterList& piece : both) {
        for (const std::string& character : piece) {
            if (!isNumeric(character)) return std::nullopt;
        }
    }
    const std::optional<std::int64_t> whole = parsed(joined(both[0], 0, both[0].size()));
    if (!whole) return std::nullopt;
    Words words = numberWords(*whole);
    words.emplace_back("point");
    for (const std::string& character : both[1]) {
        const std::int32_t digit = u_charDigitValue(firstCodePoint(character));
        if (digit >= 0) words.push_back(belowHundred(static_cast<std::size_t>(digit)));
    }
    return words;
}

inline std::string normalised(const Unicode& unicode, const std::string& word) {
    CharacterList kept;
    for (const std::string& character : unicode.characters(unicode.foldedLower(word))) {
        if (isLetter(character) || isNumeric(character) || (character == "-" && !kept.empty()))
            kept.push_back(character);
    }
    kept = unicode.characters(joined(kept, 0, kept.size()));
    while (!kept.empty() && kept.back() == "-")
        kept.pop_back();
    return joined(kept, 0, kept.size());
}

inline Words spokenForms(const Unicode& unicode, const std::string& word) {
    if (const auto decimal = decimalReading(unicode, word)) return *decimal;
    const std::string spoken = normalised(unicode, word);
    if (spoken.empty()) return {};
    if (const auto number = parsed(spoken))
        return spoken.size() == 4 ? yearWords(*number) : numberWords(*number);
    for (const Contraction& contraction : contractions()) {
        if (contraction.key == spoken)
            return split(std::string(contraction.first) + " " + std::string(contraction.second));
    }
    const CharacterList list = unicode.characters(spoken);
    if (std::find(list.begin(), list.end(), "-") == list.end()) return {spoken};
    Words words;
    for (const CharacterList& piece : pieces(list, "-")) {
        for (const std::string& form : spokenForms(unicode, joined(piece, 0, piece.size())))
            words.push_back(form);
    }
    return words;
}

}  // namespace PrompterCore::Plain

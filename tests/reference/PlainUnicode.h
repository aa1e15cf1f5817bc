#pragma once

// Characters and folding straight from the Unicode library, without any short cut.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "PrompterCore/text/Folding.h"

namespace PrompterCore::Plain {

using CharacterList = std::vector<std::string>;

inline std::string joined(const CharacterList& list, std::size_t from, std::size_t to) {
    std::string result;
    for (std::size_t i = from; i < to; ++i)
        result += list[i];
    return result;
}

inline UChar32 firstCodePoint(const std::string& character) {
    return icu::UnicodeString::fromUTF8(character).char32At(0);
}

inline bool isWhiteSpace(const std::string& c) { return u_isUWhiteSpace(firstCodePoint(c)) != 0; }
inline bool isLetter(const std::string& c) { return u_isUAlphabetic(firstCodePoint(c)) != 0; }
inline bool isNumeric(const std::string& c) {
    return u_getIntPropertyValue(firstCodePoint(c), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}
inline bool isLineBreak(const std::string& c) {
    const UChar32 first = firstCodePoint(c);
    return (first >= 0x0A && first <= 0x0D) || first == 0x85 || first == 0x2028 || first == 0x2029;
}

/// The Unicode library's own services, opened once.
class Unicode {
public:
    CharacterList characters(const std::string& utf8) const {
        const icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
        breaker_->setText(text);
        CharacterList list;
        for (std::int32_t from = 0, to = breaker_->next(); to != icu::BreakIterator::DONE;
             from = to, to = breaker_->next()) {
            std::string character;
            text.tempSubStringBetween(from, to).toUTF8String(character);
            list.push_back(character);
        }
        return list;
    }

    std::string foldedLower(const std::string& utf8) const {
        icu::UnicodeString kept;
        const icu::UnicodeString decomposed =
            nfd_->normalize(icu::UnicodeString::fromUTF8(utf8), status_);
        for (std::int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
            const UChar32 c = decomposed.char32At(i);
            if (isFoldedAway(static_cast<char32_t>(c))) continue;
            const int type = u_getIntPropertyValue(c, UCHAR_DECOMPOSITION_TYPE);
            icu::UnicodeString ordinary(c);
            if (type == U_DT_WIDE || type == U_DT_NARROW) nfkd_->getRawDecomposition(c, ordinary);
            kept += ordinary;
        }
        std::string result;
        nfc_->normalize(kept, status_).toLower(icu::Locale::getRoot()).toUTF8String(result);
        return result;
    }

private:
    mutable UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> breaker_{
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status_)};
    const icu::Normalizer2* nfc_ = icu::Normalizer2::getNFCInstance(status_);
    const icu::Normalizer2* nfd_ = icu::Normalizer2::getNFDInstance(status_);
    const icu::Normalizer2* nfkd_ = icu::Normalizer2::getNFKDInstance(status_);
};

}  // namespace PrompterCore::Plain

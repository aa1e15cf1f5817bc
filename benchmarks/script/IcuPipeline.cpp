#include "benchmarks/script/IcuPipeline.h"

#include <memory>

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace PrompterCore {

IcuPipelineResult icuPipeline(std::string_view utf8) {
    IcuPipelineResult result;
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(
        icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));

    const std::unique_ptr<icu::BreakIterator> breaker(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    breaker->setText(text);
    for (std::int32_t at = breaker->first(); at != icu::BreakIterator::DONE; at = breaker->next())
        result.boundaries.push_back(at);

    icu::UnicodeString plain = icu::Normalizer2::getNFKDInstance(status)->normalize(text, status);
    plain.toLower(icu::Locale::getRoot());
    icu::UnicodeString word;
    const auto finish = [&] {
        if (!word.isEmpty()) word.toUTF8String(result.words.emplace_back());
        word.remove();
    };
    for (std::int32_t i = 0; i < plain.length();) {
        const UChar32 c = plain.char32At(i);
        i += U16_LENGTH(c);
        if (u_isUWhiteSpace(c) != 0) {
            finish();
        } else if (u_isalnum(c) != 0) {
            word.append(c);
        }
    }
    finish();
    return result;
}

}  // namespace PrompterCore

#include "PrompterCore/text/Text.h"

#include <algorithm>
#include <utility>

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/UnicodeLibrary.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

using UnicodeLibrary::piece;

const icu::Normalizer2& nfc() {
    return UnicodeLibrary::normalizer(icu::Normalizer2::getNFCInstance);
}

std::string mended(std::string bytes) {
    std::size_t at = 0;
    std::size_t bad = Utf8::illFormedPart(bytes, at);
    if (bad == 0) return bytes;
    std::string result;
    std::size_t copied = 0;
    for (; bad != 0; bad = Utf8::illFormedPart(bytes, at)) {
        result.append(bytes, copied, at - copied);
        result.append("\xEF\xBF\xBD");
        at += bad;
        copied = at;
    }
    result.append(bytes, copied);
    return result;
}

// Below U+0300 nothing composes with anything: such a text is its own composed form.
bool staysBelowCombining(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(),
                        [](char byte) { return static_cast<unsigned char>(byte) >= 0xCC; });
}

bool isComposed(std::string_view bytes) {
    if (staysBelowCombining(bytes)) return true;
    if (UnicodeLibrary::withOrderedMarks(bytes)) return false;
    UErrorCode status = U_ZERO_ERROR;
    return nfc().isNormalizedUTF8(piece(bytes), status) != 0 && U_SUCCESS(status);
}

std::string composedForm(std::string_view bytes) {
    if (isComposed(bytes)) return std::string(bytes);
    const std::optional<std::string> ordered = UnicodeLibrary::withOrderedMarks(bytes);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    nfc().normalizeUTF8(0, piece(ordered ? *ordered : bytes), sink, nullptr, status);
    require(U_SUCCESS(status), "a well-formed text can be normalised");
    return result;
}

}  // namespace

Text::Text(std::string bytes) : utf8_(mended(std::move(bytes))) {}

Text::Text(std::string_view bytes) : utf8_(mended(std::string(bytes))) {}

std::string_view Text::untilZero(const char* characters) noexcept {
    require(characters != nullptr, "a text is made of characters, not of null");
    return characters;
}

std::optional<Text> Text::fromUtf8(std::string bytes) {
    std::size_t at = 0;
    if (Utf8::illFormedPart(bytes, at) != 0) return std::nullopt;
    Text text;
    text.utf8_ = std::move(bytes);
    return text;
}

Text Text::composed() const {
    Text text;
    text.utf8_ = composedForm(utf8_);
    return text;
}

bool canonicallyEqual(std::string_view a, std::string_view b) {
    if (a == b) return true;
    if (isComposed(a) && isComposed(b)) return false;
    return composedForm(a) == composedForm(b);
}

std::weak_ordering canonicalOrder(std::string_view a, std::string_view b) {
    // UTF-8 bytes order as the code points do.
    if (a == b) return std::weak_ordering::equivalent;
    if (isComposed(a) && isComposed(b)) return a <=> b;
    return composedForm(a) <=> composedForm(b);
}

}  // namespace PrompterCore

std::size_t std::hash<PrompterCore::WellFormed>::operator()(PrompterCore::WellFormed text) const {
    const std::hash<std::string_view> hashOf;
    return PrompterCore::isComposed(text.bytes) ? hashOf(text.bytes)
                                                : hashOf(PrompterCore::composedForm(text.bytes));
}

#include "PrompterCore/text/RegularExpression.h"

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/UnicodeLibrary.h"

namespace PrompterCore::RegularExpression {

using UnicodeLibrary::piece;

bool containsMatch(const Text& text, std::string_view pattern) {
    UErrorCode status = U_ZERO_ERROR;
    // The matcher refers to the text.
    const auto searched = icu::UnicodeString::fromUTF8(piece(text.utf8()));
    icu::RegexMatcher matcher(icu::UnicodeString::fromUTF8(piece(pattern)), searched, 0, status);
    require(U_SUCCESS(status), "a pattern is a regular expression");
    const bool found = matcher.find(status) != 0;
    require(U_SUCCESS(status), "a match was looked for to the end");
    return found;
}

}  // namespace PrompterCore::RegularExpression

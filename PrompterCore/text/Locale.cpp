#include "PrompterCore/text/Locale.h"

#include <unicode/locid.h>

namespace PrompterCore {

Locale::Locale() : identifier_(icu::Locale::getDefault().getName()) {}

std::optional<Locale> Locale::fromIdentifier(std::string_view identifier) {
    // The library reads up to a zero, and takes no text at all for the user's own.
    if (identifier.empty() || identifier.find('\0') != std::string_view::npos) return std::nullopt;
    const auto locale = icu::Locale::createCanonical(std::string(identifier).c_str());
    if (locale.isBogus() != 0) return std::nullopt;
    return Locale(std::string(locale.getName()));
}

Locale Locale::fixed() { return Locale(std::string("en_US_POSIX")); }

}  // namespace PrompterCore

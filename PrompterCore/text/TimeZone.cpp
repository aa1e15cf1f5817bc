#include "PrompterCore/text/TimeZone.h"

#include <memory>

#include <unicode/timezone.h>
#include <unicode/ucal.h>

#include "PrompterCore/text/UnicodeLibrary.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

// Absent where the library does not know it: it would give its own "unknown" zone.
std::optional<std::string> known(const icu::TimeZone* zone) {
    if (zone == nullptr) return std::nullopt;
    icu::UnicodeString identifier;
    if (zone->getID(identifier) == UNICODE_STRING_SIMPLE(UCAL_UNKNOWN_ZONE_ID)) return std::nullopt;
    std::string result;
    return identifier.toUTF8String(result);
}

}  // namespace

TimeZone::TimeZone()
    : identifier_(known(std::unique_ptr<icu::TimeZone>(icu::TimeZone::detectHostTimeZone()).get())
                      .value_or("UTC")) {}

std::optional<TimeZone> TimeZone::fromIdentifier(std::string_view identifier) {
    if (!Utf8::isAscii(identifier)) return std::nullopt;
    const auto zone = std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(
        icu::UnicodeString::fromUTF8(UnicodeLibrary::piece(identifier))));
    std::optional<std::string> found = known(zone.get());
    if (!found) return std::nullopt;
    return TimeZone(*std::move(found));
}

TimeZone TimeZone::utc() { return TimeZone(std::string("UTC")); }

}  // namespace PrompterCore

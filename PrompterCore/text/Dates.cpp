#include "PrompterCore/text/Dates.h"

#include <memory>

#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/UnicodeLibrary.h"

namespace PrompterCore::Dates {

using UnicodeLibrary::piece;

std::string formatted(std::chrono::system_clock::time_point moment, std::string_view pattern,
                      const Locale& locale, const TimeZone& zone) {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString::fromUTF8(piece(pattern)),
                                 icu::Locale(locale.identifier().c_str()), status);
    require(U_SUCCESS(status), "the Unicode library has its calendars");
    format.adoptTimeZone(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(piece(zone.identifier()))));
    // The library counts milliseconds since 1970.
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch();
    icu::UnicodeString written;
    format.format(static_cast<UDate>(seconds.count()) * 1000.0, written, nullptr, status);
    require(U_SUCCESS(status), "a date's pattern is well-formed");
    std::string result;
    return written.toUTF8String(result);
}

}  // namespace PrompterCore::Dates

#pragma once

// A moment as a clock and a calendar show it, by a pattern of the Unicode date formats (UTS 35).
//
//   Dates::formatted(moment, "yyyy-MM-dd 'at' HH.mm.ss", Locale::fixed(), TimeZone::utc());
//                                                       // "2025-03-05 at 14.07.09"

#include <chrono>
#include <string>
#include <string_view>

#include "PrompterCore/text/Locale.h"
#include "PrompterCore/text/TimeZone.h"

namespace PrompterCore::Dates {

/// `moment` by `pattern`, with the customs of `locale` and the clock of `zone`. A part of a second
/// counts as not yet over, before 1970 too. Stops the program unless `pattern` is one.
[[nodiscard]] std::string formatted(std::chrono::system_clock::time_point moment,
                                    std::string_view pattern, const Locale& locale,
                                    const TimeZone& zone);

}  // namespace PrompterCore::Dates

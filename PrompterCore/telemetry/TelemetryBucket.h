#pragma once

// Coarse ranges in place of exact durations: what is reported says no more than its range.
//
//   TelemetryBucket::minutes(59);     // "under_1"
//   TelemetryBucket::minutes(3600);   // "over_60"

#include <cstdint>
#include <string_view>

namespace PrompterCore::TelemetryBucket {

/// The range of minutes that `seconds` lies in; its lower bound belongs to it, its upper one to the
/// next. A negative duration is under a minute.
[[nodiscard]] std::string_view minutes(std::int64_t seconds) noexcept;

}  // namespace PrompterCore::TelemetryBucket

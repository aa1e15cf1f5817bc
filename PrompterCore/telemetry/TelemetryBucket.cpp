#include "PrompterCore/telemetry/TelemetryBucket.h"

namespace PrompterCore::TelemetryBucket {

std::string_view minutes(std::int64_t seconds) noexcept {
    if (seconds < 60) return "under_1";
    if (seconds < 300) return "1_to_5";
    if (seconds < 900) return "5_to_15";
    if (seconds < 1800) return "15_to_30";
    if (seconds < 3600) return "30_to_60";
    return "over_60";
}

}  // namespace PrompterCore::TelemetryBucket

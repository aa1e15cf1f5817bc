#pragma once

// The quality setting of the speech model on this machine, as it is reported.

#include <string_view>

#include "PrompterCore/support/Enumeration.h"

namespace PrompterCore {

/// From the fastest to the most accurate.
enum class TelemetryTier {
    lowLatency,  ///< the fast one
    balanced,    ///< between the two
    accurate,    ///< the most accurate one
};

template <>
struct Enumeration<TelemetryTier> {
    struct Row {
        TelemetryTier value;
        std::string_view caseName, rawValue;
    };
    static constexpr Row rows[] = {{TelemetryTier::lowLatency, "lowLatency", "lowLatency"},
                                   {TelemetryTier::balanced, "balanced", "balanced"},
                                   {TelemetryTier::accurate, "accurate", "accurate"}};
};

}  // namespace PrompterCore

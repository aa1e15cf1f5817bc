#pragma once

// The last step before anything is sent: what would identify a person or a machine goes.
//
//   TelemetryScrub::scrub({{"$app_version", "3.2.1"}, {"$session_id", 7}});
//   // {"$app_version": "3", "$ip": "0.0.0.0"}

#include <array>
#include <string_view>

#include "PrompterCore/telemetry/PropertyValue.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore::TelemetryScrub {

/// What always stands in place of the sender's address: a service that finds none fills in the
/// real one.
inline constexpr std::string_view blankAddress = "0.0.0.0";

/// The keys that go, with their values.
inline constexpr std::array<std::string_view, 16> removed = {
    "$device_name",               // the computer's name
    "$device_model",              // hardware model
    "$device_manufacturer",       // hardware maker
    "$geoip_city_name",           // city, looked up from the address
    "$geoip_latitude",            // position
    "$geoip_longitude",           // position
    "$geoip_postal_code",         // postal code
    "$geoip_subdivision_1_code",  // region
    "$geoip_subdivision_1_name",  // region
    "$geoip_accuracy_radius",     // how precise the position is
    "$geoip_time_zone",           // time zone, looked up from the address
    "$timezone",                  // the machine's time zone
    "$session_id",                // links events
    "$locale",                    // language and region
    "$network_cellular",          // connection
    "$network_wifi",              // connection
};

/// The keys whose texts are cut down to their major version.
inline constexpr std::array<std::string_view, 3> coarsened = {"$os_version", "$app_version",
                                                              "$lib_version"};

/// The properties as they may be sent: without `removed`, with `coarsened` texts cut down and with
/// "$ip" blank, whether it was there or not. Everything else stays. O(n) in properties.
[[nodiscard]] PropertyMap scrub(const PropertyMap& properties);

/// What stands before the first "." that has anything before it: "14" of "14.4.1", "5" of ".5.1".
/// Empty where there is nothing but dots.
[[nodiscard]] Text majorVersion(const Text& version);

}  // namespace PrompterCore::TelemetryScrub

#pragma once

// Where a clock hangs: a value over a time zone's identifier.
//
//   TimeZone();                                  // the user's own
//   TimeZone::fromIdentifier("Europe/Berlin");
//   TimeZone::fromIdentifier("Europe/Nowhere");  // absent

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace PrompterCore {

/// Two are equal when their identifiers are: "UTC" and "GMT" differ.
class TimeZone {
public:
    /// The user's own, as the system says at this moment; UTC where it cannot say.
    TimeZone();
    /// A zone of the time zone database, or a fixed offset such as "GMT+5:30". Absent for any
    /// other text.
    [[nodiscard]] static std::optional<TimeZone> fromIdentifier(std::string_view identifier);
    /// UTC, which has no summer.
    [[nodiscard]] static TimeZone utc();

    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }

    friend bool operator==(const TimeZone&, const TimeZone&) = default;

private:
    explicit TimeZone(std::string identifier) noexcept : identifier_(std::move(identifier)) {}

    std::string identifier_;
};

}  // namespace PrompterCore

#pragma once

// A picture's size in whole pixels, as cameras deliver it and users choose it.
//
//   const CameraResolution full{.width = 1920, .height = 1080};
//   full.id();                                    // "1920x1080", as it is remembered
//   full.title();                                 // "1920 × 1080", as a menu shows it
//   full.framed(CameraFraming::portrait);         // 608 by 1080
//   CameraResolution::fromId("1920x1080");        // full
//   CameraResolution::fromId("1920 × 1080");      // absent

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/records/Record.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// Taken as it stands: a stored one may be 0 or negative.
struct CameraResolution {
    std::int64_t width = 0;   ///< pixels
    std::int64_t height = 0;  ///< pixels

    /// The resolution with this id. Empty pieces between the "x" and pieces that are no whole
    /// numbers are passed over. Absent unless two numbers remain, both at least 1.
    [[nodiscard]] static std::optional<CameraResolution> fromId(const Text& id);

    /// Width, "x" and height, as it is remembered.
    [[nodiscard]] Text id() const;
    /// Width, a multiplication sign between blanks, and height, as menus show it.
    [[nodiscard]] std::string title() const;

    /// The largest picture of that shape within, each side rounded to an even number of at least
    /// 2 (so a side may even grow by 1). Unchanged when a side is below 1. Stops the program
    /// unless the result fits 64 bits.
    [[nodiscard]] CameraResolution framed(CameraFraming framing) const noexcept;

    /// Stored as {"width":1920,"height":1080}; read as it stands, 0 or below included. Throws
    /// RecordFailure where one is missing or no whole number.
    [[nodiscard]] static CameraResolution fromRecord(const Record& record);
    /// The same form, as it stands.
    [[nodiscard]] Record toRecord() const;

    friend bool operator==(const CameraResolution&, const CameraResolution&) = default;
};

}  // namespace PrompterCore

template <>
struct std::hash<PrompterCore::CameraResolution> {
    std::size_t operator()(const PrompterCore::CameraResolution& resolution) const noexcept;
};

#pragma once

// How the user adjusts the camera's picture, remembered from one launch to the next.
//
// Units: `pictureDelay` is a whole number from 0 to 1000; what one of it is, the player and the
// recorder of the host decide.
//
//   CameraAdjustment adjustment{.rotation = CameraRotation::quarter,
//                               .pictureDelay = 2500,     // is 1000
//                               .background = CameraBackground::off(),
//                               .savesCutout = false};
//   adjustment.findsPerson();                             // false
//   toJson(adjustment);
//       // {"rotation":90,"pictureDelay":1000,"background":{"off":{}},"savesCutout":false}

#include <cstdint>

#include "PrompterCore/camera/CameraBackground.h"
#include "PrompterCore/camera/CameraRotation.h"
#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Clamped.h"
#include "PrompterCore/support/ClosedRange.h"

namespace PrompterCore {

/// Every field is the host's to edit.
struct CameraAdjustment {
    static constexpr ClosedRange<std::int64_t> delayRange{0, 1000};  ///< of `pictureDelay`
    static constexpr std::int64_t delayStep = 10;  ///< of the control that edits `pictureDelay`

    /// Reads and assigns like a number.
    using Delay = Clamped<delayRange.lower(), delayRange.upper()>;

    CameraRotation rotation;      ///< how the picture is turned
    Delay pictureDelay;           ///< of the picture, kept within `delayRange` by every change
    CameraBackground background;  ///< what stands behind the person
    bool savesCutout;             ///< whether a cut-out of the person goes beside each recording

    /// Whether the person has to be found in the picture: for a background or for a cut-out.
    [[nodiscard]] bool findsPerson() const noexcept;

    /// Stored with all four fields; a rotation as its raw value. On reading, a missing background
    /// is off and a missing `savesCutout` is false, and a delay is clamped. Throws RecordFailure
    /// for anything else that is missing or no such value.
    [[nodiscard]] static CameraAdjustment fromRecord(const Record& record);
    /// All four fields. Throws RecordFailure where a colour's component is not finite.
    [[nodiscard]] Record toRecord() const;

    friend bool operator==(const CameraAdjustment&, const CameraAdjustment&) = default;
};

}  // namespace PrompterCore

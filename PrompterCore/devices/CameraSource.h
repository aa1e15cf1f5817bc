#pragma once

// A camera as the system reports it; picked by DeviceSelection.
//
//   CameraSource camera{.id = "0x1410", .name = "Desk camera", .isDefault = true};

#include "PrompterCore/devices/SelectableDevice.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One camera.
struct CameraSource {
    Text id;                    ///< the system's unique identifier; what a host remembers
    Text name;                  ///< what a user reads
    bool isDefault = false;     ///< the system's default camera
    bool isContinuity = false;  ///< a phone's camera, lent over the air

    friend bool operator==(const CameraSource&, const CameraSource&) = default;
};

}  // namespace PrompterCore

#pragma once

// A microphone or another audio input as the system reports it, and which one to listen to.
//
//   const std::vector<AudioInput> inputs{{.id = "a", .name = "Built-in", .isDefault = true},
//                                        {.id = "b", .name = "Lavalier"}};
//   AudioInputSelector::preferred(inputs, "b")->name;   // "Lavalier"
//   AudioInputSelector::isMissing("c", inputs);         // true: unplugged

#include <optional>
#include <span>

#include "PrompterCore/devices/SelectableDevice.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One audio input.
struct AudioInput {
    Text id;                 ///< the system's stable identifier; what a host remembers
    Text name;               ///< what a user reads
    bool isDefault = false;  ///< the system uses it by default at present

    friend bool operator==(const AudioInput&, const AudioInput&) = default;
};

namespace AudioInputSelector {

/// The input to listen to, chosen as DeviceSelection::preferred does.
[[nodiscard]] std::optional<AudioInput> preferred(std::span<const AudioInput> inputs,
                                                  const std::optional<Text>& remembered);

/// True when an input was chosen and is not in the list, as DeviceSelection::isMissing says.
[[nodiscard]] bool isMissing(const std::optional<Text>& remembered,
                             std::span<const AudioInput> inputs);

}  // namespace AudioInputSelector

}  // namespace PrompterCore

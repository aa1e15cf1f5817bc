#pragma once

// Devices that a user picks from a list (cameras, audio inputs), and which one to use when the one
// picked last time may have come or gone.
//
//   const std::vector<CameraSource> cameras{{.id = "a", .name = "Front"},
//                                           {.id = "b", .name = "Desk", .isDefault = true}};
//   DeviceSelection::preferred(cameras, "a")->name;   // "Front": what was chosen
//   DeviceSelection::preferred(cameras, "x")->name;   // "Desk": the default instead
//   DeviceSelection::isMissing("x", cameras);         // true: worth a warning

#include <algorithm>
#include <concepts>
#include <optional>
#include <ranges>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A record of one device: `id` is what a host remembers of it, `name` is what a user reads,
/// `isDefault` says that the system takes it by default.
template <class Device>
concept SelectableDevice = std::copyable<Device> && std::equality_comparable<Device> &&
    requires(const Device& device) {
    { device.id } -> std::same_as<const Text&>;
    { device.name } -> std::same_as<const Text&>;
    { device.isDefault } -> std::same_as<const bool&>;
};

/// A list of devices of one kind.
template <class List>
concept SelectableDevices =
    std::ranges::forward_range<List> && SelectableDevice<std::ranges::range_value_t<List>>;

namespace DeviceSelection {

/// The device to use: the one whose id is `remembered`, else the system's default, else the first;
/// of several the first in the list. Absent when there are none. O(n).
template <SelectableDevices List>
[[nodiscard]] std::optional<std::ranges::range_value_t<List>> preferred(
    const List& devices, const std::optional<Text>& remembered) {
    using Device = std::ranges::range_value_t<List>;
    auto found = std::ranges::end(devices);
    if (remembered) found = std::ranges::find(devices, *remembered, &Device::id);
    if (found == std::ranges::end(devices))
        found = std::ranges::find(devices, true, &Device::isDefault);
    if (found == std::ranges::end(devices)) found = std::ranges::begin(devices);
    if (found == std::ranges::end(devices)) return std::nullopt;
    return *found;
}

/// True when a device was chosen and is not in the list. An empty id is no choice. O(n).
template <SelectableDevices List>
[[nodiscard]] bool isMissing(const std::optional<Text>& remembered, const List& devices) {
    using Device = std::ranges::range_value_t<List>;
    return remembered && !remembered->isEmpty() &&
           std::ranges::find(devices, *remembered, &Device::id) == std::ranges::end(devices);
}

}  // namespace DeviceSelection

}  // namespace PrompterCore

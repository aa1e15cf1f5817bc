#pragma once

// What to say and to offer when the system does not let us use the microphone or the camera.
//
//   summary(MicrophoneAccess::denied, CaptureKind::camera);
//   // "Camera access is turned off for Varnelle"
//   remedy(MicrophoneAccess::denied);           // MicrophoneRemedy::openSettings
//   title(MicrophoneRemedy::openSettings);      // "Open System Settings"

#include <optional>
#include <string_view>

#include "PrompterCore/support/Enumeration.h"

namespace PrompterCore {

/// What is to be captured.
enum class CaptureKind { microphone, camera };
template <>
struct Enumeration<CaptureKind> {
    struct Row {
        CaptureKind value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {
        {CaptureKind::microphone, "microphone"},
        {CaptureKind::camera, "camera"},
    };
};

/// Whether the system lets us use a capture device; a host maps the system's own states onto these.
enum class MicrophoneAccess {
    notDetermined,  ///< the user has not been asked yet
    authorized,
    denied,      ///< by the user
    restricted,  ///< by a policy that the user cannot change
};
template <>
struct Enumeration<MicrophoneAccess> {
    struct Row {
        MicrophoneAccess value;
        std::string_view caseName, rawValue;
    };
    static constexpr Row rows[] = {
        {MicrophoneAccess::notDetermined, "notDetermined", "notDetermined"},
        {MicrophoneAccess::authorized, "authorized", "authorized"},
        {MicrophoneAccess::denied, "denied", "denied"},
        {MicrophoneAccess::restricted, "restricted", "restricted"},
    };
};

/// The one action that a host offers. Its title is a button's label; `none` has none.
enum class MicrophoneRemedy {
    none,
    prompt,        ///< have the system ask the user
    openSettings,  ///< show the system's settings, where the user can change it
};
template <>
struct Enumeration<MicrophoneRemedy> {
    struct Row {
        MicrophoneRemedy value;
        std::string_view caseName;
        std::optional<std::string_view> title;
    };
    static constexpr Row rows[] = {
        {MicrophoneRemedy::none, "none", std::nullopt},
        {MicrophoneRemedy::prompt, "prompt", "Allow Microphone Access"},
        {MicrophoneRemedy::openSettings, "openSettings", "Open System Settings"},
    };
};

/// What helps: asking where nobody has been asked, the settings after a refusal.
[[nodiscard]] MicrophoneRemedy remedy(MicrophoneAccess access) noexcept;

/// The state in words for a user, without a full stop.
[[nodiscard]] std::string_view summary(MicrophoneAccess access, CaptureKind kind) noexcept;
/// The same, of the microphone.
[[nodiscard]] std::string_view summary(MicrophoneAccess access) noexcept;

}  // namespace PrompterCore

#pragma once

// What a take saves: a setting.
//
//   savesFile(RecordingMode::nothing);          // false
//   title(RecordingMode::soundOnly);            // "Sound only"
//   fromStored<RecordingMode>("soundOnly");     // RecordingMode::soundOnly

#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/StoredSetting.h"

namespace PrompterCore {

/// What a take saves; the first is what counts where nothing is stored.
enum class RecordingMode { cameraAndSound, soundOnly, nothing };

template <>
struct Enumeration<RecordingMode> {
    struct Row {
        RecordingMode value;
        std::string_view caseName, rawValue, title;
        std::string_view explanation;
        bool usesCamera, savesFile;
    };
    static constexpr Row rows[] = {
        {RecordingMode::cameraAndSound, "cameraAndSound", "cameraAndSound", "Camera and sound",
         "Each take saves the camera and the microphone as one video.", true, true},
        {RecordingMode::soundOnly, "soundOnly", "soundOnly", "Sound only",
         "Each take saves the microphone alone. The camera stays off.", false, true},
        {RecordingMode::nothing, "nothing", "nothing", "Nothing",
         "The prompter follows you, and no file is saved. For filming on a camera that records "
         "itself.",
         false, false},
    };
    static constexpr bool isSetting = true;
};

/// One sentence or two below the title in the settings.
[[nodiscard]] constexpr std::string_view explanation(RecordingMode mode) noexcept {
    return enumerationRow(mode).explanation;
}
/// Whether the camera is on during a take.
[[nodiscard]] constexpr bool usesCamera(RecordingMode mode) noexcept {
    return enumerationRow(mode).usesCamera;
}
/// Whether a take leaves a file.
[[nodiscard]] constexpr bool savesFile(RecordingMode mode) noexcept {
    return enumerationRow(mode).savesFile;
}

}  // namespace PrompterCore

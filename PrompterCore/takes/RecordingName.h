#pragma once

// What a take's file is called.
//
//   RecordingName::file("Launch: video", moment, TimeZone(), RecordingName::Kind::video);
//                                             // "Launch video 2025-03-05 at 14.07.09.mov"
//   RecordingName::safe("a/b:c");             // "a b c"
//   RecordingName::renamed("  ", "mov");      // absent: nothing is left of it

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/TimeZone.h"

namespace PrompterCore {

namespace RecordingName {

/// What a take's file holds.
enum class Kind { video, sound };

/// How many user-perceived characters a safe name has at most.
inline constexpr std::int64_t longestName = 60;

/// `name` as a part of a file's name: what some file systems refuse (/ \ : ? % * | " < >, also
/// inside a character, and control characters) becomes a blank, white space one space between
/// words and none around, and all behind the 60th character goes. May be empty.
[[nodiscard]] Text safe(const Text& name);

/// The name of a take begun at `moment`: the safe name of `script`, or "Prompter" where that is
/// absent or empty, the date and time on the clock of `timeZone`, and the kind's extension.
[[nodiscard]] Text file(const std::optional<Text>& script,
                        std::chrono::system_clock::time_point moment, const TimeZone& timeZone,
                        Kind kind);

/// Whether `name`, without an extension, still ends with the date and time that file() gave it.
/// Digits of any script count, and a line break may follow.
[[nodiscard]] bool isAutomatic(const Text& name);

/// The safe name of `name` with `extension` behind a full stop. Absent when the safe name is empty.
[[nodiscard]] std::optional<Text> renamed(const Text& name, const Text& extension);

}  // namespace RecordingName

template <>
struct Enumeration<RecordingName::Kind> {
    struct Row {
        RecordingName::Kind value;
        std::string_view caseName, fileExtension;
    };
    static constexpr Row rows[] = {
        {RecordingName::Kind::video, "video", "mov"},
        {RecordingName::Kind::sound, "sound", "m4a"},
    };
};

namespace RecordingName {

/// Without the full stop.
[[nodiscard]] constexpr std::string_view fileExtension(Kind kind) noexcept {
    return enumerationRow(kind).fileExtension;
}

}  // namespace RecordingName

}  // namespace PrompterCore

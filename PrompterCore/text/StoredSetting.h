#pragma once

// Settings outlive the version that wrote them: one that cannot be read falls back to its
// enumeration's first case instead of failing.
//
//   fromStored<RecordingMode>("soundOnly");   // RecordingMode::soundOnly
//   fromStored<RecordingMode>("SoundOnly");   // RecordingMode::cameraAndSound, the first case

#include <optional>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// The case whose raw value is `stored`, or the first case where nothing is stored or the text is
/// no raw value. Only for enumerations that are settings.
template <class E>
requires(Enumeration<E>::isSetting) [[nodiscard]] E fromStored(const std::optional<Text>& stored) {
    const auto found = stored ? fromRawValue<E>(*stored) : std::nullopt;
    return found.value_or(allCases<E>.front());
}

}  // namespace PrompterCore

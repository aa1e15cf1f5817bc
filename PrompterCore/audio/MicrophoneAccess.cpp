#include "PrompterCore/audio/MicrophoneAccess.h"

#include <algorithm>
#include <iterator>

#include "PrompterCore/support/Require.h"

namespace PrompterCore {

namespace {

struct Answer {
    MicrophoneAccess access;
    MicrophoneRemedy remedy;
    std::string_view microphone, camera;  // summaries
};

constexpr Answer answers[] = {
    {MicrophoneAccess::notDetermined, MicrophoneRemedy::prompt,
     "Varnelle needs the microphone to follow your voice",
     "Varnelle needs the camera to show a preview"},
    {MicrophoneAccess::authorized, MicrophoneRemedy::none, "Microphone access granted",
     "Camera access granted"},
    {MicrophoneAccess::denied, MicrophoneRemedy::openSettings,
     "Microphone access is turned off for Varnelle", "Camera access is turned off for Varnelle"},
    {MicrophoneAccess::restricted, MicrophoneRemedy::openSettings,
     "Microphone access is blocked by a system policy",
     "Camera access is blocked by a system policy"},
};

const Answer& answerTo(MicrophoneAccess access) noexcept {
    const Answer* const found = std::ranges::find(answers, access, &Answer::access);
    require(found != std::end(answers), "the access is a case of its enumeration");
    return *found;
}

}  // namespace

MicrophoneRemedy remedy(MicrophoneAccess access) noexcept { return answerTo(access).remedy; }

std::string_view summary(MicrophoneAccess access, CaptureKind kind) noexcept {
    const Answer& answer = answerTo(access);
    return kind == CaptureKind::microphone ? answer.microphone : answer.camera;
}

std::string_view summary(MicrophoneAccess access) noexcept {
    return summary(access, CaptureKind::microphone);
}

}  // namespace PrompterCore

#include "PrompterCore/takes/ControllerStatus.h"

#include <algorithm>

#include "PrompterCore/takes/ClockText.h"
#include "PrompterCore/text/Separator.h"

namespace PrompterCore {

ControllerStatus ControllerStatus::take(const TakeStep& step, bool reading,
                                        std::optional<std::int64_t> recordingSeconds) {
    return step.visit([](TakeStep::CountingDown left) { return countingDown(left.seconds); },
                      [&](TakeStep::Idle) { return reading ? practising() : ready(); },
                      [](TakeStep::Preparing) { return preparing(); },
                      [&](TakeStep::Running) { return recording(recordingSeconds.value_or(0)); });
}

std::string ControllerStatus::label() const {
    return visit([](CountingDown left) { return "Recording in " + std::to_string(left.seconds); },
                 [](Recording recorded) {
                     return "Recording" + std::string(separator) + clock(recorded.seconds);
                 },
                 [](Ready) { return std::string("Ready"); },
                 [](Preparing) { return std::string("Getting speech ready"); },
                 [](Practising) { return std::string("Practising"); });
}

ControllerStatus::Tone ControllerStatus::tone() const noexcept {
    return visit([](CountingDown) { return Tone::recording; },
                 [](Recording) { return Tone::recording; }, [](Ready) { return Tone::neutral; },
                 [](Preparing) { return Tone::waiting; },
                 [](Practising) { return Tone::practising; });
}

bool ControllerStatus::stepsBack() const noexcept { return *this != ready(); }

std::string ControllerStatus::clock(std::int64_t seconds) {
    const std::int64_t shown = std::max<std::int64_t>(seconds, 0);
    return atLeastTwoDigits(shown / 60) + ":" + atLeastTwoDigits(shown % 60);
}

}  // namespace PrompterCore

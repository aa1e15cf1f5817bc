#include "PrompterCore/audio/AudioInput.h"

namespace PrompterCore::AudioInputSelector {

std::optional<AudioInput> preferred(std::span<const AudioInput> inputs,
                                    const std::optional<Text>& remembered) {
    return DeviceSelection::preferred(inputs, remembered);
}

bool isMissing(const std::optional<Text>& remembered, std::span<const AudioInput> inputs) {
    return DeviceSelection::isMissing(remembered, inputs);
}

}  // namespace PrompterCore::AudioInputSelector

#pragma once

// A microphone, or whatever audio input stands in for it, as a source of sound that never ends.
//
//   Microphone microphone(Text("Lavalier"), complain);
//   microphone.read();          // what was said since the last call, 20 ms late
//
// Units: 48 000 samples a second, full scale 1.0.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/AudioInputs.h"
#include "host/SoundSource.h"

namespace Varnelle {

/// Listens to the input that was asked for while it is there, else to the one that the selection
/// rules give, and to no other: it changes over whenever inputs come or go, or the default changes,
/// and finds the sound server again when that was restarted. Meanwhile there is silence, as long as
/// it lasts: the sound's length is the time that has passed since the first `read`.
class Microphone final : public SoundSource {
public:
    /// Waits until the input is heard, five seconds at most. `asked` is an input's id or name;
    /// absent: the system's default. `tell` hears each change of what is listened to, in a
    /// sentence; by now, too, when what was asked for is missing. Throws Unavailable without a
    /// sound server or any input, or when we are not let in.
    Microphone(const std::optional<Text>& asked, std::function<void(const std::string&)> tell);
    ~Microphone() override;

    [[nodiscard]] double sampleRate() const override;
    /// What has been heard since the last call; the sound begins with the first one. Silence while
    /// nothing can be heard. Where the device's clock is not ours, some samples are left out, or
    /// some silence comes in, every few hours.
    std::vector<float> read() override;
    [[nodiscard]] std::optional<int> waitingFor() const override;
    [[nodiscard]] bool hasEnded() const override { return false; }
    /// What is different from what was asked for, at present.
    [[nodiscard]] std::optional<std::string> trouble() const override;

private:
    class Capture;
    std::unique_ptr<Capture> capture_;  // never null
};

}  // namespace Varnelle

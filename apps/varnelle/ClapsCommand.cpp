#include "apps/varnelle/ClapsCommand.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <fmt/format.h>

#include "PrompterCore/audio/ClapCommand.h"
#include "PrompterCore/audio/ClapDetector.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/SoundFileSource.h"

namespace Varnelle {

namespace {

using PrompterCore::ClapCommand;
using PrompterCore::ClapGesture;

std::string shown(const ClapGesture& gesture, std::optional<ClapCommand> command) {
    const std::string claps =
        gesture.count == 1 ? "1 clap" : fmt::format("{} claps", gesture.count);
    const std::string line =
        fmt::format("{:8.3f} s  {:8.3f} s  {:<9}  {}", gesture.firstClap, gesture.lastClap, claps,
                    command ? caseName(*command) : "");
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string asJsonLine(const ClapGesture& gesture, std::optional<ClapCommand> command) {
    return Json{{"count", gesture.count},
                {"firstClap", gesture.firstClap},
                {"lastClap", gesture.lastClap},
                {"command", command ? Json(caseName(*command)) : Json()}}
               .dump() +
           "\n";
}

// The gestures of one sound, and whether a take would be running.
class Hearing {
public:
    Hearing(double rate, bool json)
        : rate_(rate),
          bufferSize_(static_cast<std::size_t>(std::max(rate * 0.01, 1.0))),
          detector_(rate),
          json_(json) {}

    // In buffers of 10 ms, as a microphone would give them: a long one would lose gestures.
    void hear(std::span<const float> samples) {
        while (!samples.empty()) {
            const auto buffer = samples.first(std::min(bufferSize_, samples.size()));
            samples = samples.subspan(buffer.size());
            const double time = static_cast<double>(heard_) / rate_;
            heard_ += static_cast<std::int64_t>(buffer.size());
            for (const ClapGesture& gesture : detector_.feed(buffer, time)) {
                show(gesture);
            }
        }
    }

    // The last clap counts as if silence followed.
    void end() {
        hear(std::vector<float>(static_cast<std::size_t>(std::ceil(rate_ * 0.75)), 0.0F));
        output_.flush();
    }

private:
    void show(const ClapGesture& gesture) {
        const auto command = PrompterCore::clapCommandFor(gesture.count, recording_);
        if (command) recording_ = *command == ClapCommand::start;
        output_.write(json_ ? asJsonLine(gesture, command) : shown(gesture, command));
    }

    double rate_;
    std::size_t bufferSize_;
    PrompterCore::ClapDetector detector_;
    bool json_;
    std::int64_t heard_ = 0;  // samples
    bool recording_ = false;
    Output output_;
};

}  // namespace

ExitStatus clapsCommand(const std::string& name, bool json) {
    SoundFileSource sound(name);
    Hearing hearing(sound.sampleRate(), json);
    while (!sound.hasEnded()) {
        hearing.hear(sound.read());
    }
    hearing.end();
    const auto trouble = sound.trouble();
    if (trouble) complain(*trouble);
    return trouble ? ExitStatus::badData : ExitStatus::done;
}

}  // namespace Varnelle

#include "apps/varnelle/ClapsCommand.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <fmt/format.h>

#include "PrompterCore/audio/ClapCommand.h"
#include "PrompterCore/audio/ClapDetector.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/ClapsInSpeech.h"
#include "host/InputFile.h"
#include "host/LastClaps.h"
#include "host/SoundFileSource.h"
#include "host/SoundTail.h"

namespace Varnelle {

namespace {

using PrompterCore::ClapCommand;
using PrompterCore::ClapGesture;

// What a session would do.
struct Answer {
    std::optional<ClapCommand> command;  // absent for none
    bool standsOut = false;              // unless it does, no session obeys
};

// Only of two claps it matters whether they are louder than what is around them.
std::string saidOf(const ClapGesture& gesture, const Answer& answer) {
    if (answer.command) return std::string(caseName(*answer.command));
    const bool wouldCommand = PrompterCore::clapCommandFor(gesture.count, false).has_value();
    return wouldCommand && !answer.standsOut ? "not obeyed: softer than the sound around them" : "";
}

std::string shown(const ClapGesture& gesture, const Answer& answer) {
    const std::string claps =
        gesture.count == 1 ? "1 clap" : fmt::format("{} claps", gesture.count);
    const std::string line = fmt::format("{:8.3f} s  {:8.3f} s  {:<9}  {}", gesture.firstClap,
                                         gesture.lastClap, claps, saidOf(gesture, answer));
    return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string asJsonLine(const ClapGesture& gesture, const Answer& answer) {
    return Json{{"count", gesture.count},
                {"firstClap", gesture.firstClap},
                {"lastClap", gesture.lastClap},
                {"standsOut", answer.standsOut},
                {"command", answer.command ? Json(caseName(*answer.command)) : Json()}}
               .dump() +
           "\n";
}

constexpr double remembered = 3;  // seconds, of which a gesture's surroundings are

// The gestures of one sound, and whether a take would be running.
class Hearing {
public:
    Hearing(double rate, bool json)
        : rate_(rate),
          bufferSize_(static_cast<std::size_t>(std::max(rate * 0.01, 1.0))),
          detector_(rate),
          tail_(static_cast<std::int64_t>(std::ceil(rate * remembered))),
          json_(json) {}

    // In buffers of 10 ms, as a microphone would give them: a long one would lose gestures.
    void hear(std::span<const float> samples) {
        while (!samples.empty()) {
            const auto buffer = samples.first(std::min(bufferSize_, samples.size()));
            samples = samples.subspan(buffer.size());
            const double start = time();
            tail_.append(buffer);
            show(detector_.feed(buffer, start));
        }
    }

    void end() {
        show(lastClaps(detector_, rate_, time()));
        output_.flush();
    }

    double time() const { return static_cast<double>(tail_.end()) / rate_; }
    bool hasHeard() const { return hasHeard_; }

private:
    void show(const std::vector<ClapGesture>& gestures) {
        for (const ClapGesture& gesture : gestures) {
            show(gesture);
        }
    }

    void show(const ClapGesture& gesture) {
        Answer answer{.command = std::nullopt, .standsOut = standOut(gesture, tail_, rate_)};
        if (answer.standsOut)
            answer.command = PrompterCore::clapCommandFor(gesture.count, recording_);
        if (answer.command) recording_ = *answer.command == ClapCommand::start;
        output_.write(json_ ? asJsonLine(gesture, answer) : shown(gesture, answer));
        hasHeard_ = true;
    }

    double rate_;
    std::size_t bufferSize_;
    PrompterCore::ClapDetector detector_;
    SoundTail tail_;
    bool json_;
    bool recording_ = false;
    bool hasHeard_ = false;
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
    if (!hearing.hasHeard() && !json)
        complain(
            fmt::format("{}: no claps in its {:.0f} seconds", shownName(name), hearing.time()));
    return trouble ? ExitStatus::badData : ExitStatus::done;
}

void addClaps(CLI::App& app, ExitStatus& exit) {
    const auto file = std::make_shared<std::string>();
    const auto json = std::make_shared<bool>(false);
    CLI::App& clapsApp = *app.add_subcommand(
        "claps",
        "Examples:\n"
        "  varnelle claps take.wav\n"
        "  varnelle claps take.wav --json\n\n"
        "Says which hand claps are heard in AUDIO, and whether they would start or stop a take.");
    clapsApp.add_option("AUDIO", *file, "a sound file; - is standard input")->required();
    clapsApp.add_flag("--json", *json, "one JSON object for each group of claps");
    clapsApp.callback([file, json, &exit] { exit = clapsCommand(*file, *json); });
}

}  // namespace Varnelle

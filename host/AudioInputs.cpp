#include "host/AudioInputs.h"

#include <algorithm>

#include "host/Failures.h"
#include "host/PulseServer.h"

namespace Varnelle {

AudioInputs audioInputsFrom(std::span<const AudioSource> sources,
                            const std::optional<Text>& asked) {
    const auto named = [&](const auto& field) {
        return asked && !asked->isEmpty()
                   ? std::ranges::find_if(sources,
                                          [&](const AudioSource& s) { return field(s) == *asked; })
                   : sources.end();
    };
    auto wanted = named([](const AudioSource& source) { return source.input.id; });
    if (wanted == sources.end())
        wanted = named([](const AudioSource& source) { return source.input.name; });

    AudioInputs result;
    for (auto source = sources.begin(); source != sources.end(); ++source) {
        if (!source->isMonitor || source->input.isDefault || source == wanted)
            result.inputs.push_back(source->input);
    }
    result.remembered = wanted == sources.end() ? asked : wanted->input.id;
    result.chosen = PrompterCore::AudioInputSelector::preferred(result.inputs, result.remembered);
    result.isMissing =
        PrompterCore::AudioInputSelector::isMissing(result.remembered, result.inputs);
    return result;
}

std::string reasonFor(const AudioInputs& inputs) {
    if (!inputs.chosen) return "there is no input";
    const std::string missing =
        inputs.isMissing ? inputs.remembered->utf8() + " is not connected; " : "";
    if (inputs.remembered == inputs.chosen->id) return "it was asked for";
    return missing + (inputs.chosen->isDefault ? "it is the default" : "it is the first");
}

std::optional<std::string> troubleWith(const AudioInputs& inputs) {
    if (!inputs.chosen && !inputs.isMissing) return "no microphone is connected";
    if (!inputs.isMissing) return std::nullopt;
    return inputs.remembered->utf8() + " is not connected; " +
           (inputs.chosen ? "listening to " + inputs.chosen->name.utf8()
                          : "there is no other microphone");
}

std::vector<AudioSource> listAudioSources() {
    PulseServer server;
    server.waitUntil([&] { return server.sources().has_value(); });
    return *server.sources();
}

}  // namespace Varnelle

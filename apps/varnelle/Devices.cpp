#include "apps/varnelle/Devices.h"

#include <fmt/format.h>

#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/AudioInputs.h"

namespace Varnelle {

namespace {

Json asJson(const AudioInputs& inputs) {
    Json list = Json::array();
    for (const AudioInput& input : inputs.inputs) {
        list.push_back(
            {{"id", input.id.utf8()}, {"name", input.name.utf8()}, {"isDefault", input.isDefault}});
    }
    return {{"inputs", list},
            {"chosen", inputs.chosen ? Json(inputs.chosen->id.utf8()) : Json()},
            {"isMissing", inputs.isMissing},
            {"reason", reasonFor(inputs)}};
}

void print(const AudioInputs& inputs, Output& output) {
    for (const AudioInput& input : inputs.inputs) {
        const bool isChosen = inputs.chosen && inputs.chosen->id == input.id;
        output.line(fmt::format("{} {}  {}{}", isChosen ? "*" : " ", shown(input.id.utf8()),
                                shown(input.name.utf8()), input.isDefault ? "  (default)" : ""));
    }
    output.line(inputs.chosen
                    ? fmt::format("{} would be listened to: {}", shown(inputs.chosen->name.utf8()),
                                  shown(reasonFor(inputs)))
                    : "Nothing would be listened to: " + shown(reasonFor(inputs)));
}

}  // namespace

std::optional<PrompterCore::Text> askedInput(const std::string& argument) {
    if (argument.empty()) return std::nullopt;
    return PrompterCore::Text(argument);
}

void showDevices(const std::string& remembered, bool json) {
    const AudioInputs inputs = audioInputsFrom(listAudioSources(), askedInput(remembered));
    Output output;
    if (json) {
        output.line(asJson(inputs).dump(2));
    } else {
        print(inputs, output);
    }
    output.flush();
}

}  // namespace Varnelle

#include "apps/varnelle/Devices.h"

#include <memory>

#include <fmt/format.h>

#include "apps/varnelle/CommandLine.h"
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

void addDevices(CLI::App& app) {
    const auto remembered = std::make_shared<std::string>();
    const auto json = std::make_shared<bool>(false);
    CLI::App& devicesApp = *app.add_subcommand("devices",
                                               "Examples:\n"
                                               "  varnelle devices\n"
                                               "  varnelle devices --remembered Lavalier\n\n"
                                               "The audio inputs that are there, and which one "
                                               "would be listened to.");
    devicesApp.add_option("--remembered", *remembered, "the id or name of the input last chosen");
    devicesApp.add_flag("--json", *json, "the inputs as JSON");
    devicesApp.callback([remembered, json] { showDevices(*remembered, *json); });
}

}  // namespace Varnelle

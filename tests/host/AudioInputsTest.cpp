#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/AudioInputs.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

const AudioSource builtIn{.input = {"alsa.built-in", "Built-in", true}, .isMonitor = false};
const AudioSource lavalier{.input = {"usb.lavalier", "Lavalier", false}, .isMonitor = false};
const AudioSource speakers{.input = {"alsa.monitor", "Monitor of Speakers", false},
                           .isMonitor = true};
const std::vector<AudioSource> all{speakers, builtIn, lavalier};

std::string chosenOf(const std::vector<AudioSource>& sources, const std::optional<Text>& asked) {
    const AudioInputs inputs = audioInputsFrom(sources, asked);
    return (inputs.chosen ? inputs.chosen->id.utf8() : "none") + ": " + reasonFor(inputs) + " / " +
           troubleWith(inputs).value_or("no trouble");
}

TEST(AudioInputs, ChoiceAndItsReason) {
    struct Case {
        const char* what;
        std::vector<AudioSource> sources;
        std::optional<Text> asked;
        const char* chosen;
    };
    const Case cases[] = {
        {"no wish", all, {}, "alsa.built-in: it is the default / no trouble"},
        {"an empty wish", all, Text(""), "alsa.built-in: it is the default / no trouble"},
        {"by id", all, Text("usb.lavalier"), "usb.lavalier: it was asked for / no trouble"},
        {"by name", all, Text("Lavalier"), "usb.lavalier: it was asked for / no trouble"},
        {"a monitor by name", all, Text("Monitor of Speakers"),
         "alsa.monitor: it was asked for / no trouble"},
        {"not there", all, Text("Booth"),
         "alsa.built-in: Booth is not connected; it is the default / "
         "Booth is not connected; listening to Built-in"},
        {"no default", {speakers, lavalier}, {}, "usb.lavalier: it is the first / no trouble"},
        {"only a monitor", {speakers}, {}, "none: there is no input / no microphone is connected"},
        {"nothing", {}, {}, "none: there is no input / no microphone is connected"},
        {"nothing, and a wish",
         {},
         Text("Booth"),
         "none: there is no input / Booth is not connected; there is no other microphone"},
    };
    for (const auto& [what, sources, asked, chosen] : cases) {
        EXPECT_EQ(chosenOf(sources, asked), chosen) << what;
    }
}

TEST(AudioInputs, MonitorsAreInputsOnlyWhenMeant) {
    EXPECT_EQ(audioInputsFrom(all, {}).inputs,
              (std::vector<AudioInput>{builtIn.input, lavalier.input}));
    EXPECT_EQ(audioInputsFrom(all, Text("alsa.monitor")).inputs.size(), 3U);
    AudioSource playing = speakers;
    playing.input.isDefault = true;
    EXPECT_EQ(audioInputsFrom({{playing}}, {}).inputs, (std::vector<AudioInput>{playing.input}));
}

TEST(AudioInputs, AnIdGoesBeforeAName) {
    AudioSource other = builtIn;
    other.input = {"x", "usb.lavalier", false};
    EXPECT_EQ(audioInputsFrom({{other, lavalier}}, Text("usb.lavalier")).chosen, lavalier.input);
    AudioSource twin = lavalier;
    twin.input.id = "usb.twin";
    EXPECT_EQ(audioInputsFrom({{twin, lavalier}}, Text("Lavalier")).chosen, twin.input);
}

}  // namespace
}  // namespace Varnelle

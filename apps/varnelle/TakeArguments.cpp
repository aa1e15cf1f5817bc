// The arguments of `varnelle take`.

#include <cstdint>
#include <memory>
#include <string>

#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/FollowArguments.h"
#include "apps/varnelle/TakeCommand.h"

namespace Varnelle {

namespace {

void addTakeOptions(CLI::App& command, TakeArguments& arguments) {
    command.add_option("SCRIPT", arguments.script, "the script, UTF-8 text; - is standard input")
        ->required();
    auto* const audio =
        command.add_option("--audio", arguments.audio, "a recorded session; - is standard input");
    auto* const microphone =
        command
            .add_option_function<std::string>(
                "--microphone",
                [&arguments](const std::string& input) { arguments.microphone = input; },
                "an audio input by its id or name; without one, the default")
            ->expected(0, 1)
            ->type_name("[NAME]")
            ->excludes(audio);
    for (const char* pace : {"--speed", "--fast"}) {
        microphone->excludes(command.get_option(pace));
    }
    command.add_option("--to", arguments.folder, "the folder for the takes")->required();
    command
        .add_option("--countdown", arguments.countdown,
                    "seconds before a take begins (default 5 at a microphone, else 0)")
        ->check(numberBetween<std::int64_t>(0, 3600));
    command.add_flag_callback(
        "--no-claps", [&arguments] { arguments.listensForClaps = false; },
        "record at once; claps are no commands");
    command.add_flag("--continue", arguments.goesOn,
                     "go on in the script where the last take ended");
    command.add_option_function<std::string>(
        "--time-zone",
        [&arguments](const std::string& identifier) {
            const auto zone = PrompterCore::TimeZone::fromIdentifier(identifier);
            if (!zone) throw CLI::ValidationError("--time-zone", identifier + " is no time zone");
            arguments.timeZone = *zone;
        },
        "the takes' names say the time there (default: here)");
}

void checkTake(const TakeArguments& take) {
    if (!take.audio && !take.microphone)
        throw CLI::ValidationError("take", "--audio or --microphone says what to record");
    if (take.script == "-" && take.audio == "-")
        throw CLI::ValidationError("take", "only one thing can be read from standard input");
}

}  // namespace

void addTake(CLI::App& app, ExitStatus& exit) {
    const auto take = std::make_shared<TakeArguments>();
    const auto taken = std::make_shared<FollowArguments>();
    CLI::App& takeApp = *app.add_subcommand(
        "take",
        "Examples:\n"
        "  varnelle take talk.txt --microphone --to Takes\n"
        "  varnelle take talk.txt --audio session.wav --to Takes\n\n"
        "Records takes of SCRIPT. Two claps begin a take after a countdown, two claps end it.\n"
        "From a sound file the takes are cut out, as fast as it goes unless --speed is given.");
    addFollowOptions(takeApp, *taken);
    addTakeOptions(takeApp, *take);
    takeApp.callback([take, taken, &exit] {
        checkTake(*take);
        // Cutting takes out of a recording is no reading: nobody watches, unless they say how fast.
        if (take->audio && !taken->speed) taken->fast = taken->plain = true;
        exit = takeCommand(*take, taken->options(Unseen::inTime));
    });
}

}  // namespace Varnelle

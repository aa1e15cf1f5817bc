#include "apps/varnelle/FollowArguments.h"

#include <memory>
#include <vector>

#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Demo.h"
#include "apps/varnelle/Output.h"

namespace Varnelle {

namespace {

// What is only understood when all arguments are there.
struct Written {
    std::string format;
    std::string input;
};

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for (const WordsFormat format : PrompterCore::allCases<WordsFormat>) {
        names.emplace_back(rawValue(format));
    }
    return names;
}

}  // namespace

FollowOptions FollowArguments::options(Unseen unseen) const {
    const bool onScreen = !json && !plain && isTerminal();
    FollowOptions options{.display = json       ? FollowDisplay::json
                                     : onScreen ? FollowDisplay::screen
                                                : FollowDisplay::lines,
                          .colour = wantsColour(),
                          .panel = panel,
                          .speed = speed.value_or(1),
                          .framesPerSecond = framesPerSecond,
                          .width = static_cast<double>(width)};
    if (fast || (unseen == Unseen::asFastAsItGoes && !onScreen && !speed))
        options.speed = std::nullopt;
    return options;
}

void addFollowOptions(CLI::App& command, FollowArguments& arguments) {
    auto* const speed =
        command.add_option("--speed", arguments.speed, "play this many times as fast (default 1)")
            ->check(numberBetween(0.01, 100.0));
    command.add_flag("--fast", arguments.fast, "as fast as it goes")->excludes(speed);
    auto* const json = command.add_flag("--json", arguments.json, "JSON Lines on standard output");
    command.add_flag("--plain", arguments.plain, "lines of text, no screen")->excludes(json);
    command.add_flag("--panel", arguments.panel,
                     "on the screen a few lines and the progress, no scrolling text");
    command
        .add_option("--frames-per-second", arguments.framesPerSecond,
                    "frames for each second of the sound")
        ->check(numberBetween(1.0, 1000.0))
        ->capture_default_str();
    command.add_option("--width", arguments.width, "columns of a prompt line without a screen")
        ->check(numberBetween<std::int64_t>(1, 1'000'000))
        ->capture_default_str();
}

void addFollow(CLI::App& app, ExitStatus& exit) {
    const auto follow = std::make_shared<FollowArguments>();
    const auto written = std::make_shared<Written>();
    CLI::App& followApp = *app.add_subcommand(
        "follow",
        "Examples:\n"
        "  varnelle follow talk.txt --audio talk.flac\n"
        "  varnelle follow talk.txt --audio talk.flac --fast --json\n"
        "  varnelle follow talk.txt --microphone\n"
        "  recogniser | varnelle follow talk.txt --words -\n\n"
        "Follows a reading of SCRIPT. On a terminal: the full-screen prompter.");
    followApp.add_option("SCRIPT", follow->script, "the script, UTF-8 text; - is standard input")
        ->required();
    auto* const audio =
        followApp.add_option("--audio", follow->source.audio, "a sound file; - is standard input");
    auto* const words = followApp.add_option("--words", follow->source.words,
                                             "recognised words; - is standard input");
    followApp
        .add_option("--format", written->format, "their form, where they do not say it themselves")
        ->needs(words)
        ->check(CLI::IsMember(formatNames()));
    auto* const microphone =
        followApp
            .add_option("--microphone", written->input,
                        "an audio input by its id or name; without one, the default")
            ->expected(0, 1)
            ->type_name("[NAME]");
    audio->excludes(words);
    microphone->excludes(audio)->excludes(words);
    addFollowOptions(followApp, *follow);
    for (const char* pace : {"--speed", "--fast"}) {
        microphone->excludes(followApp.get_option(pace));
    }
    followApp.callback([follow, written, microphone, &exit] {
        FollowSource& source = follow->source;
        if (microphone->count() > 0) source.microphone = written->input;
        source.format =
            PrompterCore::fromRawValue<WordsFormat>(written->format);  // absent for none
        if (!source.audio && !source.words && !source.microphone)
            throw CLI::ValidationError("follow",
                                       "--audio, --microphone or --words says what to follow");
        if (follow->script == "-" && (source.audio == "-" || source.words == "-"))
            throw CLI::ValidationError("follow", "only one thing can be read from standard input");
        exit = followCommand(follow->script, source, follow->options(Unseen::inTime));
    });
}

void addDemo(CLI::App& app, ExitStatus& exit) {
    const auto shown = std::make_shared<FollowArguments>();
    CLI::App& demoApp = *app.add_subcommand(
        "demo",
        "Examples:\n"
        "  varnelle demo\n"
        "  varnelle demo --fast --plain\n\n"
        "Follows the sample that comes with the program and says what it measured. Without a\n"
        "terminal to show it on it goes as fast as it can.");
    addFollowOptions(demoApp, *shown);
    demoApp.callback([shown, &exit] { exit = demo(shown->options(Unseen::asFastAsItGoes)); });
}

}  // namespace Varnelle

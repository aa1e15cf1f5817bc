// The command `varnelle`: its arguments, and what becomes of a failure. What is decided is decided
// in the library; what is shown is in the other files of this folder.

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "apps/varnelle/Demo.h"
#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/FollowCommand.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/ShowScript.h"
#include "host/Failures.h"

namespace {

using namespace Varnelle;  // NOLINT

constexpr const char* exitStatuses =
    "Exit status: 0 done, 2 wrong usage, 65 bad data, 66 no such input, 69 device or service\n"
    "missing, 74 output cannot be written, 130 interrupted.";

// NO_COLOR counts when it says anything at all.
bool wantsColour() {
    const char* const refused = std::getenv("NO_COLOR");
    return refused == nullptr || *refused == '\0';
}

// The pace of a reading that nobody watches on a screen, unless the arguments say it.
enum class Unseen { inTime, asFastAsItGoes };

struct FollowArguments {
    std::string script;
    std::optional<std::string> audio;
    std::optional<std::string> words;
    std::optional<double> speed;
    bool fast = false;
    bool json = false;
    bool plain = false;
    double framesPerSecond = 30;
    std::int64_t width = 40;

    FollowOptions options(Unseen unseen) const {
        const bool onScreen = !json && !plain && isTerminal();
        FollowOptions options{.display = json       ? FollowDisplay::json
                                         : onScreen ? FollowDisplay::screen
                                                    : FollowDisplay::lines,
                              .colour = wantsColour(),
                              .speed = speed.value_or(1),
                              .framesPerSecond = framesPerSecond,
                              .width = static_cast<double>(width)};
        if (fast || (unseen == Unseen::asFastAsItGoes && !onScreen && !speed))
            options.speed = std::nullopt;
        return options;
    }
};

// The list of sub-commands says what each one is for; its own help begins with its examples.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_subcommand(const CLI::App* command) const override {
        const std::string description = command->get_description();
        std::ostringstream out;
        CLI::detail::format_help(out, command->get_display_name(true),
                                 description.substr(description.rfind("\n\n") + 2),
                                 get_column_width());
        return out.str();
    }
};

// What is no number at all, "nan" among it, is refused as well.
template <class Number>
CLI::Validator numberBetween(Number least, Number most) {
    return {[least, most](std::string& written) {
                Number value{};
                return CLI::detail::lexical_cast(written, value) && value >= least && value <= most
                           ? std::string()
                           : fmt::format("{} is no {}number from {} to {}", written,
                                         std::is_integral_v<Number> ? "whole " : "", least, most);
            },
            ""};
}

void addFollowOptions(CLI::App& command, FollowArguments& arguments) {
    auto* const speed =
        command.add_option("--speed", arguments.speed, "play this many times as fast (default 1)")
            ->check(numberBetween(0.01, 100.0));
    command.add_flag("--fast", arguments.fast, "as fast as it goes")->excludes(speed);
    auto* const json = command.add_flag("--json", arguments.json, "JSON Lines on standard output");
    command.add_flag("--plain", arguments.plain, "a line for each aligned position, no screen")
        ->excludes(json);
    command
        .add_option("--frames-per-second", arguments.framesPerSecond,
                    "frames for each second of the sound")
        ->check(numberBetween(1.0, 1000.0))
        ->capture_default_str();
    command.add_option("--width", arguments.width, "columns of a prompt line without a screen")
        ->check(numberBetween<std::int64_t>(1, 1'000'000))
        ->capture_default_str();
}

int status(ExitStatus exit) { return static_cast<int>(exit); }

int failed(const std::string& why, ExitStatus exit) {
    complain(why);
    return status(exit);
}

std::string whatIsWrong(const CLI::App& app, const CLI::Error& error) {
    if (!app.get_subcommands().empty()) return error.what();
    const std::vector<std::string> rest = app.remaining();
    return (rest.empty() ? "a sub-command is missing" : rest.front() + " is no sub-command") +
           "; varnelle --help shows them";
}

int run(int argc, char** argv) {
    CLI::App app(
        "Examples:\n"
        "  varnelle demo                              the sample, followed on this terminal\n"
        "  varnelle follow talk.txt --audio talk.wav  the prompter follows a recorded reading\n"
        "  varnelle script talk.txt                   words, reading time and chapters\n"
        "  varnelle lines talk.txt --width 40         the prompt lines\n\n"
        "A teleprompter that follows the reader's voice.",
        "varnelle");
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(exitStatuses);
    app.set_version_flag("--version", "varnelle " VARNELLE_VERSION);
    app.require_subcommand(1);

    ExitStatus exit = ExitStatus::done;

    FollowArguments follow;
    CLI::App& followApp = *app.add_subcommand(
        "follow",
        "Examples:\n"
        "  varnelle follow talk.txt --audio talk.flac\n"
        "  varnelle follow talk.txt --audio talk.flac --fast --json\n"
        "  recogniser | varnelle follow talk.txt --words -\n\n"
        "Follows a reading of SCRIPT. On a terminal: the full-screen prompter.");
    followApp.add_option("SCRIPT", follow.script, "the script, UTF-8 text; - is standard input")
        ->required();
    auto* const audio =
        followApp.add_option("--audio", follow.audio, "a sound file; - is standard input");
    auto* const words = followApp.add_option("--words", follow.words,
                                             "recognised words as JSON Lines; - is standard input");
    audio->excludes(words);
    addFollowOptions(followApp, follow);
    followApp.callback([&] {
        if (!follow.audio && !follow.words)
            throw CLI::ValidationError("follow", "--audio or --words says what to follow");
        if (follow.script == "-" && (follow.audio == "-" || follow.words == "-"))
            throw CLI::ValidationError("follow", "only one thing can be read from standard input");
        exit = followCommand(follow.script, follow.audio, follow.words,
                             follow.options(Unseen::inTime));
    });

    FollowArguments shown;
    CLI::App& demoApp = *app.add_subcommand(
        "demo",
        "Examples:\n"
        "  varnelle demo\n"
        "  varnelle demo --fast --plain\n\n"
        "Follows the sample that comes with the program and says what it measured. Without a\n"
        "terminal to show it on it goes as fast as it can.");
    addFollowOptions(demoApp, shown);
    demoApp.callback([&] { exit = demo(shown.options(Unseen::asFastAsItGoes)); });

    std::string script;
    bool json = false;
    std::int64_t width = 40;
    CLI::App& scriptApp = *app.add_subcommand(
        "script",
        "Examples:\n"
        "  varnelle script talk.txt\n"
        "  varnelle script talk.txt --json\n\n"
        "Says what SCRIPT is: words, reading time, chapters with their starts.");
    scriptApp.add_option("SCRIPT", script, "the script; - is standard input")->required();
    scriptApp.add_flag("--json", json, "everything that is derived from the text, as JSON");
    scriptApp.callback([&] { showScript(script, json); });

    CLI::App& linesApp = *app.add_subcommand("lines",
                                             "Examples:\n"
                                             "  varnelle lines talk.txt --width 40\n"
                                             "  varnelle lines talk.txt --width 40 --json\n\n"
                                             "Breaks SCRIPT into prompt lines.");
    linesApp.add_option("SCRIPT", script, "the script; - is standard input")->required();
    linesApp.add_option("--width", width, "columns of a line")
        ->check(numberBetween<std::int64_t>(1, 1'000'000))
        ->capture_default_str();
    linesApp.add_flag("--json", json, "the lines as JSON");
    linesApp.callback([&] { showLines(script, width, json); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        std::ostringstream asked;  // help or version
        app.exit(success, asked, asked);
        Output output;
        output.write(asked.str());
        output.flush();
    } catch (const CLI::Error& error) {
        return failed(whatIsWrong(app, error), ExitStatus::usage);
    }
    return status(exit);
}

// A standard stream that our caller has closed stays one that fails: else the first file we open
// would take its place.
void holdClosedStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    }
}

}  // namespace

int main(int argc, char** argv) {
    holdClosedStreams();
    // A reader of our output that goes away is noticed by the write that fails.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(argc, argv);
    } catch (const NoInput& failure) {
        return failed(failure.what(), ExitStatus::noInput);
    } catch (const BadData& failure) {
        return failed(failure.what(), ExitStatus::badData);
    } catch (const Unavailable& failure) {
        return failed(failure.what(), ExitStatus::unavailable);
    } catch (const CannotWrite& failure) {
        return failed(failure.what(), ExitStatus::cannotWrite);
    } catch (const OutputClosed&) {
        return status(ExitStatus::done);
    }
}

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

#include "apps/varnelle/CameraCommand.h"
#include "apps/varnelle/Chapters.h"
#include "apps/varnelle/ClapsCommand.h"
#include "apps/varnelle/ColoursCommand.h"
#include "apps/varnelle/Demo.h"
#include "apps/varnelle/Devices.h"
#include "apps/varnelle/DiffCommand.h"
#include "apps/varnelle/Doctor.h"
#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/FollowCommand.h"
#include "apps/varnelle/LibraryCommand.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/SecretCommand.h"
#include "apps/varnelle/ShowScript.h"
#include "apps/varnelle/TakeCommand.h"
#include "host/Failures.h"

namespace {

using namespace Varnelle;  // NOLINT

constexpr const char* exitStatuses =
    "Exit status: 0 done, 1 nothing found, 2 wrong usage, 65 bad data, 66 no such input, 69\n"
    "device or service missing, 74 output cannot be written, 130 interrupted.";

// NO_COLOR counts when it says anything at all.
bool wantsColour() {
    const char* const refused = std::getenv("NO_COLOR");
    return refused == nullptr || *refused == '\0';
}

// The pace of a reading that nobody watches on a screen, unless the arguments say it.
enum class Unseen { inTime, asFastAsItGoes };

struct FollowArguments {
    std::string script;
    FollowSource source;
    std::optional<double> speed;
    bool fast = false;
    bool json = false;
    bool plain = false;
    bool panel = false;
    double framesPerSecond = 30;
    std::int64_t width = 40;

    FollowOptions options(Unseen unseen) const {
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
};

// The list of sub-commands says what each one is for; its own help begins with its examples.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_subcommand(const CLI::App* command) const override {
        const std::string description = command->get_description();
        const std::size_t examples = description.rfind("\n\n");
        std::ostringstream out;
        CLI::detail::format_help(
            out, command->get_display_name(true),
            examples == std::string::npos ? description : description.substr(examples + 2),
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
    command.add_flag("--plain", arguments.plain, "lines of text, no screen")
        ->excludes(json);
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

struct ChapterArguments {
    EditedScript script;
    std::string title;
    std::optional<std::string> text;
    std::optional<std::int64_t> before;
    std::int64_t chapter = 0;
    std::int64_t destination = 0;
    bool keepText = false;
    bool json = false;
};

// `varnelle chapters` with its verbs. `exit` outlives the parsing.
void addChapters(CLI::App& app, ExitStatus& exit) {
    const auto arguments = std::make_shared<ChapterArguments>();
    const auto anyChapter = numberBetween<std::int64_t>(1, std::int64_t{1} << 60);
    CLI::App& command =
        *app.add_subcommand("chapters",
                            "Examples:\n"
                            "  varnelle chapters talk.txt\n"
                            "  varnelle chapters talk.txt move 3 1 > moved.txt\n"
                            "  varnelle chapters talk.txt rename 2 \"The Keeper\" --in-place\n\n"
                            "Lists the chapters of SCRIPT, or edits one of them. Chapters count "
                            "from 1; the edited text\n"
                            "goes to standard output unless it is written back.");
    command.require_subcommand(0, 1);
    command.add_option("SCRIPT", arguments->script.file, "the script; - is standard input")
        ->required();
    auto* const json = command.add_flag("--json", arguments->json, "the list as JSON");

    const auto verb = [&](const char* name, const char* example, const char* what) {
        return command.add_subcommand(
            name, fmt::format("Example:\n  varnelle chapters talk.txt {}\n\n{}", example, what));
    };
    const auto number = [&](CLI::App* verbApp, const char* name, std::int64_t& value,
                            const char* what) {
        verbApp->add_option(name, value, what)->required()->check(anyChapter);
    };
    const auto inPlace = [&](CLI::App* verbApp) {
        verbApp->add_flag("--in-place", arguments->script.isInPlace,
                          "write SCRIPT anew instead, all of it or nothing");
    };
    // What is asked for, when the arguments make sense.
    const auto run = [&exit, arguments, json](CLI::App* verbApp, auto edit) {
        verbApp->callback([&exit, arguments, json, edit] {
            const ChapterArguments& asked = *arguments;
            if (json->count() > 0)
                throw CLI::ValidationError("chapters", "--json is for the list of chapters");
            if (asked.script.file == "-" && asked.script.isInPlace)
                throw CLI::ValidationError("chapters", "standard input has no place to write to");
            if (asked.script.file == "-" && asked.text == "-")
                throw CLI::ValidationError("chapters",
                                           "only one thing can be read from standard input");
            exit = edit(asked);
        });
    };

    CLI::App* const add =
        verb("add", "add \"The End\" --text end.txt", "Makes a chapter at the end.");
    add->add_option("TITLE", arguments->title, "its title")->required();
    add->add_option("--text", arguments->text, "a file with its text; - is standard input");
    add->add_option("--before", arguments->before, "in front of this chapter instead")
        ->check(anyChapter);
    inPlace(add);
    run(add, [](const ChapterArguments& asked) {
        return addChapter(asked.script, asked.title, asked.text, asked.before);
    });

    CLI::App* const rename = verb("rename", "rename 2 \"The Keeper\"", "Gives a chapter a title.");
    number(rename, "CHAPTER", arguments->chapter, "which one");
    rename->add_option("TITLE", arguments->title, "its new title")->required();
    inPlace(rename);
    run(rename, [](const ChapterArguments& asked) {
        return renameChapter(asked.script, asked.chapter, asked.title);
    });

    CLI::App* const remove = verb("remove", "remove 2 --keep-text", "Takes a chapter out.");
    number(remove, "CHAPTER", arguments->chapter, "which one");
    remove->add_flag("--keep-text", arguments->keepText,
                     "only its heading; the text joins the chapter before");
    inPlace(remove);
    run(remove, [](const ChapterArguments& asked) {
        return removeChapter(asked.script, asked.chapter, asked.keepText);
    });

    CLI::App* const move = verb("move", "move 3 1", "Moves a chapter to another place.");
    number(move, "CHAPTER", arguments->chapter, "which one");
    number(move, "PLACE", arguments->destination, "the number that it has then");
    inPlace(move);
    run(move, [](const ChapterArguments& asked) {
        return moveChapter(asked.script, asked.chapter, asked.destination);
    });

    CLI::App* const replace =
        verb("replace", "replace 2 keeper.txt", "Gives a chapter another text.");
    number(replace, "CHAPTER", arguments->chapter, "which one");
    replace->add_option("TEXT", arguments->text, "a file with its text; - is standard input")
        ->required();
    inPlace(replace);
    run(replace, [](const ChapterArguments& asked) {
        return replaceChapter(asked.script, asked.chapter, *asked.text);
    });

    CLI::App* const excerpt =
        verb("excerpt", "excerpt 2", "Cuts a chapter out, to be prompted by itself.");
    number(excerpt, "CHAPTER", arguments->chapter, "which one");
    run(excerpt, [](const ChapterArguments& asked) {
        return excerptChapter(asked.script.file, asked.chapter);
    });

    command.callback([&command, arguments] {
        if (command.get_subcommands().empty())
            listChapters(arguments->script.file, arguments->json);
    });
}

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for (const WordsFormat format : PrompterCore::allCases<WordsFormat>) {
        names.emplace_back(rawValue(format));
    }
    return names;
}

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

void addSecret(CLI::App& app, ExitStatus& exit) {
    CLI::App& command =
        *app.add_subcommand("secret",
                            "Examples:\n"
                            "  varnelle secret set com.example.transcripts < value.txt\n"
                            "  varnelle secret get com.example.transcripts\n"
                            "  varnelle secret remove com.example.transcripts\n\n"
                            "Keeps one value for each SERVICE in the system's keychain.");
    command.require_subcommand(1);
    const auto service = std::make_shared<std::string>();
    const auto add = [&](const char* name, const char* example, const char* what,
                         SecretAction action) {
        CLI::App& verb = *command.add_subcommand(
            name, fmt::format("Example:\n  varnelle secret {}\n\n{}", example, what));
        verb.add_option("SERVICE", *service, "the name that the value is kept under")->required();
        verb.callback([&exit, service, action] { exit = secretCommand(action, *service); });
    };
    add("set", "set com.example.transcripts < value.txt",
        "Stores standard input, without the white space around it; a blank one removes the value.",
        SecretAction::set);
    add("get", "get com.example.transcripts", "Prints the value; exit status 1 when there is none.",
        SecretAction::get);
    add("remove", "remove com.example.transcripts", "Removes the value, if there is one.",
        SecretAction::remove);
}

int status(ExitStatus exit) { return static_cast<int>(exit); }

int failed(const std::string& why, ExitStatus exit) {
    complain(why);
    return status(exit);
}

std::string whatIsWrong(const CLI::App& app, const CLI::Error& error) {
    // What is too much there may be a secret.
    const CLI::App& secret = *app.get_subcommand("secret");
    if (!secret.get_subcommands().empty() &&
        error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError))
        return "secret takes one SERVICE; the value comes from standard input, never as an "
               "argument";
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
        "  varnelle take talk.txt --microphone --to Takes   two claps begin and end a take\n"
        "  varnelle script talk.txt                   words, reading time and chapters\n"
        "  varnelle lines talk.txt --width 40         the prompt lines\n"
        "  varnelle chapters talk.txt move 3 1        the text with its chapters in another "
        "order\n\n"
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
        "  varnelle follow talk.txt --microphone\n"
        "  recogniser | varnelle follow talk.txt --words -\n\n"
        "Follows a reading of SCRIPT. On a terminal: the full-screen prompter.");
    followApp.add_option("SCRIPT", follow.script, "the script, UTF-8 text; - is standard input")
        ->required();
    auto* const audio =
        followApp.add_option("--audio", follow.source.audio, "a sound file; - is standard input");
    auto* const words = followApp.add_option("--words", follow.source.words,
                                             "recognised words; - is standard input");
    std::string format;
    followApp.add_option("--format", format, "their form, where they do not say it themselves")
        ->needs(words)
        ->check(CLI::IsMember(formatNames()));
    std::string input;
    auto* const microphone =
        followApp
            .add_option("--microphone", input,
                        "an audio input by its id or name; without one, the default")
            ->expected(0, 1)
            ->type_name("[NAME]");
    audio->excludes(words);
    microphone->excludes(audio)->excludes(words);
    addFollowOptions(followApp, follow);
    for (const char* pace : {"--speed", "--fast"}) {
        microphone->excludes(followApp.get_option(pace));
    }
    followApp.callback([&] {
        FollowSource& source = follow.source;
        if (microphone->count() > 0) source.microphone = input;
        source.format = PrompterCore::fromRawValue<WordsFormat>(format);  // absent for none
        if (!source.audio && !source.words && !source.microphone)
            throw CLI::ValidationError("follow",
                                       "--audio, --microphone or --words says what to follow");
        if (follow.script == "-" && (source.audio == "-" || source.words == "-"))
            throw CLI::ValidationError("follow", "only one thing can be read from standard input");
        exit = followCommand(follow.script, source, follow.options(Unseen::inTime));
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

    TakeArguments take;
    FollowArguments taken;
    CLI::App& takeApp = *app.add_subcommand(
        "take",
        "Examples:\n"
        "  varnelle take talk.txt --microphone --to Takes\n"
        "  varnelle take talk.txt --audio session.wav --to Takes\n\n"
        "Records takes of SCRIPT. Two claps begin a take after a countdown, two claps end it.\n"
        "From a sound file the takes are cut out, as fast as it goes unless --speed is given.");
    addFollowOptions(takeApp, taken);
    addTakeOptions(takeApp, take);
    takeApp.callback([&] {
        checkTake(take);
        // Cutting takes out of a recording is no reading: nobody watches, unless they say how fast.
        if (take.audio && !taken.speed) taken.fast = taken.plain = true;
        exit = takeCommand(take, taken.options(Unseen::inTime));
    });

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

    addChapters(app, exit);
    addColours(app, wantsColour(), exit);
    std::string remembered;
    CLI::App& devicesApp = *app.add_subcommand("devices",
                                               "Examples:\n"
                                               "  varnelle devices\n"
                                               "  varnelle devices --remembered Lavalier\n\n"
                                               "The audio inputs that are there, and which one "
                                               "would be listened to.");
    devicesApp.add_option("--remembered", remembered, "the id or name of the input last chosen");
    devicesApp.add_flag("--json", json, "the inputs as JSON");
    devicesApp.callback([&] { showDevices(remembered, json); });
    addDiffCommand(app, exit);
    addSecret(app, exit);
    addLibraryCommand(app, exit);

    std::string clapsIn;
    CLI::App& clapsApp = *app.add_subcommand(
        "claps",
        "Examples:\n"
        "  varnelle claps take.wav\n"
        "  varnelle claps take.wav --json\n\n"
        "Says which hand claps are heard in AUDIO, and whether they would start or stop a take.");
    clapsApp.add_option("AUDIO", clapsIn, "a sound file; - is standard input")->required();
    clapsApp.add_flag("--json", json, "one JSON object for each group of claps");
    clapsApp.callback([&] { exit = clapsCommand(clapsIn, json); });
    CLI::App& doctorApp = *app.add_subcommand("doctor",
                                              "Examples:\n"
                                              "  varnelle doctor\n"
                                              "  varnelle doctor --json\n\n"
                                              "What this machine has of all that is needed, and "
                                              "what to do about the rest.");
    doctorApp.add_flag("--json", json, "the findings as JSON");
    doctorApp.callback([&] { exit = doctor(json); });

    addCameraCommand(app);

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
    // A reader of our output that goes away is noticed by the write that fails, and so is a limit
    // on a file's size.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
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

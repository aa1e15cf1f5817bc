// The command `varnelle`: its arguments, and what becomes of a failure. What is decided is decided
// in the library; what is shown is in the other files of this folder.

#include <csignal>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fcntl.h>
#include <unistd.h>

#include "apps/varnelle/CameraCommand.h"
#include "apps/varnelle/ColoursCommand.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/DiffCommand.h"
#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/LibraryCommand.h"
#include "apps/varnelle/Output.h"
#include "host/Failures.h"

namespace {

using namespace Varnelle;  // NOLINT

constexpr const char* exitStatuses =
    "Exit status: 0 done, 1 nothing found, 2 wrong usage, 65 bad data, 66 no such input, 69\n"
    "device or service missing, 74 output cannot be written, 130 interrupted.";

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

    // What a command takes stands in front of its sub-commands.
    std::string make_usage(const CLI::App* command, std::string /*name*/) const override {
        std::string name = command->get_name();
        for (const CLI::App* around = command->get_parent(); around != nullptr;
             around = around->get_parent()) {
            std::string before = around->get_name();
            for (const CLI::Option* const option : around->get_options()) {
                if (option->get_positional()) before += " " + option->get_name(true);
            }
            name = before + " " + name;
        }
        return CLI::Formatter::make_usage(command, name);
    }
};

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
    const CLI::App* command = &app;
    std::string name = "varnelle";
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().front();
        name += " " + command->get_name();
    }
    if (command != &app && command->get_require_subcommand_min() == 0) return error.what();
    const std::vector<std::string> rest = command->remaining();
    return (rest.empty() || command == &secret ? "a sub-command is missing"
                                               : rest.front() + " is no sub-command") +
           "; " + name + " --help shows them";
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

    addFollow(app, exit);
    addDemo(app, exit);
    addTake(app, exit);
    addScript(app);
    addLines(app);
    addChapters(app, exit);
    addClaps(app, exit);
    addDevices(app);
    addDiffCommand(app, exit);
    addLibraryCommand(app, exit);
    addColours(app, exit);
    addCameraCommand(app);
    addSecret(app, exit);
    addDoctor(app, exit);

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

#include "apps/varnelle/SecretCommand.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include <fmt/format.h>
#include <unistd.h>

#include "PrompterCore/platform/Keychain.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/HiddenLine.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/TerminalText.h"
#include "host/Failures.h"
#include "host/TextFile.h"

namespace Varnelle {

using PrompterCore::Keychain;
using PrompterCore::Text;

namespace {

Text utf8(std::string bytes, const char* what) {
    std::optional<Text> text = Text::fromUtf8(std::move(bytes));
    if (!text) throw BadData(std::string(what) + " is not UTF-8");
    return *std::move(text);
}

// Linux keeps no more of a line that is being edited, and drops the rest without a word.
constexpr std::size_t longestTypedLine = 4095;  // bytes

// Absent when the question was interrupted.
std::optional<Text> valueFor(const Text& service) {
    if (isatty(STDIN_FILENO) == 0) return readText("-");
    auto typed = hiddenLine("Value for " + terminalText(service.utf8()) + ": ");
    if (!typed) return std::nullopt;
    if (typed->size() >= longestTypedLine)
        throw BadData(
            fmt::format("a terminal cuts a line after {} bytes; send a longer value "
                        "through a pipe or from a file",
                        longestTypedLine));
    return utf8(*std::move(typed), "the value");
}

ExitStatus set(const Keychain& keychain) {
    const std::optional<Text> value = valueFor(keychain.service);
    if (!value) return ExitStatus::interrupted;
    keychain.write(*value);
    return ExitStatus::done;
}

ExitStatus get(const Keychain& keychain) {
    const std::optional<Text> value = keychain.read();
    if (!value) {
        complain("no value can be read for " + terminalText(keychain.service.utf8()));
        return ExitStatus::nothingFound;
    }
    Output output;
    output.text(value->utf8() + "\n");
    output.flush();
    return ExitStatus::done;
}

ExitStatus remove(const Keychain& keychain) {
    keychain.remove();
    return ExitStatus::done;
}

}  // namespace

ExitStatus secretCommand(SecretAction action, const std::string& service) {
    const Keychain keychain{utf8(service, "the service name")};
    try {
        switch (action) {
            case SecretAction::set: return set(keychain);
            case SecretAction::get: return get(keychain);
            case SecretAction::remove: break;
        }
        return remove(keychain);
    } catch (const Keychain::Failure& failure) {
        throw Unavailable(failure.what());
    }
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

}  // namespace Varnelle

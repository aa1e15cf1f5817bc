#pragma once

// What the sub-commands share of the command line, and how each is added to it. The arguments of a
// sub-command stand in its own file; `exit` outlives the parsing.

#include <string>
#include <type_traits>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

/// NO_COLOR counts when it says anything at all.
[[nodiscard]] bool wantsColour();

/// What is no number at all, "nan" among it, is refused as well.
template <class Number>
[[nodiscard]] CLI::Validator numberBetween(Number least, Number most) {
    return {[least, most](std::string& written) {
                Number value{};
                return CLI::detail::lexical_cast(written, value) && value >= least && value <= most
                           ? std::string()
                           : fmt::format("{} is no {}number from {} to {}", written,
                                         std::is_integral_v<Number> ? "whole " : "", least, most);
            },
            ""};
}

/// Refuses options that stand between `command` and one of its sub-commands where they are for the
/// command by itself: they would count for nothing.
void refuseOptionsBefore(const CLI::App& subcommand);

void addFollow(CLI::App& app, ExitStatus& exit);
void addDemo(CLI::App& app, ExitStatus& exit);
void addTake(CLI::App& app, ExitStatus& exit);
void addScript(CLI::App& app);
void addLines(CLI::App& app);
void addChapters(CLI::App& app, ExitStatus& exit);
void addClaps(CLI::App& app, ExitStatus& exit);
void addDevices(CLI::App& app);
void addSecret(CLI::App& app, ExitStatus& exit);
void addDoctor(CLI::App& app, ExitStatus& exit);

}  // namespace Varnelle

#pragma once

// The arguments of the sub-commands that follow a reading.

#include <cstdint>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "apps/varnelle/FollowCommand.h"

namespace Varnelle {

/// The pace of a reading that nobody watches on a screen, unless the arguments say it.
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

    [[nodiscard]] FollowOptions options(Unseen unseen) const;
};

/// How a following is shown and how fast; `arguments` outlive the parsing.
void addFollowOptions(CLI::App& command, FollowArguments& arguments);

}  // namespace Varnelle

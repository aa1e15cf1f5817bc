#pragma once

// Runs `varnelle` as a user does.
//
//   CommandResult result = runVarnelle({"script", "-"}, {.input = "Hello.\n"});
//   result.out;      // "1 word · under a minute aloud\n"

#include <string>
#include <utility>
#include <vector>

#include "tests/support/RunningCommand.h"

namespace Varnelle::Tests {

using PrompterCore::Tests::CommandResult;
using PrompterCore::Tests::CommandSettings;
using PrompterCore::Tests::runCommand;
using PrompterCore::Tests::RunningCommand;

/// `varnelle` with these arguments.
inline std::vector<std::string> varnelle(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), VARNELLE_PROGRAM);
    return arguments;
}

inline CommandResult runVarnelle(std::vector<std::string> arguments,
                                 const CommandSettings& settings = {}) {
    return runCommand(varnelle(std::move(arguments)), settings);
}

inline const std::string sampleScript = VARNELLE_SAMPLE_DIRECTORY "/sample.txt";
inline const std::string sampleWords = VARNELLE_SAMPLE_DIRECTORY "/sample.words.jsonl";
inline const std::string sampleSound = VARNELLE_SAMPLE_DIRECTORY "/sample.flac";

}  // namespace Varnelle::Tests

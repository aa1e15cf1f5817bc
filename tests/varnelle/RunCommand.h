#pragma once

// Runs `varnelle` as a user does.
//
//   CommandResult result = runVarnelle({"script", "-"}, {.input = "Hello.\n"});
//   result.out;      // "1 word · under a minute aloud\n"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

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

/// It did what was asked, and this is what it printed.
inline void expectText(const CommandResult& result, std::string_view text) {
    EXPECT_EQ(result.out, text);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.status, 0);
}

/// It said why not, in one sentence, and did nothing.
inline void expectRefusal(const CommandResult& result, int status, std::string_view why) {
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error, "varnelle: " + std::string(why) + "\n");
    EXPECT_EQ(result.status, status);
}

/// A process that `parent` has started and that still runs. Absent when there is none.
inline std::optional<pid_t> childOf(pid_t parent) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream status(entry.path() / "stat");
        std::string line;
        if (!std::getline(status, line)) continue;
        pid_t id = 0, itsParent = 0;
        char state = 0;
        if (std::sscanf(line.c_str(), "%d", &id) == 1 &&
            std::sscanf(line.c_str() + line.rfind(')') + 1, " %c %d", &state, &itsParent) == 2 &&
            itsParent == parent && state != 'Z')
            return id;
    }
    return std::nullopt;
}

inline const std::string sampleScript = VARNELLE_SAMPLE_DIRECTORY "/sample.txt";
inline const std::string sampleWords = VARNELLE_SAMPLE_DIRECTORY "/sample.words.jsonl";
inline const std::string sampleSound = VARNELLE_SAMPLE_DIRECTORY "/sample.flac";

}  // namespace Varnelle::Tests

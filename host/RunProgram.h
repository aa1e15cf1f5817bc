#pragma once

// Another program's answer to some input, without a shell in between and without waiting forever.
//
//   auto answer = runProgram({"tr", "a-z", "A-Z"}, "hello", std::chrono::seconds(1));
//   answer->output;     // "HELLO"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varnelle {

/// What a program wrote to its standard output.
struct ProgramAnswer {
    std::string output;
    bool complete = false;  ///< true when it ended by itself, in time and with exit status 0
};

/// Runs `command` (the program, looked up in PATH, and its arguments) with `input` as its standard
/// input and nothing as its standard error. At `timeLimit` it is killed; what it wrote until then
/// is returned. Absent when it cannot be started. Throws Unavailable when the system refuses the
/// means for it. Stops the program unless `command` names one.
[[nodiscard]] std::optional<ProgramAnswer> runProgram(const std::vector<std::string>& command,
                                                      std::string_view input,
                                                      std::chrono::milliseconds timeLimit);

}  // namespace Varnelle

#pragma once

// When the reader has come to the end.
//
//   ScriptEnd::reached(41, 41, true);    // true

#include <cstdint>

namespace PrompterCore::ScriptEnd {

/// True while the prompter is `running` and the token `cursor` is at or past `lastWord`, the last
/// token of the script. Never of a script without words, whose `lastWord` is negative.
[[nodiscard]] constexpr bool reached(std::int64_t cursor, std::int64_t lastWord,
                                     bool running) noexcept {
    return running && lastWord >= 0 && cursor >= lastWord;
}

}  // namespace PrompterCore::ScriptEnd

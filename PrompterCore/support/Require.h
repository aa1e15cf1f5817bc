#pragma once

// Preconditions: a caller's mistake stops the program, in every build.
//
//   require(index < count, "the index lies within the list");

namespace PrompterCore {

/// Prints `file:line: precondition broken: rule` to standard error and aborts.
[[noreturn]] void preconditionBroken(const char* rule, const char* file, int line) noexcept;

/// Does nothing when `condition` holds; stops the program otherwise. `rule` says what must hold,
/// in words. The place is the caller's.
constexpr void require(bool condition, const char* rule, const char* file = __builtin_FILE(),
                       int line = __builtin_LINE()) noexcept {
    if (!condition) [[unlikely]]
        preconditionBroken(rule, file, line);
}

}  // namespace PrompterCore

#pragma once

// Counts what operator new is asked for, to hold "never allocates" to its word. A room's tests that
// use it name AllocationCounter.cpp among their sources, which replaces the global operators.
//
//   EXPECT_EQ(Tests::allocationsDuring([&] { model.tickAt(3.0); }), 0);
//
// malloc called directly, as C libraries do, is not seen.

#include <cstdint>
#include <utility>

namespace PrompterCore::Tests {

/// How often this thread has asked operator new for memory so far.
[[nodiscard]] std::int64_t allocationsSoFar() noexcept;

/// How often `act` asks operator new for memory.
template <class Act>
[[nodiscard]] std::int64_t allocationsDuring(Act&& act) {
    const std::int64_t before = allocationsSoFar();
    std::forward<Act>(act)();
    return allocationsSoFar() - before;
}

}  // namespace PrompterCore::Tests

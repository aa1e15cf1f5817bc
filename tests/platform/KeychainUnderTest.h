#pragma once

// The system behind the keychain, in each of the three programs that run the same tests: a list in
// memory, our source for macOS over a stand-in for its frameworks, and a real keyring.

#include <cstddef>

namespace PrompterCore::Tests {

/// An empty one, that nobody else uses.
void startKeychain();
void stopKeychain();
/// All items in it, of whatever service.
[[nodiscard]] std::size_t storedItems();
/// How many values a law is tried with: as many as take about a second.
[[nodiscard]] int lawCases();

}  // namespace PrompterCore::Tests

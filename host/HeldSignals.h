#pragma once

// Signals that would end the program, put off until something is whole or cleaned away.
//
//   const HeldSignals signals;
//   while (...) {
//       if (signals.arePending()) throw ...;   // what is unfinished goes away,
//   }                                          // and then the program ends

#include <csignal>

namespace Varnelle {

/// While it lives, SIGINT, SIGTERM and SIGHUP wait; those that are ignored stay so. At its end one
/// that has arrived does what it always does. For the only thread of a program.
class HeldSignals {
public:
    HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals();

    /// Whether one of them has arrived.
    [[nodiscard]] bool arePending() const noexcept;

private:
    sigset_t held_{};
    sigset_t before_{};  // what was blocked already
};

}  // namespace Varnelle

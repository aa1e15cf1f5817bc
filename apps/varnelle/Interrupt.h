#pragma once

// Interrupts (SIGINT, SIGTERM, a terminal that is closed) as something that can be waited for,
// instead of a handler.
//
//   Interrupt interrupt;
//   if (interrupt.arrivesWithin(std::chrono::milliseconds(33))) ...

#include <chrono>
#include <optional>

namespace Varnelle {

/// While it lives, interrupts no longer end the program: it hears of them here.
class Interrupt {
public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;
    ~Interrupt();

    /// Waits that long at most; true as soon as an interrupt has arrived. Once one has, always
    /// true.
    bool arrivesWithin(std::chrono::nanoseconds time);
    /// Waits until `descriptor` can be read; true when an interrupt arrived instead.
    bool arrivesBeforeReadable(int descriptor);

private:
    bool wait(std::optional<int> descriptor, std::optional<std::chrono::nanoseconds> time);

    int signals_;
    bool arrived_ = false;
};

}  // namespace Varnelle

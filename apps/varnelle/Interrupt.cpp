#include "apps/varnelle/Interrupt.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace Varnelle {

namespace {

sigset_t interrupts() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    // Who ignores it, as nohup does, is to go on when the terminal is gone.
    struct sigaction hangUp {};
    if (sigaction(SIGHUP, nullptr, &hangUp) == 0 && hangUp.sa_handler != SIG_IGN)
        sigaddset(&set, SIGHUP);
    return set;
}

}  // namespace

Interrupt::Interrupt() : signals_(-1) {
    const sigset_t set = interrupts();
    sigprocmask(SIG_BLOCK, &set, nullptr);
    signals_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

Interrupt::~Interrupt() {
    if (signals_ >= 0) close(signals_);
    // A second interrupt while this one is being served must not end the program by itself.
    const sigset_t set = interrupts();
    const timespec atOnce{};
    while (sigtimedwait(&set, nullptr, &atOnce) > 0) {
    }
    sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

bool Interrupt::arrivesWithin(std::chrono::nanoseconds time) { return wait(std::nullopt, time); }

bool Interrupt::arrivesBeforeReadable(int descriptor) { return wait(descriptor, std::nullopt); }

bool Interrupt::wait(std::optional<int> descriptor, std::optional<std::chrono::nanoseconds> time) {
    if (arrived_) return true;
    std::array<pollfd, 2> waited{{{.fd = signals_, .events = POLLIN, .revents = 0},
                                  {.fd = descriptor.value_or(-1), .events = POLLIN, .revents = 0}}};
    timespec limit{};
    if (time) {
        const auto whole = std::chrono::floor<std::chrono::seconds>(std::max(*time, {}));
        limit.tv_sec = static_cast<time_t>(whole.count());
        limit.tv_nsec = static_cast<long>((std::max(*time, {}) - whole).count());
    }
    ppoll(waited.data(), waited.size(), time ? &limit : nullptr, nullptr);
    arrived_ = (waited[0].revents & POLLIN) != 0;
    return arrived_;
}

}  // namespace Varnelle

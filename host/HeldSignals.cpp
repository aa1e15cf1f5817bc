#include "host/HeldSignals.h"

namespace Varnelle {

namespace {

constexpr int ending[] = {SIGINT, SIGTERM, SIGHUP};

}  // namespace

HeldSignals::HeldSignals() {
    sigemptyset(&held_);
    for (const int signal : ending) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            sigaddset(&held_, signal);
    }
    sigprocmask(SIG_BLOCK, &held_, &before_);
}

HeldSignals::~HeldSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

bool HeldSignals::arePending() const noexcept {
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    for (const int signal : ending) {
        if (sigismember(&held_, signal) == 1 && sigismember(&pending, signal) == 1) return true;
    }
    return false;
}

}  // namespace Varnelle

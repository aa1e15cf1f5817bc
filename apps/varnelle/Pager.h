#pragma once

// A long output on a terminal goes through the user's pager, as in `git log`.
//
//   Pager pager;          // from here on standard output goes to it
//   output.line(...);
//   pager.finish();       // until the user has left it

#include <csignal>

#include <sys/types.h>

namespace Varnelle {

/// $PAGER, or `less` where there is one. Does nothing when standard output is no terminal, when
/// $PAGER is empty or "cat", and where no pager can be started. While there is one, the keys that
/// interrupt are its own: they leave a search, or nothing, and must not take the terminal from it.
class Pager {
public:
    Pager();
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;
    ~Pager() { finish(); }

    /// Ends the output and waits until the pager has ended.
    void finish() noexcept;

private:
    void restoreKeys() const noexcept;

    pid_t process_ = -1;  // -1: none
    int terminal_ = -1;   // what standard output was before
    // What the two signals of the keyboard did before.
    struct sigaction interrupt_ {};
    struct sigaction quit_ {};
};

}  // namespace Varnelle

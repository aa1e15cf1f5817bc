#pragma once

// A long output on a terminal goes through the user's pager, as in `git log`.
//
//   Pager pager;          // from here on standard output goes to it
//   output.line(...);
//   pager.finish();       // until the user has left it

#include <string>

#include <sys/types.h>

namespace Varnelle {

/// $PAGER, or `less` where there is one. Does nothing when standard output is no terminal, when
/// $PAGER is empty or "cat", and where no pager can be started.
class Pager {
public:
    Pager();
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;
    ~Pager() { finish(); }

    /// Ends the output and waits until the pager has ended.
    void finish() noexcept;

private:
    pid_t process_ = -1;  // -1: none
    int terminal_ = -1;   // what standard output was before
};

}  // namespace Varnelle

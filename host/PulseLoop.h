#pragma once

// The sound library's main loop behind one descriptor, so that whoever waits for several things can
// wait for it too.
//
//   PulseLoop loop;
//   pa_context_new(loop.api(), ...);
//   loop.run(std::chrono::milliseconds(20));   // poll loop.descriptor() before the next one

#include <chrono>
#include <vector>

struct pa_mainloop;
struct pa_mainloop_api;
struct pollfd;

namespace Varnelle {

/// Owns no thread.
class PulseLoop {
public:
    /// Throws Unavailable when the system has no means for it.
    PulseLoop();
    PulseLoop(const PulseLoop&) = delete;
    PulseLoop& operator=(const PulseLoop&) = delete;
    ~PulseLoop();

    [[nodiscard]] pa_mainloop_api* api() const;
    /// Readable when there is something to do, after `wake` of the last `run` at the latest.
    [[nodiscard]] int descriptor() const noexcept { return all_; }
    /// Does what there is to do; never waits.
    void run(std::chrono::milliseconds wake);

private:
    static int watch(pollfd* descriptors, unsigned long count, int timeout, void* self);

    pa_mainloop* loop_ = nullptr;
    int all_ = -1;    // an epoll of the library's descriptors and the timer
    int timer_ = -1;  // for the library's next deadline or our own
    std::vector<int> watched_;
    std::chrono::milliseconds wake_{0};
};

}  // namespace Varnelle

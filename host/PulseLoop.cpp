#include "host/PulseLoop.h"

#include <algorithm>

#include <poll.h>
#include <pulse/mainloop.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "host/Failures.h"

namespace Varnelle {

PulseLoop::PulseLoop()
    : loop_(pa_mainloop_new()),
      all_(epoll_create1(EPOLL_CLOEXEC)),
      timer_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
    epoll_event event{.events = EPOLLIN, .data = {.fd = timer_}};
    if (loop_ == nullptr || epoll_ctl(all_, EPOLL_CTL_ADD, timer_, &event) != 0) {
        if (loop_ != nullptr) pa_mainloop_free(loop_);
        if (all_ >= 0) close(all_);
        if (timer_ >= 0) close(timer_);
        throw Unavailable("the system has no means to wait for a microphone");
    }
    pa_mainloop_set_poll_func(loop_, &PulseLoop::watch, this);
}

PulseLoop::~PulseLoop() {
    pa_mainloop_free(loop_);
    close(all_);
    close(timer_);
}

pa_mainloop_api* PulseLoop::api() const { return pa_mainloop_get_api(loop_); }

void PulseLoop::run(std::chrono::milliseconds wake) {
    wake_ = wake;
    // In the last round nothing was left to do, and `watch` has seen what is waited for.
    while (pa_mainloop_prepare(loop_, -1) >= 0 && pa_mainloop_poll(loop_) >= 0 &&
           pa_mainloop_dispatch(loop_) > 0) {
    }
}

// The library asks for a poll of its descriptors: it gets one that does not wait, and what it would
// have waited for goes into our descriptor.
int PulseLoop::watch(pollfd* descriptors, unsigned long count, int timeout, void* self) {
    PulseLoop& loop = *static_cast<PulseLoop*>(self);
    std::vector<int> watched;
    for (unsigned long i = 0; i < count; ++i) {
        const pollfd& one = descriptors[i];
        epoll_event event{.events = 0, .data = {.fd = one.fd}};
        if ((one.events & POLLIN) != 0) event.events |= EPOLLIN;
        if ((one.events & POLLOUT) != 0) event.events |= EPOLLOUT;
        // A descriptor of this number may be another one than the last time.
        if (epoll_ctl(loop.all_, EPOLL_CTL_MOD, one.fd, &event) != 0)
            epoll_ctl(loop.all_, EPOLL_CTL_ADD, one.fd, &event);
        watched.push_back(one.fd);
    }
    for (const int descriptor : loop.watched_) {
        if (std::ranges::find(watched, descriptor) == watched.end())
            epoll_ctl(loop.all_, EPOLL_CTL_DEL, descriptor, nullptr);
    }
    loop.watched_ = watched;

    auto wait = loop.wake_;
    if (timeout >= 0) wait = std::min(wait, std::chrono::milliseconds(timeout));
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(wait.count() / 1000);
    when.it_value.tv_nsec = static_cast<long>(wait.count() % 1000) * 1'000'000 + 1;
    timerfd_settime(loop.timer_, 0, &when, nullptr);
    return poll(descriptors, count, 0);
}

}  // namespace Varnelle

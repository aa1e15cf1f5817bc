#include "apps/varnelle/Pager.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "apps/varnelle/Output.h"

extern char** environ;  // NOLINT: POSIX leaves its declaration to us

namespace Varnelle {

namespace {

bool isOnPath(std::string_view program) {
    const char* const path = std::getenv("PATH");
    std::string_view rest = path == nullptr ? "" : path;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const std::string candidate = std::string(rest.substr(0, end)) + "/" + std::string(program);
        if (access(candidate.c_str(), X_OK) == 0) return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

// As a command for the shell; empty for none.
std::string command() {
    const char* const chosen = std::getenv("PAGER");
    if (chosen != nullptr) return std::string_view(chosen) == "cat" ? "" : chosen;
    // Ends by itself when all fits on the screen, shows colours, leaves the text where it is.
    return isOnPath("less") ? "less -FRX" : "";
}

// Signals that a pager gets as our caller left them, though we put them aside.
sigset_t forThePager(const struct sigaction& interrupt, const struct sigaction& quit) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    if (interrupt.sa_handler != SIG_IGN) sigaddset(&signals, SIGINT);
    if (quit.sa_handler != SIG_IGN) sigaddset(&signals, SIGQUIT);
    return signals;
}

}  // namespace

Pager::Pager() {
    const std::string pager = isTerminal() ? command() : "";
    if (pager.empty()) return;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[0], STDIN_FILENO);
    std::array<std::string, 3> words{"/bin/sh", "-c", pager};
    std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    struct sigaction ignored {};
    ignored.sa_handler = SIG_IGN;
    sigaction(SIGINT, &ignored, &interrupt_);
    sigaction(SIGQUIT, &ignored, &quit_);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    const sigset_t signals = forThePager(interrupt_, quit_);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int failure =
        posix_spawn(&process_, "/bin/sh", &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    close(ends[0]);
    if (failure == 0) {
        terminal_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
        dup2(ends[1], STDOUT_FILENO);
    } else {
        process_ = -1;
        restoreKeys();
    }
    close(ends[1]);
}

void Pager::finish() noexcept {
    if (process_ < 0) return;
    std::fflush(stdout);  // what nobody reads any more is lost on purpose
    dup2(terminal_, STDOUT_FILENO);
    close(std::exchange(terminal_, -1));
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    restoreKeys();
}

void Pager::restoreKeys() const noexcept {
    sigaction(SIGINT, &interrupt_, nullptr);
    sigaction(SIGQUIT, &quit_, nullptr);
}

}  // namespace Varnelle

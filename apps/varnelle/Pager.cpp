#include "apps/varnelle/Pager.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "apps/varnelle/Output.h"
#include "host/MemoryFile.h"

extern char** environ;  // NOLINT: POSIX leaves its declaration to us

namespace Varnelle {

namespace {

// What a shell says of a command that it may not run, or does not find.
constexpr int cannotRun = 126;
constexpr int notFound = 127;

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

// While it lives, the signals of the keyboard are none of our business.
class KeysAside {
public:
    KeysAside() {
        struct sigaction ignored {};
        ignored.sa_handler = SIG_IGN;
        sigaction(SIGINT, &ignored, &interrupt_);
        sigaction(SIGQUIT, &ignored, &quit_);
    }
    KeysAside(const KeysAside&) = delete;
    KeysAside& operator=(const KeysAside&) = delete;
    ~KeysAside() {
        sigaction(SIGINT, &interrupt_, nullptr);
        sigaction(SIGQUIT, &quit_, nullptr);
    }

    // Signals that a pager gets as our caller left them, though we put them aside.
    sigset_t forThePager() const {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGPIPE);
        if (interrupt_.sa_handler != SIG_IGN) sigaddset(&signals, SIGINT);
        if (quit_.sa_handler != SIG_IGN) sigaddset(&signals, SIGQUIT);
        return signals;
    }

private:
    struct sigaction interrupt_ {};
    struct sigaction quit_ {};
};

// Reads the text as a file, so that it is still whole when the pager was none. Its exit status;
// absent when a signal ended it.
std::optional<int> statusOfPager(const std::string& pager, const MemoryFile& text) {
    const KeysAside keys;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, text.descriptor(), STDIN_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    const sigset_t signals = keys.forThePager();
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::array<std::string, 3> words{"/bin/sh", "-c", pager};
    std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    pid_t process = -1;
    const int failure =
        posix_spawn(&process, "/bin/sh", &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (failure != 0) return notFound;
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

bool wasStarted(const std::string& pager, std::string_view text) {
    const auto status = statusOfPager(pager, MemoryFile(text));
    return status != cannotRun && status != notFound;
}

}  // namespace

void showPaged(std::string_view text) {
    const std::string pager = isTerminal() && !text.empty() ? command() : "";
    if (!pager.empty() && wasStarted(pager, text)) return;
    Output output;
    output.write(text);
    output.flush();
}

}  // namespace Varnelle

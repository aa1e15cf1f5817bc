#include "host/RunProgram.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "PrompterCore/support/Require.h"
#include "host/Failures.h"
#include "host/MemoryFile.h"

namespace Varnelle {
namespace {

using Clock = std::chrono::steady_clock;

class Pipe {
public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0)
            throw Unavailable("the system gives no pipe to another program");
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(ends_[0]);
        closeWriting();
    }

    int reading() const { return ends_[0]; }
    int writing() const { return ends_[1]; }
    void closeWriting() {
        if (ends_[1] >= 0) close(ends_[1]);
        ends_[1] = -1;
    }

private:
    std::array<int, 2> ends_{};
};

// The input is a file, so that a program that does not read it blocks nobody, and one that ends
// early raises no SIGPIPE here.
std::optional<pid_t> start(const std::vector<std::string>& command, int input, int output) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));  // execve's type, not written to
    }
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::optional(process) : std::nullopt;
}

// True at the end of the output, false at the deadline.
bool readUntil(Clock::time_point deadline, int descriptor, std::string& output) {
    std::array<char, 4096> buffer;
    while (true) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) return false;
        pollfd waiting{descriptor, POLLIN, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno != EINTR) return false;
        if (ready <= 0) continue;
        const ssize_t count = read(descriptor, buffer.data(), buffer.size());
        if (count == 0) return true;
        if (count < 0 && errno != EINTR) return false;
        if (count > 0) output.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

// Waits for the end until the deadline, then brings it about. A program may close its output long
// before it ends.
bool endsWell(pid_t process, Clock::time_point deadline) {
    int status = 0;
    pid_t ended = waitpid(process, &status, WNOHANG);
    while (ended == 0 && Clock::now() < deadline) {
        poll(nullptr, 0, 1);
        ended = waitpid(process, &status, WNOHANG);
    }
    if (ended == 0) {
        kill(process, SIGKILL);
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
    }
    return ended == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

std::optional<ProgramAnswer> runProgram(const std::vector<std::string>& command,
                                        std::string_view input,
                                        std::chrono::milliseconds timeLimit) {
    PrompterCore::require(!command.empty(), "a command names a program");
    const MemoryFile inputFile(input);
    Pipe pipe;
    const auto process = start(command, inputFile.descriptor(), pipe.writing());
    if (!process) return std::nullopt;
    pipe.closeWriting();

    const Clock::time_point deadline = Clock::now() + timeLimit;
    ProgramAnswer answer;
    const bool inTime = readUntil(deadline, pipe.reading(), answer.output);
    answer.complete = endsWell(*process, inTime ? deadline : Clock::now()) && inTime;
    return answer;
}

}  // namespace Varnelle

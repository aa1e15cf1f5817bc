#pragma once

// Runs a program as a user does: arguments, standard streams, signals, exit status; no shell.
//
//   CommandResult result = runCommand({"tr", "a-z", "A-Z"}, {.input = "hello\n"});
//   result.out;      // "HELLO\n"
//
//   RunningCommand command({"cat"});
//   command.write("aligned\n");
//   command.readUntil("aligned");    // false when it ends, or a minute passes, without it
//   command.send(SIGINT);
//   command.finish().status;         // 130
//
// Units: seconds, kilobytes.

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace PrompterCore::Tests {

struct CommandResult {
    std::string out;
    std::string error;
    int status = -1;         ///< 128 and the signal's number when one ended it, as shells say it
    double seconds = 0;      ///< from its start to its end
    long peakKilobytes = 0;  ///< of memory
};

struct CommandSettings {
    std::string input = {};                      ///< standard input, up to its end
    std::vector<std::string> environment = {};   ///< "NAME=value", instead of or beside the usual
    std::optional<std::string> outputFile = {};  ///< standard output instead of `out`
    std::vector<int> closed = {};                ///< standard streams that it does not have
};

/// A program that runs. Kills it when it is still running at the end of its life.
class RunningCommand {
public:
    explicit RunningCommand(const std::vector<std::string>& arguments,
                            const CommandSettings& settings = {}) {
        static_cast<void>(std::signal(SIGPIPE, SIG_IGN));  // it may not read all that we write
        std::array<Pipe, 3> pipes{makePipe(), makePipe(), makePipe()};
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        for (int stream = 0; stream < 3; ++stream) {
            const Pipe& pipe = pipes[static_cast<std::size_t>(stream)];
            posix_spawn_file_actions_adddup2(&files, stream == 0 ? pipe.out : pipe.in, stream);
        }
        if (settings.outputFile)
            posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, settings.outputFile->c_str(),
                                             O_WRONLY | O_CREAT | O_TRUNC, 0600);
        for (const int stream : settings.closed) {
            posix_spawn_file_actions_addclose(&files, stream);
        }
        // Whoever runs the tests may have put signals aside.
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

        std::vector<char*> words = pointers(arguments);
        std::vector<std::string> environment = usualEnvironment(settings.environment);
        environment.insert(environment.end(), settings.environment.begin(),
                           settings.environment.end());
        std::vector<char*> variables = pointers(environment);
        const int failure =
            posix_spawnp(&process_, words[0], &files, &attributes, words.data(), variables.data());
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&files);
        close(pipes[0].out);
        close(pipes[1].in);
        close(pipes[2].in);
        input_ = pipes[0].in;
        streams_ = {Stream{pipes[1].out, {}}, Stream{pipes[2].out, {}}};
        if (failure != 0) {
            ADD_FAILURE() << arguments[0] << ": " << std::strerror(failure);
            process_ = -1;
        }
        write(settings.input);
    }
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;
    ~RunningCommand() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            static_cast<void>(finish());
        }
        closeInput();
        closeOutput();
        closeStream(streams_[1]);
    }

    /// More of its standard input. What it no longer reads is lost.
    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(input_, bytes.data(), bytes.size());
            if (written <= 0) return;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    void closeInput() {
        if (input_ >= 0) close(std::exchange(input_, -1));
    }
    /// From now on nobody reads its standard output.
    void closeOutput() { closeStream(streams_[0]); }
    void send(int signal) const { kill(process_, signal); }
    [[nodiscard]] pid_t processId() const { return process_; }
    /// What it has written to standard error, as far as it was read along with the rest.
    const std::string& error() const { return streams_[1].bytes; }
    /// Reads until standard error holds `text` behind the first `from` bytes.
    bool readErrorUntil(std::string_view text, std::size_t from = 0) {
        while (error().find(text, from) == std::string::npos) {
            if (!read(std::chrono::seconds(60))) return false;
        }
        return true;
    }

    /// What it has written to standard output so far.
    const std::string& out() const { return streams_[0].bytes; }
    /// Reads until standard output holds `text` behind the first `from` bytes; false when it ends,
    /// or says nothing for `patience`, without it.
    bool readUntil(std::string_view text, std::size_t from = 0,
                   std::chrono::seconds patience = std::chrono::seconds(60)) {
        while (out().find(text, from) == std::string::npos) {
            if (!read(patience)) return false;
        }
        return true;
    }
    /// True when it writes nothing for a tenth of a second.
    bool isSilent() {
        const std::size_t before = out().size() + streams_[1].bytes.size();
        read(std::chrono::milliseconds(100));
        return out().size() + streams_[1].bytes.size() == before;
    }

    /// Ends its input and waits for its end, a minute at most.
    CommandResult finish() {
        closeInput();
        while (read(std::chrono::seconds(60))) {
        }
        if (isOpen()) {
            ADD_FAILURE() << "the command does not end";
            kill(process_, SIGKILL);
        }
        int status = 0;
        rusage usage{};
        if (process_ > 0) wait4(std::exchange(process_, -1), &status, 0, &usage);
        const std::chrono::duration<double> seconds = Clock::now() - started_;
        return {.out = streams_[0].bytes,
                .error = streams_[1].bytes,
                .status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
                .seconds = seconds.count(),
                .peakKilobytes = usage.ru_maxrss};
    }

private:
    using Clock = std::chrono::steady_clock;
    struct Pipe {
        int out, in;
    };
    struct Stream {
        int descriptor = -1;  // -1 once it is closed
        std::string bytes;
    };

    static Pipe makePipe() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0) << std::strerror(errno);
        return {.out = ends[0], .in = ends[1]};
    }
    static void closeStream(Stream& stream) {
        if (stream.descriptor >= 0) close(std::exchange(stream.descriptor, -1));
    }
    // Without what is set instead, and what a user may have set for `varnelle`.
    static std::vector<std::string> usualEnvironment(const std::vector<std::string>& instead) {
        std::vector<std::string> variables;
        for (char** variable = environ; *variable != nullptr; ++variable) {
            const std::string_view text = *variable;
            const std::string_view name = text.substr(0, text.find('=') + 1);
            const bool isReplaced = std::ranges::any_of(
                instead, [&](const std::string& other) { return other.starts_with(name); });
            if (!isReplaced && name != "NO_COLOR=" && name != "COLORTERM=" &&
                !name.starts_with("VARNELLE_"))
                variables.emplace_back(text);
        }
        return variables;
    }
    static std::vector<char*> pointers(const std::vector<std::string>& texts) {
        std::vector<char*> result;
        for (const std::string& text : texts) {
            result.push_back(const_cast<char*>(text.c_str()));
        }
        result.push_back(nullptr);
        return result;
    }

    bool isOpen() const { return streams_[0].descriptor >= 0 || streams_[1].descriptor >= 0; }

    // Some more of what it writes; false when there is none within `time` or both have ended.
    bool read(std::chrono::milliseconds time) {
        if (!isOpen()) return false;
        std::array<pollfd, 2> readable{};
        for (std::size_t i = 0; i < 2; ++i) {
            readable[i] = {.fd = streams_[i].descriptor, .events = POLLIN, .revents = 0};
        }
        if (poll(readable.data(), readable.size(), static_cast<int>(time.count())) <= 0)
            return false;
        std::array<char, 1 << 16> buffer{};
        for (std::size_t i = 0; i < 2; ++i) {
            if (readable[i].revents == 0) continue;
            const ssize_t got = ::read(streams_[i].descriptor, buffer.data(), buffer.size());
            if (got <= 0) {
                closeStream(streams_[i]);
            } else {
                streams_[i].bytes.append(buffer.data(), static_cast<std::size_t>(got));
            }
        }
        return true;
    }

    const Clock::time_point started_ = Clock::now();
    pid_t process_ = -1;
    int input_ = -1;
    std::array<Stream, 2> streams_;  // standard output, standard error
};

/// Runs it to its end.
inline CommandResult runCommand(const std::vector<std::string>& arguments,
                                const CommandSettings& settings = {}) {
    return RunningCommand(arguments, settings).finish();
}

}  // namespace PrompterCore::Tests

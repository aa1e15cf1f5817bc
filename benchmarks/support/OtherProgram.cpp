#include "benchmarks/support/OtherProgram.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace PrompterCore::Benchmarks {

ScratchFile::ScratchFile(const std::string& contents)
    : path_((std::filesystem::temp_directory_path() / "bench-prompter-XXXXXX").string()) {
    const int descriptor = mkstemp(path_.data());
    if (descriptor < 0) throw std::runtime_error("no scratch file: " + path_);
    std::FILE* const file = fdopen(descriptor, "wb");
    const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
    if (std::fclose(file) != 0 || !written) throw std::runtime_error("not written: " + path_);
}

ScratchFile::~ScratchFile() { unlink(path_.c_str()); }

std::optional<double> secondsOf(const std::vector<std::string>& command,
                                const std::string& output) {
    std::vector<char*> arguments;
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = 0;
    const int failed =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used{};
    if (failed != 0 || wait4(process, &status, 0, &used) != process || status != 0) {
        return std::nullopt;
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

}  // namespace PrompterCore::Benchmarks

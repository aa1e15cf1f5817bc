#pragma once

// Another program run on the same text, in a process of its own.

#include <optional>
#include <string>
#include <vector>

namespace PrompterCore::Benchmarks {

/// A file with `contents` for as long as this lives.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& contents);
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// Runs a program and waits; its output goes to `output`. The seconds that it kept a processor
/// busy, from its start-up on. Absent when it could not be run or failed.
std::optional<double> secondsOf(const std::vector<std::string>& command, const std::string& output);

}  // namespace PrompterCore::Benchmarks

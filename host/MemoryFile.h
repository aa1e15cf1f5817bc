#pragma once

// A file that exists only in memory: for libraries and programs that read files, without a trace
// on disk. Nothing of it is left when the process ends, however it ends.
//
//   MemoryFile words("hello\n");
//   std::ifstream(words.path());   // reads "hello"

#include <string>
#include <string_view>

namespace Varnelle {

/// Owns the file. Neither copied nor moved: its path is in others' hands.
class MemoryFile {
public:
    /// Holds `content`. Throws Unavailable when the system has no memory for it.
    explicit MemoryFile(std::string_view content);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    /// Opens at its beginning, as long as this lives and within this process.
    [[nodiscard]] std::string path() const;
    /// At the beginning until somebody reads from it. Closed in programs started from here.
    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
};

}  // namespace Varnelle

#include "host/MemoryFile.h"

#include <cerrno>
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

#include "host/Failures.h"

namespace Varnelle {
namespace {

[[noreturn]] void fail() {
    throw Unavailable(std::string("the system gives no memory for a file (") +
                      std::strerror(errno) + ")");
}

void writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) fail();
        content.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace

MemoryFile::MemoryFile(std::string_view content)
    : descriptor_(memfd_create("varnelle", MFD_CLOEXEC)) {
    if (descriptor_ < 0) fail();
    try {
        writeAll(descriptor_, content);
        if (lseek(descriptor_, 0, SEEK_SET) < 0) fail();
    } catch (...) {
        close(descriptor_);
        throw;
    }
}

MemoryFile::~MemoryFile() { close(descriptor_); }

std::string MemoryFile::path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

}  // namespace Varnelle

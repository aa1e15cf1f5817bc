#include "host/FolderLock.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace Varnelle {

FolderLock::FolderLock(const std::filesystem::path& file) {
    std::error_code unknown;
    const std::filesystem::path target = std::filesystem::weakly_canonical(file, unknown);
    const std::filesystem::path folder = (unknown ? file : target).parent_path();
    folder_ = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    while (folder_ >= 0 && flock(folder_, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    if (folder_ >= 0) close(folder_);
}

}  // namespace Varnelle

#include "host/InputFile.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/Failures.h"

namespace Varnelle {

namespace {

[[noreturn]] void cannotRead(const std::string& shownName, int error) {
    throw NoInput(shownName + ": " + std::strerror(error));
}

void closeUnlessStandard(int descriptor) {
    if (descriptor != STDIN_FILENO) close(descriptor);
}

}  // namespace

InputFile::InputFile(const std::string& name)
    : name_(shownName(name)),
      descriptor_(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
    struct stat status {};
    if (descriptor_ < 0 || fstat(descriptor_, &status) != 0) cannotRead(name_, errno);
    if ((fcntl(descriptor_, F_GETFL) & O_ACCMODE) == O_WRONLY) cannotRead(name_, EBADF);
    if (S_ISDIR(status.st_mode)) {
        closeUnlessStandard(descriptor_);
        cannotRead(name_, EISDIR);
    }
}

InputFile::~InputFile() { closeUnlessStandard(descriptor_); }

bool InputFile::isSeekable() const { return lseek(descriptor_, 0, SEEK_CUR) >= 0; }

std::string InputFile::rest() const {
    std::string bytes;
    std::array<char, 1 << 16> buffer{};
    while (true) {
        const ssize_t got = read(descriptor_, buffer.data(), buffer.size());
        if (got < 0) cannotRead(name_, errno);
        if (got == 0) return bytes;
        bytes.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

std::string shownName(const std::string& name) { return name == "-" ? "standard input" : name; }

}  // namespace Varnelle

#include "host/WriteFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/HeldSignals.h"
#include "host/NewFile.h"

namespace Varnelle {

namespace {

using std::filesystem::path;

[[noreturn]] void cannotWrite(const path& name, int error) {
    throw CannotWrite(name.string() + ": " + std::strerror(error));
}

// Where the links behind `name` lead, be there a file or not.
path withoutLinks(const path& name) {
    constexpr int mostLinks = 40;  // as many as Linux follows
    path target = name;
    std::error_code error;
    for (int i = 0; is_symlink(target, error); ++i) {
        if (i == mostLinks) cannotWrite(name, ELOOP);
        target = target.parent_path() / read_symlink(target, error);
        if (error) cannotWrite(name, error.value());
    }
    return target;
}

// What is at `target`. Absent when nothing is; refused when it must not be replaced.
std::optional<struct stat> replaceable(const path& target, const path& name) {
    struct stat status {};
    if (stat(target.c_str(), &status) != 0) {
        if (errno != ENOENT) cannotWrite(name, errno);
        return std::nullopt;
    }
    if (S_ISDIR(status.st_mode)) cannotWrite(name, EISDIR);
    if (!S_ISREG(status.st_mode))
        throw CannotWrite(name.string() + ": only a regular file can be replaced");
    if (access(target.c_str(), W_OK) != 0) cannotWrite(name, errno);
    return status;
}

// A file beside `target` that goes away unless it takes its place.
class Replacement {
public:
    Replacement(const path& target, const path& name, mode_t mode) : target_(target), name_(name) {
        for (int number = 0; descriptor_ < 0; ++number) {
            temporary_ = target.parent_path() /
                         (".varnelle-" + std::to_string(getpid()) + "-" + std::to_string(number));
            descriptor_ = open(temporary_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (descriptor_ < 0 && errno != EEXIST) cannotWrite(name, errno);
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (!isInPlace_) static_cast<void>(unlink(temporary_.c_str()));
    }

    int descriptor() const { return descriptor_; }
    void takePlace() {
        if (std::rename(temporary_.c_str(), target_.c_str()) != 0) cannotWrite(name_, errno);
        isInPlace_ = true;
    }

private:
    const path& target_;
    const path& name_;  // as messages show it
    path temporary_;
    int descriptor_ = -1;
    bool isInPlace_ = false;
};

// The owner can only be kept by those who may give files away, which does not matter to the others.
void takeOver(int descriptor, const struct stat& status, const path& name) {
    if (fchown(descriptor, status.st_uid, status.st_gid) != 0 && errno != EPERM)
        cannotWrite(name, errno);
    if (fchmod(descriptor, status.st_mode & 07777) != 0) cannotWrite(name, errno);
}

}  // namespace

void writeFile(const path& name, std::string_view bytes) {
    const HeldSignals signals;  // so that nothing is left beside the file
    const path target = withoutLinks(name);
    const std::optional<struct stat> old = replaceable(target, name);
    Replacement replacement(target, name, old ? 0600 : 0666);
    const File file(replacement.descriptor(), name);
    file.write(bytes);
    if (old) takeOver(file.descriptor(), *old, name);
    file.sync();
    replacement.takePlace();
    syncFolder(target.parent_path());
}

}  // namespace Varnelle

#include "host/WriteFile.h"

#include <cerrno>
#include <cstdio>
#include <optional>
#include <string>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/HeldSignals.h"
#include "host/NewFile.h"

namespace Varnelle {

namespace {

using std::filesystem::path;

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
    path place;
    std::optional<File> file;
    for (int number = 0; !file; ++number) {
        place = target.parent_path() /
                (".varnelle-" + std::to_string(getpid()) + "-" + std::to_string(number));
        file = createFileUnlessTaken(place, old ? 0600 : 0666, name);
    }
    Unfinished unfinished(place);
    file->write(bytes);
    if (old) takeOver(file->descriptor(), *old, name);
    file->sync();
    if (std::rename(place.c_str(), target.c_str()) != 0) cannotWrite(name, errno);
    unfinished.finished();
    syncFolder(target.parent_path());
}

}  // namespace Varnelle

#include "host/NewFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "host/Failures.h"

namespace Varnelle {

namespace {

using std::filesystem::path;

// 0, or the system's reason.
int renameWithoutReplacing(const path& from, const path& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // A file system that cannot refuse: a second link is refused everywhere that has links.
    if (link(from.c_str(), to.c_str()) != 0) return errno;
    static_cast<void>(unlink(from.c_str()));
    return 0;
}

}  // namespace

File::File(File&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), name_(std::move(other.name_)) {}

File& File::operator=(File&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    std::swap(name_, other.name_);
    return *this;
}

File::~File() {
    if (descriptor_ >= 0) close(descriptor_);
}

void File::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) cannotWrite(name_, errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void File::sync() const {
    if (fsync(descriptor_) != 0 && errno != EINVAL && errno != ENOTSUP) cannotWrite(name_, errno);
}

void cannotWrite(const path& name, int error) {
    throw CannotWrite(name.string() + ": " + std::strerror(error));
}

File createFile(const path& name) {
    if (std::optional<File> file = createFileUnlessTaken(name)) return std::move(*file);
    cannotWrite(name, EEXIST);
}

std::optional<File> createFileUnlessTaken(const path& name) {
    constexpr unsigned usual = 0666;
    return createFileUnlessTaken(name, usual, name);
}

std::optional<File> createFileUnlessTaken(const path& name, unsigned permissions,
                                          const path& shownName) {
    const int descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    if (descriptor < 0 && errno == EEXIST) return std::nullopt;
    if (descriptor < 0) cannotWrite(shownName, errno);
    return File(descriptor, shownName);
}

std::optional<File> openFile(const path& name) {
    const int descriptor = open(name.c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;
    return File(descriptor, name);
}

Unfinished::~Unfinished() {
    std::error_code ignored;
    if (!place_.empty()) std::filesystem::remove_all(place_, ignored);
}

NewFileName::NewFileName(path folder, std::string stem)
    : folder_(std::move(folder)), stem_(std::move(stem)) {}

void NewFileName::chooseFree() {
    const auto isTaken = [this] {
        const std::string beginning = withEnding(".").filename().string();
        std::error_code error;
        for (std::filesystem::directory_iterator entry(folder_, error), end; !error && entry != end;
             entry.increment(error)) {
            if (entry->path().filename().native().starts_with(beginning)) return true;
        }
        return false;
    };
    while (isTaken()) {
        next();
    }
}

path NewFileName::withEnding(std::string_view ending) const {
    std::string name = stem_;
    if (number_ > 1) name += " " + std::to_string(number_);
    return folder_ / name.append(ending);
}

void syncFolder(const path& folder) {
    const int descriptor =
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    static_cast<void>(fsync(descriptor));  // some file systems know no such thing
    close(descriptor);
}

path giveName(const path& file, NewFileName name, std::string_view ending) {
    while (true) {
        const path wanted = name.withEnding(ending);
        const int error = renameWithoutReplacing(file, wanted);
        if (error == 0) {
            syncFolder(wanted.parent_path());
            return wanted;
        }
        if (error != EEXIST) cannotWrite(wanted, error);
        name.next();
    }
}

path saveFile(const NewFileName& name, std::string_view ending, std::string_view bytes) {
    const path place = name.withEnding(".unfinished" + std::string(ending));
    static_cast<void>(unlink(place.c_str()));  // of a program that died over it
    const File file = createFile(place);
    Unfinished unfinished(place);
    file.write(bytes);
    file.sync();
    path saved = giveName(place, name, ending);
    unfinished.finished();
    return saved;
}

}  // namespace Varnelle

#pragma once

// Files that come into being: none of them is ever written over another one, and what cannot be
// written says why.
//
//   NewFileName name("Takes", "Talk");
//   name.chooseFree();                              // "Talk", or "Talk 2" where that is taken
//   File file = createFile(name.withEnding(".part"));
//   file.write("...");
//   file.sync();
//   giveName(name.withEnding(".part"), name, ".m4a");     // Takes/Talk.m4a

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace Varnelle {

/// A file that is open for reading and writing, closed at its end of life.
class File {
public:
    explicit File(int descriptor, std::filesystem::path name) noexcept
        : descriptor_(descriptor), name_(std::move(name)) {}
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }
    /// Throws CannotWrite when not all of it can be written; a part of it may be.
    void write(std::string_view bytes) const;
    /// Waits until what was written would survive a power failure. Throws CannotWrite when it
    /// would not.
    void sync() const;

private:
    int descriptor_;  // -1 when moved from
    std::filesystem::path name_;
};

/// Throws CannotWrite: `name` and the system's reason.
[[noreturn]] void cannotWrite(const std::filesystem::path& name, int error);

/// Throws CannotWrite when it cannot be made, as when there is such a file.
[[nodiscard]] File createFile(const std::filesystem::path& name);
/// Absent when there is such a file. Throws CannotWrite when it cannot be made for another reason.
[[nodiscard]] std::optional<File> createFileUnlessTaken(const std::filesystem::path& name);
/// The same with these permissions, and another name in the messages.
[[nodiscard]] std::optional<File> createFileUnlessTaken(const std::filesystem::path& name,
                                                        unsigned permissions,
                                                        const std::filesystem::path& shownName);
/// Absent when there is no such file or it may not be changed.
[[nodiscard]] std::optional<File> openFile(const std::filesystem::path& name);

/// A file, or a folder with all in it, on its way to its name: it goes away unless it gets there.
class Unfinished {
public:
    explicit Unfinished(std::filesystem::path place) : place_(std::move(place)) {}
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished();

    [[nodiscard]] const std::filesystem::path& place() const noexcept { return place_; }
    /// It has got its name.
    void finished() noexcept { place_.clear(); }

private:
    std::filesystem::path place_;  // empty when it is finished
};

/// A name without an ending, and a number from 2 on where it is taken.
class NewFileName {
public:
    NewFileName(std::filesystem::path folder, std::string stem);

    /// Counts on until no file in the folder has this name, whatever its ending.
    void chooseFree();
    /// Counts on by one.
    void next() noexcept { ++number_; }
    [[nodiscard]] std::filesystem::path withEnding(std::string_view ending) const;

private:
    std::filesystem::path folder_;
    std::string stem_;
    std::int64_t number_ = 1;
};

/// Waits until the names in `folder` would survive a power failure, where its file system can say
/// so.
void syncFolder(const std::filesystem::path& folder);

/// Renames `file` to `name` with `ending`, or with the next number that is free, and returns what
/// it is called now. Throws CannotWrite when that fails; then it keeps its name.
std::filesystem::path giveName(const std::filesystem::path& file, NewFileName name,
                               std::string_view ending);

/// A file with that name, `ending` and `bytes` in it, which is there whole or not at all. Returns
/// what it is called. Throws CannotWrite.
std::filesystem::path saveFile(const NewFileName& name, std::string_view ending,
                               std::string_view bytes);

}  // namespace Varnelle

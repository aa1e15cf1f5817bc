#pragma once

// Changes to a file that follow one another: of two processes that read it, change it and write it
// back, the second one begins when the first has ended.
//
//   const FolderLock lock("presets.json");
//   writeFile("presets.json", changed(readFile("presets.json")));

#include <filesystem>

namespace Varnelle {

/// Waits until nobody else holds the folder of `file`, links followed, and holds it. The folder,
/// since a file that is replaced is another one. Where there is no such folder, or its file system
/// knows no locks, nothing is held: whoever writes then says what is wrong, or takes the risk that
/// the file system leaves.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& file);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

private:
    int folder_;  // -1: none
};

}  // namespace Varnelle

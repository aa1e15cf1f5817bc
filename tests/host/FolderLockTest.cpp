#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "host/FolderLock.h"
#include "host/WriteFile.h"
#include "tests/host/TemporaryFolder.h"

namespace Varnelle {
namespace {

using std::filesystem::path;
using Tests::TemporaryFolder;

// Whether somebody else could hold it now.
bool isFree(const path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool free = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    close(descriptor);
    return free;
}

TEST(FolderLock, HoldsTheFolderOfAFileWhileItLives) {
    const TemporaryFolder folder;
    {
        const FolderLock lock(folder.path() / "not there yet.json");
        EXPECT_FALSE(isFree(folder.path()));
    }
    EXPECT_TRUE(isFree(folder.path()));
}

TEST(FolderLock, HoldsTheFolderThatALinkLeadsTo) {
    const TemporaryFolder folder, links;
    writeFile(folder.path() / "presets.json", "[]");
    create_symlink(folder.path() / "presets.json", links.path() / "mine.json");
    const FolderLock lock(links.path() / "mine.json");
    EXPECT_FALSE(isFree(folder.path()));
    EXPECT_TRUE(isFree(links.path()));
}

TEST(FolderLock, HoldsNothingWhereNothingIs) {
    const FolderLock lock("/no/such/folder/presets.json");
    const FolderLock another("/no/such/folder/presets.json");
}

}  // namespace
}  // namespace Varnelle

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/TextFile.h"
#include "host/WriteFile.h"
#include "tests/host/TemporaryFolder.h"

namespace Varnelle {
namespace {

using Names = std::vector<std::string>;
using std::filesystem::path;
using Tests::TemporaryFolder;

std::string failure(const path& name, std::string_view bytes) {
    try {
        writeFile(name, bytes);
    } catch (const CannotWrite& thrown) {
        return thrown.what();
    }
    return "nothing was thrown";
}

mode_t modeOf(const path& name) {
    struct stat status {};
    EXPECT_EQ(stat(name.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(WriteFile, MakesAndReplaces) {
    const TemporaryFolder folder;
    const path name = folder.path() / "talk.txt";
    const std::string bytes("a\0b\r\n", 5);
    writeFile(name, bytes);
    EXPECT_EQ(readFile(name), bytes);
    writeFile(name, "");
    EXPECT_EQ(readFile(name), "");
    EXPECT_EQ(folder.names(), Names{"talk.txt"});
}

TEST(WriteFile, KeepsThePermissions) {
    const TemporaryFolder folder;
    const path name = folder.path() / "talk.txt";
    writeFile(name, "old");
    for (const mode_t mode : {mode_t{0600}, mode_t{0755}, mode_t{0666}}) {
        chmod(name.c_str(), mode);
        writeFile(name, "new");
        EXPECT_EQ(modeOf(name), mode);
    }
}

TEST(WriteFile, ANewFileHasTheUsualPermissions) {
    const TemporaryFolder folder;
    const mode_t usual = umask(027);
    writeFile(folder.path() / "new", "");
    umask(usual);
    EXPECT_EQ(modeOf(folder.path() / "new"), 0640U);
}

TEST(WriteFile, FollowsLinksAndLeavesThem) {
    const TemporaryFolder folder;
    create_directory(folder.path() / "in");
    writeFile(folder.path() / "in/talk.txt", "old");
    create_symlink("in/talk.txt", folder.path() / "one");
    create_symlink("one", folder.path() / "two");
    writeFile(folder.path() / "two", "new");
    EXPECT_EQ(readFile(folder.path() / "in/talk.txt"), "new");
    EXPECT_EQ(read_symlink(folder.path() / "two"), "one");
    EXPECT_EQ(folder.names(), (Names{"in", "one", "two"}));

    create_symlink("in/none.txt", folder.path() / "dangling");
    writeFile(folder.path() / "dangling", "made");
    EXPECT_EQ(readFile(folder.path() / "in/none.txt"), "made");
}

TEST(WriteFile, WhatIsNoRegularFileIsRefused) {
    const TemporaryFolder folder;
    const std::string place = folder.path().string();
    EXPECT_EQ(failure(folder.path(), "x"), place + ": Is a directory");
    EXPECT_EQ(failure("/dev/null", "x"), "/dev/null: only a regular file can be replaced");
    EXPECT_EQ(failure(folder.path() / "none/talk.txt", "x"),
              place + "/none/talk.txt: No such file or directory");
    create_symlink("round", folder.path() / "round");
    EXPECT_EQ(failure(folder.path() / "round", "x"),
              place + "/round: Too many levels of symbolic links");
    EXPECT_EQ(folder.names(), Names{"round"});
}

TEST(WriteFile, AFolderOrAFileThatMayNotBeWrittenKeepsTheOldContent) {
    if (geteuid() == 0) GTEST_SKIP() << "everything may be written by this user";
    const TemporaryFolder folder;
    const path name = folder.path() / "talk.txt";
    writeFile(name, "old");
    chmod(name.c_str(), 0400);
    EXPECT_EQ(failure(name, "new"), name.string() + ": Permission denied");
    chmod(name.c_str(), 0600);
    chmod(folder.path().c_str(), 0500);
    EXPECT_EQ(failure(name, "new"), name.string() + ": Permission denied");
    chmod(folder.path().c_str(), 0700);
    EXPECT_EQ(readFile(name), "old");
    EXPECT_EQ(folder.names(), Names{"talk.txt"});
}

}  // namespace
}  // namespace Varnelle

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

namespace fs = std::filesystem;

// A folder of scripts that is gone after the test.
class LibraryCommand : public ::testing::Test {
protected:
    LibraryCommand() {
        std::string pattern = ::testing::TempDir() + "libraryXXXXXX";
        root_ = mkdtemp(pattern.data());
    }
    ~LibraryCommand() override { fs::remove_all(root_); }

    void write(const std::string& name, const std::string& bytes) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name) << bytes;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(root_ / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool has(const std::string& name) const { return fs::exists(root_ / name); }
    CommandResult library(std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.begin(), {VARNELLE_PROGRAM, "library", root_.string()});
        return runCommand(arguments, {.environment = {"LC_ALL=C.UTF-8"}});
    }
    std::string at(const std::string& name) const { return (root_ / name).string(); }

    fs::path root_;
};

TEST_F(LibraryCommand, ListsTheTreeSortedWithReadingTimes) {
    write("notes.txt", "One two three.");
    write("Agenda.md", "");
    write("talks/Keynote.txt", "Hello there.");
    write("Empty/.hidden.txt", "not shown");
    write("picture.png", "not shown");
    const CommandResult result = library();
    EXPECT_EQ(result.out,
              "Empty/\n"
              "talks/\n"
              "  Keynote · 2 words · under a minute aloud\n"
              "Agenda · Empty\n"
              "notes · 3 words · under a minute aloud\n");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(LibraryCommand, SearchesNamesWithoutCase) {
    write("Talks/Caf\u00E9.txt", "a");
    write("Talks/Other.txt", "a");
    EXPECT_EQ(library({"--search", "CAFE\u0301"}).out,
              "Talks/\n  Caf\u00E9 · 1 word · under a minute aloud\n");
    EXPECT_EQ(library({"--search", "cafe"}).out, "");
}

TEST_F(LibraryCommand, WritesTheTreeAsJson) {
    write("Talks/Keynote.txt", "Hello there.");
    const auto tree = nlohmann::json::parse(library({"--json"}).out)["items"];
    EXPECT_EQ(tree[0]["id"], "Talks");
    EXPECT_EQ(tree[0]["kind"], "folder");
    EXPECT_EQ(tree[0]["children"][0]["id"], "Talks/Keynote.txt");
    EXPECT_EQ(tree[0]["children"][0]["words"], 2);
}

TEST_F(LibraryCommand, SaysWhatItPassesOverAndShowsTheRest) {
    write("good.txt", "a b");
    write("broken.txt", "\xFF");
    write("name\xFF.txt", "a");
    fs::create_directory(root_ / "inner");
    fs::create_directory_symlink(root_, root_ / "inner" / "loop");
    fs::create_symlink("/nowhere", root_ / "gone.txt");
    const CommandResult result = library();
    EXPECT_EQ(result.out, "inner/\nbroken\ngood · 2 words · under a minute aloud\n");
    for (const char* why :
         {"not UTF-8; save it", "its name is not UTF-8", "a link back", "gone.txt: No such file"})
        EXPECT_NE(result.error.find(why), std::string::npos) << why << " in " << result.error;
    EXPECT_EQ(result.status, 65);
    EXPECT_EQ(runCommand({VARNELLE_PROGRAM, "library", at("nowhere")}).status, 66);
}

TEST_F(LibraryCommand, FollowsTheFirstLinkToAFolder) {
    write("talks/Keynote.txt", "a");
    fs::create_directory_symlink("talks", root_ / "alias");
    fs::create_directory_symlink("talks", root_ / "second");
    const CommandResult result = library();
    EXPECT_EQ(result.out,
              "alias/\n  Keynote · 1 word · under a minute aloud\n"
              "talks/\n  Keynote · 1 word · under a minute aloud\n");
    EXPECT_NE(result.error.find("second: another link to the same folder; passed over"),
              std::string::npos)
        << result.error;
}

TEST_F(LibraryCommand, FoldersThatAllLinkToEachOtherAreReadInLittleTime) {
    constexpr int folders = 12;  // 479 001 600 orders to read them in
    for (int from = 0; from < folders; ++from) {
        const fs::path folder = root_ / std::to_string(from);
        fs::create_directory(folder);
        for (int to = 0; to < folders; ++to)
            fs::create_directory_symlink("../" + std::to_string(to),
                                         folder / ("to" + std::to_string(to)));
    }
    const CommandResult result = library();
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 2 * folders);
    EXPECT_EQ(result.status, 65);
}

TEST_F(LibraryCommand, AFolderThatCannotBeReadIsPassedOver) {
    if (geteuid() == 0) GTEST_SKIP() << "root reads everything";
    write("good.txt", "a");
    fs::create_directory(root_ / "closed");
    fs::permissions(root_ / "closed", fs::perms::none);
    const CommandResult result = library();
    fs::permissions(root_ / "closed", fs::perms::owner_all);  // so that it can be removed
    EXPECT_EQ(result.out, "closed/\ngood · 1 word · under a minute aloud\n");
    EXPECT_NE(result.error.find("Permission denied"), std::string::npos);
}

TEST_F(LibraryCommand, MakesWhatIsNewUnderAFreeName) {
    write("Talks/Keynote.txt", "old");
    EXPECT_EQ(library({"new", "key/note", "--in", "Talks"}).out, at("Talks/keynote 2.txt") + "\n");
    EXPECT_EQ(library({"new", "..."}).out, at("Untitled.txt") + "\n");
    EXPECT_EQ(library({"new", "Talks", "--folder"}).out, at("Talks 2") + "\n");
    EXPECT_EQ(read("Talks/Keynote.txt"), "old");
    EXPECT_TRUE(fs::is_directory(root_ / "Talks 2"));
    EXPECT_EQ(library({"new", "x", "--in", "Nowhere"}).status, 66);
    EXPECT_EQ(library({"new", "x", "--in", "Talks/Keynote"}).status, 66);
    EXPECT_EQ(library({"new", "a/\u0301b"}).status, 74);
    EXPECT_EQ(library({"new", "\xFF"}).status, 2);
}

TEST_F(LibraryCommand, WhatIsNotListedIsNotWrittenOver) {
    fs::create_directory(root_ / "x.txt");
    const CommandResult result = library({"new", "x"});
    EXPECT_EQ(result.status, 74);
    EXPECT_TRUE(fs::is_directory(root_ / "x.txt"));
}

TEST_F(LibraryCommand, DuplicatesScriptsAndFolders) {
    write("Talks/Keynote.md", "text");
    EXPECT_EQ(library({"duplicate", "Talks/Keynote"}).out, at("Talks/Keynote copy.md") + "\n");
    EXPECT_EQ(library({"duplicate", "Talks/Keynote.md"}).out, at("Talks/Keynote copy 2.md") + "\n");
    EXPECT_EQ(read("Talks/Keynote copy.md"), "text");
    EXPECT_EQ(library({"duplicate", "Talks"}).out, at("Talks copy") + "\n");
    EXPECT_EQ(read("Talks copy/Keynote.md"), "text");
    EXPECT_EQ(library({"duplicate", "nothing"}).status, 66);
}

TEST_F(LibraryCommand, RenamesAndKeepsTheEnding) {
    write("Talks/Keynote.txt", "text");
    write("Talks/Opening.txt", "other");
    EXPECT_EQ(library({"rename", "Talks/Keynote", "opening"}).out,
              at("Talks/opening 2.txt") + "\n");
    EXPECT_EQ(read("Talks/opening 2.txt"), "text");
    EXPECT_EQ(read("Talks/Opening.txt"), "other");
    EXPECT_EQ(library({"rename", "Talks/Opening", "OPENING"}).out, at("Talks/OPENING.txt") + "\n");
    EXPECT_EQ(library({"rename", "Talks/OPENING", "OPENING"}).out, at("Talks/OPENING.txt") + "\n");
    EXPECT_EQ(library({"rename", "Talks", "Speeches"}).out, at("Speeches") + "\n");
    EXPECT_TRUE(has("Speeches/OPENING.txt"));
}

}  // namespace
}  // namespace Varnelle::Tests

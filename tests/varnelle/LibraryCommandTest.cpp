#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
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
}

TEST_F(LibraryCommand, ASearchThatFindsNothingEndsWith1) {
    write("Talk.txt", "a");
    expectText(library({"--search", " "}), "Talk \u00B7 1 word \u00B7 under a minute aloud\n");
    for (const std::vector<std::string>& form :
         {std::vector<std::string>{"--search", "keynote"}, {"--json", "--search", "keynote"}}) {
        const CommandResult result = library(form);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, form.size() == 2 ? "" : "{\"items\":[]}\n");
        EXPECT_EQ(result.error, "");
    }
    EXPECT_EQ(library({"--search", "\xFF"}).status, 2) << "no name holds it";
    fs::remove(root_ / "Talk.txt");
    EXPECT_EQ(library().status, 0) << "an empty folder is no search";
    fs::create_symlink("/nowhere", root_ / "gone");
    EXPECT_EQ(library({"--search", "keynote"}).status, 65) << "it may have been there";
}

TEST_F(LibraryCommand, OptionsOfTheListAreNotPassedOverSilently) {
    expectRefusal(library({"--search", "x", "new", "y"}), 2,
                  "--search: is not for new; the options of that stand behind it");
    EXPECT_EQ(library({"--json", "duplicate", "y"}).status, 2);
    EXPECT_EQ(library({"--json", "rename", "y", "z"}).status, 2);
    EXPECT_TRUE(fs::is_empty(root_));
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

TEST_F(LibraryCommand, AnEndingInANameIsTheFiles) {
    EXPECT_EQ(library({"new", "Talk.md"}).out, at("Talk.md") + "\n");
    EXPECT_EQ(library({"new", "talk.txt"}).out, at("talk 2.txt") + "\n");
    EXPECT_EQ(library({"new", "v1.2"}).out, at("v1.2.txt") + "\n");
    EXPECT_EQ(library({"rename", "Talk", "Opening.md"}).out, at("Opening.md") + "\n");
    EXPECT_EQ(library({"rename", "Opening", "Opening.txt"}).out, at("Opening.txt") + "\n");
    EXPECT_EQ(library({"new", "Folder.md", "--folder"}).out, at("Folder.md") + "\n");
    EXPECT_EQ(library({"rename", "Folder.md", "Notes.txt"}).out, at("Notes.txt") + "\n");
}

TEST_F(LibraryCommand, AnItemIsNamedAsTheListOrTheDiskHasIt) {
    write("Talks/LOUD.TXT", "loud");
    write("Talks/Both.md", "md");
    write("Talks/Both.txt", "txt");
    write("Talks/Both/inside.txt", "in");
    EXPECT_EQ(library({"rename", "Talks/LOUD", "quiet"}).out, at("Talks/quiet.TXT") + "\n");
    EXPECT_EQ(library({"rename", "./Talks//quiet.TXT", "low"}).out, at("Talks/low.TXT") + "\n");
    EXPECT_EQ(library({"new", "x", "--in", "Talks/"}).out, at("Talks/x.txt") + "\n");
    EXPECT_EQ(library({"duplicate", "Talks/Both"}).out, at("Talks/Both copy") + "\n")
        << "the folder has no ending to leave out";
    fs::remove_all(root_ / "Talks/Both");
    expectRefusal(library({"duplicate", "Talks/Both"}), 66,
                  "Talks/Both: this is Talks/Both.md or Talks/Both.txt; say which");
    EXPECT_EQ(library({"duplicate", "Talks/Both.md"}).out, at("Talks/Both copy 2.md") + "\n");
}

TEST_F(LibraryCommand, NamesThatAreOneTextAreToldByTheirBytes) {
    const std::string composed = "Caf\u00E9.txt", decomposed = "Cafe\u0301.txt";
    write(composed, "composed");
    if (has(decomposed)) GTEST_SKIP() << "this disk holds only one of them";
    write(decomposed, "decomposed");
    EXPECT_EQ(library({"rename", composed, "C"}).out, at("C.txt") + "\n");
    EXPECT_EQ(read("C.txt"), "composed");
    EXPECT_EQ(library({"rename", "Caf\u00E9", "D"}).out, at("D.txt") + "\n") << "as a text";
    EXPECT_EQ(read("D.txt"), "decomposed");
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

TEST_F(LibraryCommand, ACopyIsAsPrivateAsTheOriginal) {
    write("Diary.txt", "secret");
    write("Private/Diary.txt", "secret");
    for (const char* file : {"Diary.txt", "Private/Diary.txt"})
        fs::permissions(root_ / file, fs::perms::owner_read);
    fs::permissions(root_ / "Private", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(library({"duplicate", "Diary"}).status, 0);
    EXPECT_EQ(library({"duplicate", "Private"}).status, 0);
    EXPECT_EQ(fs::status(root_ / "Diary copy.txt").permissions(), fs::perms::owner_read);
    EXPECT_EQ(fs::status(root_ / "Private copy/Diary.txt").permissions(), fs::perms::owner_read);
    EXPECT_EQ(fs::status(root_ / "Private copy").permissions(),
              fs::perms::owner_read | fs::perms::owner_exec);
    for (const char* folder : {"Private", "Private copy"})  // so that they can be removed
        fs::permissions(root_ / folder, fs::perms::owner_all);
}

TEST_F(LibraryCommand, ACopyOfALinkIsACopyOfWhatItLeadsTo) {
    write("real/Talk.txt", "text");
    fs::create_directory_symlink("real", root_ / "alias");
    fs::create_symlink("real/Talk.txt", root_ / "linked.txt");
    EXPECT_EQ(library({"duplicate", "alias"}).out, at("alias copy") + "\n");
    EXPECT_EQ(library({"duplicate", "linked"}).out, at("linked copy.txt") + "\n");
    write("real/Talk.txt", "changed");
    EXPECT_EQ(read("alias copy/Talk.txt"), "text");
    EXPECT_EQ(read("linked copy.txt"), "text");
}

TEST_F(LibraryCommand, WhatCannotBeCopiedIsNamedAndNothingIsLeft) {
    write("Talks/a/Talk.txt", "text");
    ASSERT_EQ(mkfifo(at("Talks/a/pipe").c_str(), 0600), 0);
    expectRefusal(library({"duplicate", "Talks"}), 74,
                  at("Talks/a/pipe") + ": only files and folders are copied");
    EXPECT_EQ(std::distance(fs::directory_iterator(root_), {}), 1) << "hidden ones counted";
}

TEST_F(LibraryCommand, AStandardInputThatIsNoFolderIsNotNamedOne) {
    expectRefusal(runVarnelle({"library", "-"}), 66, "-: No such file or directory");
}

TEST_F(LibraryCommand, NoNameSteersTheTerminal) {
    write("a\x1b[2Jb.txt", "\xFF");
    write("c\x1b[2Jd/x.txt", "a");
    fs::create_symlink("/nowhere", root_ / "gone\x1b[2J\n");
    const std::string list = VARNELLE_PROGRAM " library '" + root_.string() + "'";
    for (const std::string& verb : {std::string(), std::string(" duplicate 'c\x1b[2Jd'"),
                                    std::string(" new x --in 'e\x1b[2J'")}) {
        const CommandResult result = runCommand({"script", "-qec", list + verb, "/dev/null"});
        EXPECT_NE(result.out.find("[2J"), std::string::npos) << result.out;
        EXPECT_EQ(result.out.find('\x1b'), std::string::npos) << result.out;
    }
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

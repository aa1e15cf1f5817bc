// `varnelle chapters`, run from outside.

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "host/TextFile.h"
#include "tests/host/TemporaryFile.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Arguments = std::vector<std::string>;
using Json = nlohmann::ordered_json;

constexpr std::string_view talk = "intro\n\n# One\na b\n\n# Two\nc\n";

// The script comes from standard input.
CommandResult chapters(std::string_view script, Arguments verb) {
    verb.insert(verb.begin(), {"chapters", "-"});
    return runVarnelle(std::move(verb), {.input = std::string(script)});
}

TEST(ChaptersCommand, ListsChaptersWithTheirReadingTimes) {
    expectText(chapters(talk, {}),
               "  1    0:00  One \u00B7 2 words \u00B7 under a minute aloud\n"
               "  2    0:01  Two \u00B7 1 word \u00B7 under a minute aloud\n");
}

TEST(ChaptersCommand, AScriptWithoutChaptersSaysSo) {
    for (const char* script : {"", "no heading\n", "#none\n", "# \n"}) {
        const CommandResult result = chapters(script, {});
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.error,
                  "varnelle: standard input: no chapters; a line that begins with \"# \" and a "
                  "title opens one\n");
        EXPECT_EQ(result.status, 0);
    }
}

TEST(ChaptersCommand, ListsThemAsJson) {
    const CommandResult result = chapters(talk, {"--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Json::parse(result.out),
              Json::parse(R"([{"index":0,"title":"One","sourceRange":[7,18],"wordRange":[1,3],
                "tokenRange":[1,3],"startsAt":0,"wordCount":2,
                "readingTime":"2 words · under a minute aloud"},
               {"index":1,"title":"Two","sourceRange":[18,26],"wordRange":[3,4],
                "tokenRange":[3,4],"startsAt":1,"wordCount":1,
                "readingTime":"1 word · under a minute aloud"}])"));
    expectText(chapters("no heading", {"--json"}), "[]\n");
}

TEST(ChaptersCommand, WritesTheEditedText) {
    const TemporaryFile body("\n body\n\n");
    struct Case {
        const char* what;
        Arguments verb;
        std::string_view edited;
    };
    const Case cases[] = {
        {"add", {"add", "New"}, "intro\n\n# One\na b\n\n# Two\nc\n\n# New\n"},
        {"add with a text",
         {"add", "New", "--text", body.name()},
         "intro\n\n# One\na b\n\n# Two\nc\n\n# New\n\nbody\n"},
        {"add before",
         {"add", "New", "--before", "1"},
         "intro\n\n# New\n\n# One\na b\n\n# Two\nc\n"},
        {"rename", {"rename", "2", "Zwei"}, "intro\n\n# One\na b\n\n# Zwei\nc\n"},
        {"rename to a title with blanks around",
         {"rename", "2", " Zwei "},
         "intro\n\n# One\na b\n\n# Zwei\nc\n"},
        {"remove", {"remove", "1"}, "intro\n\n# Two\nc\n"},
        {"remove the heading", {"remove", "1", "--keep-text"}, "intro\n\na b\n\n# Two\nc\n"},
        {"move", {"move", "2", "1"}, "intro\n\n# Two\nc\n\n# One\na b\n"},
        {"move nowhere", {"move", "2", "2"}, talk},
        {"replace", {"replace", "1", body.name()}, "intro\n\n# One\n\nbody\n\n# Two\nc\n"},
        {"excerpt", {"excerpt", "1"}, "# One\na b\n\n# End of One\n"},
    };
    for (const auto& [what, verb, edited] : cases) {
        SCOPED_TRACE(what);
        expectText(chapters(talk, verb), edited);
    }
}

TEST(ChaptersCommand, WhatIsNotEditedKeepsItsBytes) {
    expectText(
        chapters("cafe\u0301\r\n# Caf\u00E9\r\n\r\nx\r\n# B\r\ny", {"rename", "1", "e\u0301"}),
        "cafe\u0301\r\n# e\u0301\r\n\r\nx\r\n# B\r\ny");
    expectText(chapters("# Cafe\u0301\nx\n\n\n# B\r\ny\n", {"move", "1", "2"}),
               "# B\r\ny\n\n# Cafe\u0301\nx\n");
    expectText(chapters(std::string_view("a\0b\n# A\nx", 9), {"remove", "1"}),
               std::string_view("a\0b\n", 4));
}

TEST(ChaptersCommand, NewLinesEndAsTheScriptsDo) {
    const TemporaryFile body("one\ntwo\r\nthree\rfour\n");
    const std::string windows = "intro\r\n# A\r\nx\r\n# B\r\ny\r\n";
    struct Case {
        const char* what;
        std::string script;
        Arguments verb;
        std::string edited;
    };
    const Case cases[] = {
        {"add", windows, {"add", "C"}, "intro\r\n# A\r\nx\r\n# B\r\ny\r\n\r\n# C\r\n"},
        {"add before",
         windows,
         {"add", "C", "--before", "1"},
         "intro\r\n# C\r\n\r\n# A\r\nx\r\n# B\r\ny\r\n"},
        {"a text whose lines end in every way",
         windows,
         {"replace", "1", body.name()},
         "intro\r\n# A\r\n\r\none\r\ntwo\r\nthree\r\nfour\r\n\r\n# B\r\ny\r\n"},
        {"move", windows, {"move", "2", "1"}, "intro\r\n# B\r\ny\r\n\r\n# A\r\nx\r\n"},
        {"move nowhere", windows, {"move", "2", "2"}, windows},
        {"excerpt", windows, {"excerpt", "1"}, "# A\r\nx\r\n\r\n# End of A\r\n"},
        {"such a text in an ordinary script",
         "# A\nx\n",
         {"replace", "1", body.name()},
         "# A\n\none\ntwo\nthree\nfour"},
        {"carriage returns alone", "# A\rx\r", {"add", "B"}, "# A\rx\r\r# B\r"},
        {"no line end to go by", "# A", {"add", "B"}, "# A\n\n# B\n"},
        {"lines that end differently", "# A\r\nx\n", {"add", "B"}, "# A\r\nx\n\n# B\n"},
    };
    for (const auto& [what, script, verb, edited] : cases) {
        SCOPED_TRACE(what);
        expectText(chapters(script, verb), edited);
    }
}

TEST(ChaptersCommand, AnEditedScriptKeepsItsByteOrderMark) {
    expectText(chapters("\uFEFF# A\nx\n", {"rename", "1", "B"}), "\uFEFF# B\nx\n");
    expectText(chapters("\uFEFF# A\nx\n", {"move", "1", "1"}), "\uFEFF# A\nx\n");
    expectText(chapters("\uFEFF# A\nx\n", {"excerpt", "1"}), "# A\nx\n\n# End of A\n");
    const TemporaryFile script("\uFEFF# A\r\nx\r\n");
    const TemporaryFile body("\uFEFFnew\n");
    expectText(runVarnelle({"chapters", script.name(), "replace", "1", body.name(), "--in-place"}),
               "");
    EXPECT_EQ(readFile(script.name()), "\uFEFF# A\r\n\r\nnew");
}

TEST(ChaptersCommand, ANumberWithoutAChapterIsRefused) {
    const TemporaryFile script(talk);
    const std::string has = ": there is no chapter 3; it has chapters 1 to 2";
    for (const Arguments& verb :
         {Arguments{"rename", "3", "x"}, Arguments{"remove", "3"}, Arguments{"move", "3", "1"},
          Arguments{"move", "1", "3"}, Arguments{"replace", "3", "/dev/null"},
          Arguments{"excerpt", "3"}, Arguments{"add", "x", "--before", "3"}}) {
        SCOPED_TRACE(verb.front());
        Arguments all{"chapters", script.name()};
        all.insert(all.end(), verb.begin(), verb.end());
        expectRefusal(runVarnelle(all), 2, script.name() + has);
    }
    expectRefusal(chapters("# A", {"remove", "2"}), 2,
                  "standard input: there is no chapter 2; it has only chapter 1");
    expectRefusal(chapters("", {"excerpt", "1"}), 2,
                  "standard input: there is no chapter 1; it has none");
}

TEST(ChaptersCommand, ArgumentsThatMakeNoSenseAreRefused) {
    const TemporaryFile script(talk);
    const std::string title = "a title is one line of UTF-8 text that is not empty";
    for (const char* name : {"", " \t", "two\nlines", "\xFF", "a\u2028b", "\u0301"}) {
        SCOPED_TRACE(name);
        expectRefusal(runVarnelle({"chapters", script.name(), "add", name}), 2, title);
        expectRefusal(runVarnelle({"chapters", script.name(), "rename", "1", name}), 2, title);
    }
    const Arguments wrong[] = {
        {"chapters"},
        {"chapters", "-", "remove", "1", "--in-place"},
        {"chapters", "-", "replace", "1", "-"},
        {"chapters", "-", "add", "x", "--text", "-"},
        {"chapters", script.name(), "--json", "remove", "1"},
        {"chapters", script.name(), "remove"},
        {"chapters", script.name(), "remove", "0"},
        {"chapters", script.name(), "remove", "-1"},
        {"chapters", script.name(), "remove", "one"},
        {"chapters", script.name(), "turn", "1"},
        {"chapters", script.name(), "remove", "1", "move", "1", "2"},
        {"chapters", script.name(), "excerpt", "1", "--in-place"},
    };
    for (const Arguments& arguments : wrong) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const CommandResult result = runVarnelle(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    }
    EXPECT_EQ(readFile(script.name()), talk);
}

TEST(ChaptersCommand, FilesThatCannotBeReadAreNamed) {
    const TemporaryFile script(talk);
    expectRefusal(runVarnelle({"chapters", "/no/such"}), 66, "/no/such: No such file or directory");
    expectRefusal(runVarnelle({"chapters", script.name(), "replace", "1", "/no/such"}), 66,
                  "/no/such: No such file or directory");
    const TemporaryFile bad("caf\xE9");
    EXPECT_EQ(runVarnelle({"chapters", bad.name()}).status, 65);
    EXPECT_EQ(
        runVarnelle({"chapters", script.name(), "replace", "1", bad.name(), "--in-place"}).status,
        65);
    EXPECT_EQ(readFile(script.name()), talk);
}

TEST(ChaptersCommand, InPlaceReplacesTheFileAndKeepsItsPermissionsAndLinks) {
    const TemporaryFolder folder;
    const std::string name = folder.path() / "talk.txt";
    const std::string link = folder.path() / "link";
    std::filesystem::copy_file(TemporaryFile(talk).name(), name);
    chmod(name.c_str(), 0640);
    std::filesystem::create_symlink("talk.txt", link);
    expectText(runVarnelle({"chapters", link, "move", "2", "1", "--in-place"}), "");
    EXPECT_EQ(readFile(name), "intro\n\n# Two\nc\n\n# One\na b\n");
    EXPECT_EQ(std::filesystem::read_symlink(link), "talk.txt");
    struct stat status {};
    ASSERT_EQ(stat(name.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(folder.names(), (Arguments{"link", "talk.txt"}));
    expectText(runVarnelle({"chapters", name, "move", "2", "2", "--in-place"}), "");
}

TEST(ChaptersCommand, WhatCannotBeWrittenIsSaidAndTheFileIsKept) {
    const TemporaryFile script(talk);
    const CommandResult full =
        runVarnelle({"chapters", script.name(), "remove", "1"}, {.outputFile = "/dev/full"});
    EXPECT_EQ(full.status, 74);
    EXPECT_EQ(std::count(full.error.begin(), full.error.end(), '\n'), 1) << full.error;
    EXPECT_EQ(readFile(script.name()), talk);

    // A file may grow no further than this many blocks: as on a disk that is full.
    const TemporaryFolder folder;
    const std::string name = folder.path() / "talk.txt";
    const std::string large = "# One\n" + std::string(100'000, 'a') + "\n# Two\n";
    std::filesystem::copy_file(TemporaryFile(large).name(), name);
    const CommandResult limited =
        runCommand({"sh", "-c", "trap '' XFSZ; ulimit -f 1; exec \"$@\"", "sh", VARNELLE_PROGRAM,
                    "chapters", name, "rename", "1", "New", "--in-place"});
    expectRefusal(limited, 74, name + ": File too large");
    EXPECT_EQ(readFile(name), large);
    EXPECT_EQ(folder.names(), Arguments{"talk.txt"});
}

TEST(ChaptersCommand, AFolderThatMayNotBeWrittenKeepsItsFile) {
    const TemporaryFolder folder;
    const std::string name = folder.path() / "talk.txt";
    std::filesystem::copy_file(TemporaryFile(talk).name(), name);
    chmod(folder.path().c_str(), 0500);
    if (access(folder.path().c_str(), W_OK) == 0)
        GTEST_SKIP() << "everything may be written by this user";
    expectRefusal(runVarnelle({"chapters", name, "remove", "1", "--in-place"}), 74,
                  name + ": Permission denied");
    chmod(folder.path().c_str(), 0700);
    EXPECT_EQ(readFile(name), talk);
}

}  // namespace
}  // namespace Varnelle::Tests

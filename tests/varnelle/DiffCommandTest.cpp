#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/host/TemporaryFile.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

CommandResult diff(const std::string& before, const std::string& after,
                   std::vector<std::string> options = {}) {
    const TemporaryFile oldFile(before);
    const TemporaryFile newFile(after);
    std::vector<std::string> arguments{VARNELLE_PROGRAM, "diff", oldFile.name(), newFile.name()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return runCommand(arguments);
}

TEST(DiffCommand, MarksLinesAndChangedWords) {
    const CommandResult result = diff("a\nold word here\nc", "a\nnew word here\nc");
    EXPECT_EQ(result.out,
              " a\n-[-old-] word here \n+{+new+} word here \n c\n1 added · 1 removed\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "");
}

TEST(DiffCommand, ItsStatusTellsWhatWasFound) {
    EXPECT_EQ(diff("a", "a").status, 0);
    EXPECT_EQ(diff("caf\u00E9", "cafe\u0301").status, 0);
    EXPECT_EQ(diff("a", "a\n").status, 1);
    EXPECT_EQ(diff("a b", "a  b", {"--words"}).status, 0);
    EXPECT_EQ(diff("a b", "a c", {"--words"}).status, 1);
    const CommandResult broken = diff("a", "\xFF");
    EXPECT_EQ(broken.status, 2);
    EXPECT_NE(broken.error.find("not UTF-8"), std::string::npos);
    EXPECT_EQ(runCommand({VARNELLE_PROGRAM, "diff", "/nowhere", "/nowhere"}).status, 2);
    EXPECT_EQ(runCommand({VARNELLE_PROGRAM, "diff", "-", "-"}).status, 2);
}

TEST(DiffCommand, CountsUnchangedLinesFarFromAChange) {
    std::string before;
    for (char line = 'a'; line <= 'z'; ++line)
        before += std::string(1, line) + "\n";
    const std::string after = before + "new\n";
    EXPECT_EQ(diff(before, after, {"--context", "1"}).out,
              "... 25 unchanged lines\n z\n+new\n \n1 added · 0 removed\n");
    EXPECT_EQ(diff(before, before).out, "... 27 unchanged lines\n0 added · 0 removed\n");
    EXPECT_EQ(diff(before, after, {"--all"}).out.substr(0, 6), " a\n b\n");
}

TEST(DiffCommand, ColoursOnlyWhenAskedToInAPipe) {
    EXPECT_EQ(diff("a", "b").out.find('\x1b'), std::string::npos);
    const std::string out = diff("x a", "x b", {"--colour", "always"}).out;
    EXPECT_NE(out.find("\x1b[31m-x \x1b[7ma\x1b[0m"), std::string::npos) << out;
    EXPECT_NE(out.find("\x1b[32m+x \x1b[7mb\x1b[0m"), std::string::npos) << out;
}

TEST(DiffCommand, ShowsWordsAsOneText) {
    EXPECT_EQ(diff("the quick\nfox", "the slow fox", {"--words"}).out,
              "the [-quick-] {+slow+} fox\n");
    EXPECT_EQ(diff("", " \n", {"--words"}).out, "");
}

TEST(DiffCommand, WritesJson) {
    const auto lines = nlohmann::json::parse(diff("a\nb", "a\nc", {"--json"}).out);
    EXPECT_EQ(lines["summary"]["added"], 1);
    EXPECT_EQ(lines["lines"].size(), 3U);
    EXPECT_EQ(lines["lines"][1]["change"], "removed");
    EXPECT_EQ(lines["lines"][1]["segments"][0]["operation"], "delete");
    EXPECT_EQ(lines["lines"][1]["text"], "b ");
    const auto words = nlohmann::json::parse(diff("a", "b", {"--json", "--words"}).out);
    EXPECT_EQ(words["segments"].size(), 2U);
}

TEST(DiffCommand, TakesOneVersionFromStandardInput) {
    const TemporaryFile file("a\n");
    EXPECT_EQ(runCommand({VARNELLE_PROGRAM, "diff", "-", file.name()}, {.input = "a\n"}).status, 0);
    EXPECT_EQ(runCommand({VARNELLE_PROGRAM, "diff", file.name(), "-"}, {.input = "b\n"}).status, 1);
}

// What a terminal of its own shows, and "status" with the exit status.
std::string onTerminal(const std::string& pager) {
    const TemporaryFile before("a\nb\n");
    const TemporaryFile after("a\nc\n");
    const std::string command = std::string(VARNELLE_PROGRAM) + " diff --colour never " +
                                before.name() + " " + after.name() + "; echo status $?";
    return runCommand({"script", "-qec", command, "/dev/null"}, {.environment = {"PAGER=" + pager}})
        .out;
}

TEST(DiffCommand, GoesThroughThePagerOfATerminal) {
    const std::string whole = " a\r\n-[-b-] \r\n+{+c+} \r\n \r\n1 added · 1 removed\r\n";
    struct Case {
        const char* what;
        std::string pager, shown;
    };
    const Case cases[] = {
        {"none", "", whole + "status 1\r\n"},
        {"cat is none", "cat", whole + "status 1\r\n"},
        {"a command of the shell", "sed -n 2p", "-[-b-] \r\nstatus 1\r\n"},
        {"one that reads nothing", "true", "status 1\r\n"},
        {"one that the reader interrupts", "kill -INT $PPID; kill -QUIT $PPID; sed -n 2p",
         "-[-b-] \r\nstatus 1\r\n"},
        {"interrupts are the pager's", "sed -n 2p; kill -INT $$; echo survived",
         "-[-b-] \r\nstatus 1\r\n"},
        {"and so are pipes without a reader", "sed -n 2p; kill -PIPE $$; echo survived",
         "-[-b-] \r\nstatus 1\r\n"},
    };
    for (const auto& [what, pager, shown] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(onTerminal(pager), shown);
    }
}

TEST(DiffCommand, WhatCannotBeWrittenIsTrouble) {
    const TemporaryFile file("a\n");
    const CommandResult result = runCommand({VARNELLE_PROGRAM, "diff", "-", file.name()},
                                            {.input = "b\n", .outputFile = "/dev/full"});
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.error.find("No space left"), std::string::npos);
}

}  // namespace
}  // namespace Varnelle::Tests

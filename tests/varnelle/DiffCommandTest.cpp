#include <string>
#include <utility>
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

TEST(DiffCommand, SaysWhatTheLinesDoNotShow) {
    struct Case {
        const char* what;
        std::string before, after, shown;
    };
    const std::string added = "1 added \u00B7 1 removed\n";
    const Case cases[] = {
        {"a word moved by blanks", "a  b", "a b",
         "-a b \n+a b \n... only white space differs\n" + added},
        {"blank lines", "  ", "\t",
         "-  \n+\t\n... only white space differs\n0 added \u00B7 0 removed\n"},
        {"other line breaks", "a\r\nb\r\n", "a\nb\n",
         "-a\r\n-b\r\n+a\n+b\n \n... line breaks were CR LF and are LF\n"
         "2 added \u00B7 2 removed\n"},
        {"some of them", "a\nb\n", "a\r\nb\n",
         "-a \n+a \n... only white space differs\n b\n \n"
         "... line breaks were LF and are mixed\n" +
             added},
        {"a line without a break has none of its own", "a\r\nb", "c",
         "-a\r\n-b\n+c\n1 added \u00B7 2 removed\n"},
        {"both have the same", "a\r\nb", "c\r\nb", "-[-a-] \n+{+c+} \n b\n" + added},
    };
    for (const auto& [what, before, after, shown] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(diff(before, after).out, shown);
    }
}

// A table of 8 TB.
TEST(DiffCommand, RefusesWhatNoMemoryHolds) {
    std::string words, lines;
    for (int i = 0; i < 1'000'000; ++i) {
        words += "a ";
        lines += "\n";
    }
    for (const std::string& text : {words, lines}) {
        for (const std::vector<std::string>& options :
             {std::vector<std::string>{"--words"}, std::vector<std::string>{}}) {
            if (text == lines && !options.empty()) continue;  // it has no words
            const CommandResult result = diff(text, text + "b", options);
            EXPECT_EQ(result.error,
                      "varnelle: comparing these takes 8000 GB of memory, more than there is\n");
            EXPECT_EQ(result.status, 2);
            EXPECT_LT(result.peakKilobytes, 500'000);
        }
    }
}

TEST(DiffCommand, RefusesOptionsThatCountForNothing) {
    EXPECT_EQ(diff("a", "b", {"--words", "--context", "1"}).error,
              "varnelle: --words excludes --context\n");
    EXPECT_EQ(diff("a", "b", {"--words", "--all"}).error, "varnelle: --words excludes --all\n");
    EXPECT_EQ(diff("a", "b", {"--context", "-1"}).error,
              "varnelle: --context: -1 is no whole number from 0 to 1000000000\n");
    EXPECT_EQ(diff("a", "b", {"--context", "-1"}).status, 2);
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

// What a terminal shows of two versions, and "status" with the exit status.
std::string onTerminalShown(const std::string& options, const std::string& before,
                            const std::string& after, std::vector<std::string> environment) {
    const TemporaryFile oldFile(before);
    const TemporaryFile newFile(after);
    const std::string command = std::string(VARNELLE_PROGRAM) + " diff " + options + " " +
                                oldFile.name() + " " + newFile.name() + "; echo status $?";
    return runCommand({"script", "-qec", command, "/dev/null"},
                      {.environment = std::move(environment)})
        .out;
}

std::string onTerminal(const std::string& pager) {
    return onTerminalShown("--colour never", "a\nb\n", "a\nc\n", {"PAGER=" + pager});
}

TEST(DiffCommand, ColoursATerminalThatKnowsThem) {
    const std::string plain = "-[-a-] \r\n+{+b+} \r\n1 added \u00B7 1 removed\r\nstatus 1\r\n";
    EXPECT_EQ(onTerminalShown("", "a", "b", {"PAGER=", "TERM=dumb"}), plain);
    EXPECT_EQ(onTerminalShown("", "a", "b", {"PAGER=", "TERM=xterm", "NO_COLOR=1"}), plain);
    EXPECT_EQ(onTerminalShown("", "a", "b", {"PAGER=", "TERM=xterm", "NO_COLOR="}),
              "\x1b[31m-\x1b[7ma\x1b[0m\x1b[31m \x1b[0m\r\n"
              "\x1b[32m+\x1b[7mb\x1b[0m\x1b[32m \x1b[0m\r\n"
              "1 added \u00B7 1 removed\r\nstatus 1\r\n");
}

TEST(DiffCommand, NothingInATextSteersATerminalOrItsPager) {
    for (const char* pager : {"", "sed -n p"}) {
        EXPECT_EQ(onTerminalShown("--colour never", "a\x1b[2Jb\u202Ec", "",
                                  {std::string("PAGER=") + pager, "TERM=xterm"}),
                  "-a[2Jbc\r\n0 added \u00B7 1 removed\r\nstatus 1\r\n");
    }
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
        {"one that fails is one all the same", "sed -n 2p; exit 3", "-[-b-] \r\nstatus 1\r\n"},
    };
    for (const auto& [what, pager, shown] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(onTerminal(pager), shown);
    }
    // The shell says what is wrong in its own words.
    for (const char* none : {"/no/such/pager", "no-such-pager -R", "/dev/null"}) {
        SCOPED_TRACE(none);
        EXPECT_TRUE(onTerminal(none).ends_with("\r\n" + whole + "status 1\r\n"))
            << onTerminal(none);
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

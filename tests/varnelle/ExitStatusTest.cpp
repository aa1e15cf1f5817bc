// How `varnelle` fails, and what it says about itself: run from outside.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/host/TemporaryFile.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Arguments = std::vector<std::string>;

// One sentence on standard error, nothing on standard output.
void expectFailure(const CommandResult& result, int status, const std::string& sentence) {
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error, "varnelle: " + sentence + "\n");
}

std::string firstBytes(const std::string& file, std::size_t count) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    bytes.resize(std::min(count, bytes.size()));
    return bytes;
}

TEST(ExitStatus, WrongUsageIs2) {
    struct Case {
        Arguments arguments;
        std::string sentence;
    };
    const std::string script = sampleScript, words = sampleWords;
    const Case cases[] = {
        {{}, "a sub-command is missing; varnelle --help shows them"},
        {{"read"}, "read is no sub-command; varnelle --help shows them"},
        {{"--loud"}, "--loud is no sub-command; varnelle --help shows them"},
        {{"colours"}, "a sub-command is missing; varnelle colours --help shows them"},
        {{"colours", "mix"}, "mix is no sub-command; varnelle colours --help shows them"},
        {{"secret"}, "a sub-command is missing; varnelle secret --help shows them"},
        // It may be one.
        {{"secret", "hunter2"}, "a sub-command is missing; varnelle secret --help shows them"},
        {{"script"}, "SCRIPT is required"},
        {{"script", script, "--loud"}, "The following argument was not expected: --loud"},
        {{"script", script, script}, "The following argument was not expected: " + script},
        {{"follow", script}, "follow: --audio, --microphone or --words says what to follow"},
        {{"follow", script, "--audio", "a", "--words", "b"}, "--audio excludes --words"},
        {{"follow", "-", "--words", "-"}, "follow: only one thing can be read from standard input"},
        {{"follow", "-", "--audio", "-"}, "follow: only one thing can be read from standard input"},
        {{"follow", script, "--words", words, "--fast", "--speed", "2"}, "--speed excludes --fast"},
        {{"follow", script, "--words", words, "--json", "--plain"}, "--json excludes --plain"},
        {{"follow", script, "--words", words, "--speed", "0"},
         "--speed: 0 is no number from 0.01 to 100"},
        {{"follow", script, "--words", words, "--speed", "nan"},
         "--speed: nan is no number from 0.01 to 100"},
        {{"follow", script, "--words", words, "--speed", "2x"},
         "--speed: 2x is no number from 0.01 to 100"},
        {{"follow", script, "--words", words, "--frames-per-second", "inf"},
         "--frames-per-second: inf is no number from 1 to 1000"},
        {{"demo", "--frames-per-second", "nan"},
         "--frames-per-second: nan is no number from 1 to 1000"},
        {{"lines", script, "--width", "0"}, "--width: 0 is no whole number from 1 to 1000000"},
        {{"lines", script, "--width", "-3"}, "--width: -3 is no whole number from 1 to 1000000"},
        {{"lines", script, "--width", "1.5"}, "--width: 1.5 is no whole number from 1 to 1000000"},
        {{"lines", script, "--width", "99999999999999999999"},
         "--width: 99999999999999999999 is no whole number from 1 to 1000000"},
        {{"lines", script, "--width"}, "--width: 1 required INT missing"},
    };
    for (const auto& [arguments, sentence] : cases) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        expectFailure(runVarnelle(arguments), 2, sentence);
    }
}

TEST(ExitStatus, BadDataIs65) {
    const TemporaryFile latin("one\ntwo\ncaf\xE9\n");
    const std::string notUtf8 =
        latin.name() + ":3: the text is not UTF-8; save it as UTF-8 and try again";
    expectFailure(runVarnelle({"script", latin.name()}), 65, notUtf8);
    expectFailure(runVarnelle({"lines", latin.name(), "--json"}), 65, notUtf8);
    expectFailure(runVarnelle({"follow", latin.name(), "--words", sampleWords}), 65, notUtf8);
    expectFailure(runVarnelle({"script", "-"}, {.input = "\xFF"}), 65,
                  "standard input:1: the text is not UTF-8; save it as UTF-8 and try again");

    const std::string noSound =
        ": no sound file that can be read (Format not recognised); WAV, FLAC and Ogg files can be";
    const TemporaryFile empty("");
    for (const std::string& file : {sampleScript, empty.name()}) {
        expectFailure(runVarnelle({"follow", sampleScript, "--audio", file}), 65, file + noSound);
    }
    expectFailure(runVarnelle({"follow", sampleScript, "--audio", "-"}, {.input = "noise"}), 65,
                  "standard input" + noSound);
}

TEST(ExitStatus, ACutOffSoundIs65AfterWhatThereIsWasFollowed) {
    const std::string flac = firstBytes(sampleSound, 60'000);
    const TemporaryFile cut(flac);
    const CommandResult fromFile =
        runVarnelle({"follow", sampleScript, "--audio", cut.name(), "--fast"});
    EXPECT_EQ(fromFile.status, 65);
    EXPECT_EQ(fromFile.error, "varnelle: " + cut.name() +
                                  ": the sound breaks off after 3 seconds, before the end that "
                                  "the file announces\n");
    EXPECT_NE(fromFile.out.find("  behind  "), std::string::npos) << fromFile.out;

    const CommandResult fromPipe =
        runVarnelle({"follow", sampleScript, "--audio", "-", "--fast"}, {.input = flac});
    EXPECT_EQ(fromPipe.status, 65);
    EXPECT_EQ(fromPipe.out, fromFile.out) << "a pipe is heard like a file";
}

TEST(ExitStatus, NoInputIs66) {
    struct Case {
        std::string file;
        const char* why;
    };
    // Not even root reads the last two.
    const Case cases[] = {{"/no/such/file", "No such file or directory"},
                          {"/", "Is a directory"},
                          {"/etc/passwd/file", "Not a directory"},
                          {"/dev/tty", "No such device or address"},
                          {"/proc/self/mem", "Input/output error"}};
    for (const auto& [file, why] : cases) {
        if (file == "/dev/tty" && access("/dev/tty", R_OK) == 0) {
            const int terminal = open("/dev/tty", O_RDONLY | O_CLOEXEC);
            if (terminal >= 0) {  // here somebody sits at it
                close(terminal);
                continue;
            }
        }
        SCOPED_TRACE(file);
        const std::string sentence = file + ": " + why;
        expectFailure(runVarnelle({"script", file}), 66, sentence);
        expectFailure(runVarnelle({"lines", file}), 66, sentence);
        expectFailure(runVarnelle({"follow", file, "--words", sampleWords}), 66, sentence);
        expectFailure(runVarnelle({"follow", sampleScript, "--words", file, "--fast"}), 66,
                      sentence);
        if (file == "/proc/self/mem") continue;  // a file, but no sound
        expectFailure(runVarnelle({"follow", sampleScript, "--audio", file}), 66, sentence);
    }
}

TEST(ExitStatus, AFileThatMayNotBeReadIs66ForAllButRoot) {
    const TemporaryFile file("secret");
    ASSERT_EQ(chmod(file.name().c_str(), 0), 0);
    const CommandResult result = runVarnelle({"script", file.name()});
    if (access(file.name().c_str(), R_OK) == 0) {
        EXPECT_EQ(result.out, "1 word \u00B7 under a minute aloud\n");
    } else {
        expectFailure(result, 66, file.name() + ": Permission denied");
    }
}

TEST(ExitStatus, AClosedStandardInputIs66) {
    const std::string sentence = "standard input: Bad file descriptor";
    const CommandSettings settings{.closed = {STDIN_FILENO}};
    expectFailure(runVarnelle({"script", "-"}, settings), 66, sentence);
    expectFailure(runVarnelle({"follow", sampleScript, "--words", "-", "--fast"}, settings), 66,
                  sentence);
    expectFailure(runVarnelle({"follow", sampleScript, "--audio", "-", "--fast"}, settings), 66,
                  sentence);
}

TEST(ExitStatus, AMissingSpeechModelIs69) {
    std::string folder = ::testing::TempDir() + "varnelleXXXXXX";
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    for (const Arguments& arguments :
         {Arguments{"follow", sampleScript, "--audio", sampleSound}, Arguments{"demo"}}) {
        const CommandResult result =
            runVarnelle(arguments, {.environment = {"VARNELLE_SPEECH_MODEL=" + folder}});
        EXPECT_EQ(result.status, 69);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.error.starts_with("varnelle: the English speech model's file " + folder))
            << result.error;
        EXPECT_TRUE(result.error.ends_with("on Debian: apt-get install pocketsphinx-en-us\n"))
            << result.error;
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1);
    }
    rmdir(folder.c_str());
}

// Every way to write something.
const Arguments writers[] = {
    {"--help"},
    {"--version"},
    {"script", sampleScript},
    {"script", sampleScript, "--json"},
    {"lines", sampleScript},
    {"lines", sampleScript, "--json"},
    {"follow", sampleScript, "--words", sampleWords, "--fast"},
    {"follow", sampleScript, "--words", sampleWords, "--fast", "--json"},
    {"demo", "--json"},
    {"library", VARNELLE_SAMPLE_DIRECTORY},
    {"library", VARNELLE_SAMPLE_DIRECTORY, "--json"},
    {"camera", "preview"},
    {"colours", "check", "FFFFFF", "000000"},
    {"colours", "check", "FFFFFF", "000000", "--json"},
};

TEST(ExitStatus, AnOutputThatCannotBeWrittenIs74) {
    for (const Arguments& arguments : writers) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        expectFailure(runVarnelle(arguments, {.outputFile = "/dev/full"}), 74,
                      "the output cannot be written: No space left on device");
    }
    expectFailure(runVarnelle({"script", sampleScript}, {.closed = {STDOUT_FILENO}}), 74,
                  "the output cannot be written: Bad file descriptor");
}

TEST(ExitStatus, AReaderThatGoesAwayIsNoFailure) {
    for (const Arguments& arguments : writers) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        RunningCommand command(varnelle(arguments));
        command.closeOutput();
        const CommandResult result = command.finish();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
    }
}

TEST(ExitStatus, AReaderMayGoAwayInTheMiddle) {
    RunningCommand command(varnelle({"follow", sampleScript, "--words", sampleWords, "--json"}));
    EXPECT_TRUE(command.readUntil("\n"));
    command.closeOutput();
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_LT(result.seconds, 30) << "the sample takes 62";
}

TEST(ExitStatus, HoldsWhereNobodyCanHearTheFailure) {
    EXPECT_EQ(runVarnelle({"script", "/no/such/file"}, {.closed = {STDERR_FILENO}}).status, 66);
    EXPECT_EQ(runVarnelle({"loud"}, {.closed = {STDERR_FILENO}}).status, 2);
}

TEST(ExitStatus, NoComplaintSteersTheTerminal) {
    const std::string missing =
        "/no/\x1b[2J\xFF"
        "file";
    const std::string sentence = ": No such file or directory";
    expectFailure(runVarnelle({"script", missing}), 66, missing + sentence);
    const std::string command = VARNELLE_PROGRAM " script '" + missing + "'";
    EXPECT_EQ(runCommand({"script", "-qec", command, "/dev/null"}).out,
              "varnelle: /no/[2J\uFFFDfile" + sentence + "\r\n");
}

TEST(Help, BeginsWithExamplesForEachCommand) {
    const CommandResult all = runVarnelle({"--help"});
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.error, "");
    EXPECT_TRUE(all.out.starts_with("Examples:\n  varnelle demo ")) << all.out;
    EXPECT_NE(all.out.find("Usage: varnelle [OPTIONS] SUBCOMMAND\n"), std::string::npos) << all.out;
    EXPECT_NE(all.out.find("130 interrupted"), std::string::npos) << all.out;
    for (const std::string command :
         {"follow", "demo", "take", "script", "lines", "chapters", "claps", "devices", "diff",
          "library", "colours", "camera", "secret", "doctor"}) {
        const CommandResult one = runVarnelle({command, "--help"});
        EXPECT_EQ(one.status, 0);
        EXPECT_EQ(one.error, "");
        EXPECT_TRUE(one.out.starts_with("Examples:\n  varnelle " + command)) << one.out;
        EXPECT_NE(one.out.find("Usage: varnelle " + command), std::string::npos) << one.out;
        EXPECT_NE(all.out.find("\n  " + command + "  "), std::string::npos) << all.out;
    }
}

TEST(Help, UsageNamesWhatStandsInFrontOfASubcommand) {
    struct Case {
        Arguments arguments;
        const char* usage;
    };
    const Case cases[] = {
        {{"library", "x", "new"}, "Usage: varnelle library DIR new [OPTIONS] NAME\n"},
        {{"colours", "presets", "x", "remove"},
         "Usage: varnelle colours presets FILE remove [OPTIONS] PRESET\n"},
        {{"secret", "get"}, "Usage: varnelle secret get [OPTIONS] SERVICE\n"},
        {{"diff"}, "Usage: varnelle diff [OPTIONS] OLD NEW\n"},
    };
    for (const auto& [arguments, usage] : cases) {
        Arguments asked = arguments;
        asked.emplace_back("--help");
        const CommandResult help = runVarnelle(asked);
        EXPECT_NE(help.out.find(usage), std::string::npos) << help.out;
    }
}

TEST(Help, ListsSubcommandsWithoutExamplesOfTheirOwnWhole) {
    const CommandResult library = runVarnelle({"library", "--help"});
    for (const std::string sentence :
         {" Makes an empty script.", " Copies a script or a folder.", " Gives a script or folder"})
        EXPECT_NE(library.out.find(sentence), std::string::npos) << library.out;
}

TEST(Help, ToldStatusesAreTheCommandsOwn) {
    const CommandResult diff = runVarnelle({"diff", "--help"});
    EXPECT_NE(diff.out.find("Exit status: 0 the same, 1 different, 2 trouble."), std::string::npos);
    EXPECT_EQ(diff.out.find("nothing found"), std::string::npos) << diff.out;
}

TEST(Help, VersionIsOneLine) {
    const CommandResult result = runVarnelle({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "varnelle " VARNELLE_VERSION "\n");
}

}  // namespace
}  // namespace Varnelle::Tests

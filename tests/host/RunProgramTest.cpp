#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "host/MemoryFile.h"
#include "host/RunProgram.h"

namespace Varnelle {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(MemoryFile, IsReadFromItsPathAsOftenAsWanted) {
    const std::string content("a\0b\n", 4);
    const MemoryFile file(content);
    EXPECT_EQ(contentOf(file.path()), content);
    EXPECT_EQ(contentOf(file.path()), content);
    EXPECT_EQ(contentOf(MemoryFile("").path()), "");
}

TEST(MemoryFile, IsGoneWithItsOwner) {
    auto file = std::make_unique<MemoryFile>("a");
    const std::string path = file->path();
    file.reset();
    EXPECT_FALSE(std::ifstream(path).is_open());
}

TEST(RunProgram, ReturnsWhatTheProgramMakesOfItsInput) {
    const auto answer = runProgram({"tr", "a-z", "A-Z"}, "hello", seconds(10));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->output, "HELLO");
    EXPECT_TRUE(answer->complete);
}

TEST(RunProgram, PassesMoreThanAPipeHolds) {
    const std::string input(1'000'000, 'x');
    const auto answer = runProgram({"cat"}, input, seconds(10));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->output, input);
}

TEST(RunProgram, AProgramNeedNotReadItsInput) {
    const auto answer = runProgram({"true"}, std::string(1'000'000, 'x'), seconds(10));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->output, "");
    EXPECT_TRUE(answer->complete);
}

TEST(RunProgram, NoShellReadsTheArguments) {
    const auto answer = runProgram({"echo", "$(id); *", "a  b"}, "", seconds(10));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->output, "$(id); * a  b\n");
}

TEST(RunProgram, IsAbsentWithoutTheProgram) {
    EXPECT_FALSE(runProgram({"no-such-program-here"}, "", seconds(10)));
    EXPECT_FALSE(runProgram({""}, "", seconds(10)));
}

TEST(RunProgram, SaysWhenTheProgramFailed) {
    const auto answer =
        runProgram({"sh", "-c", "echo some; echo more >&2; exit 3"}, "", seconds(10));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->output, "some\n");
    EXPECT_FALSE(answer->complete);
}

TEST(RunProgram, EndsAProgramThatTakesTooLong) {
    for (const char* slow : {"echo some; exec sleep 60", "echo some; exec sleep 60 >&-"}) {
        SCOPED_TRACE(slow);
        const auto answer = runProgram({"sh", "-c", slow}, "", milliseconds(200));
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->output, "some\n");
        EXPECT_FALSE(answer->complete);
    }
}

TEST(RunProgramDeathTest, ACommandNamesAProgram) {
    EXPECT_DEATH((void)runProgram({}, "", seconds(1)), "a command names a program");
}

}  // namespace
}  // namespace Varnelle

// The recogniser's process ends in the middle of a reading; the reading goes on.

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "apps/varnelle/Json.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

std::vector<Json> alignedIn(const std::string& lines) {
    std::vector<Json> aligned;
    for (std::size_t from = 0; from < lines.size();) {
        const std::size_t to = std::min(lines.find('\n', from), lines.size());
        Json event = Json::parse(lines.substr(from, to - from));
        if (event["event"] == "aligned") aligned.push_back(std::move(event));
        from = to + 1;
    }
    return aligned;
}

TEST(RecogniserEnds, TheReadingGoesOnToTheEnd) {
    RunningCommand command(
        varnelle({"follow", sampleScript, "--audio", sampleSound, "--fast", "--json"}));
    ASSERT_TRUE(command.readUntil("\"token\":40,"));
    const std::optional<pid_t> recogniser = childOf(command.processId());
    ASSERT_TRUE(recogniser.has_value());
    kill(*recogniser, SIGKILL);
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.error.starts_with("varnelle: the recogniser ended unexpectedly at "))
        << result.error;
    EXPECT_TRUE(result.error.ends_with(" seconds; another one goes on\n")) << result.error;
    EXPECT_EQ(std::ranges::count(result.error, '\n'), 1);

    const std::vector<Json> aligned = alignedIn(result.out);
    ASSERT_FALSE(aligned.empty());
    EXPECT_GE(aligned.back()["token"].get<int>(), 160) << "of 165";
    EXPECT_NEAR(aligned.back()["time"].get<double>(), 62, 1) << "at the time of the last words";
    for (std::size_t i = 1; i < aligned.size(); ++i) {
        EXPECT_GE(aligned[i]["token"].get<int>(), aligned[i - 1]["token"].get<int>() - 8)
            << "the place is kept";
    }
}

TEST(RecogniserEnds, AnInterruptEndsTheProgramAndLeavesNoRecogniser) {
    RunningCommand command(varnelle({"follow", sampleScript, "--audio", sampleSound, "--json"}));
    ASSERT_TRUE(command.readUntil("frame"));
    const std::optional<pid_t> recogniser = childOf(command.processId());
    ASSERT_TRUE(recogniser.has_value());
    kill(*recogniser, SIGINT);  // as a terminal sends it to both
    command.send(SIGINT);
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 130);
    EXPECT_EQ(result.error, "");
    EXPECT_FALSE(std::filesystem::exists("/proc/" + std::to_string(*recogniser)));
}

}  // namespace
}  // namespace Varnelle::Tests

// `varnelle follow --words` with the sample's words as other programs would write them.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/TextFile.h"
#include "tests/host/TemporaryFile.h"
#include "tests/host/WordsWriters.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

std::vector<HeardWord> sampleHeard() {
    return wordsIn(readAll(*wordsReader(WordsFormat::jsonLines, WordsArrival::recorded),
                           readFile(sampleWords)));
}

Json endOf(const CommandResult& result) {
    const std::size_t from = result.out.rfind('\n', result.out.size() - 2);
    return Json::parse(result.out.substr(from + 1));
}

CommandResult followed(const std::vector<std::string>& more, const std::string& input = "") {
    std::vector<std::string> arguments{"follow", sampleScript, "--fast", "--json", "--words"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runVarnelle(arguments, {.input = input});
}

TEST(WordsFormats, TheSampleEndsAtTheSamePlaceInEachOfThem) {
    const Json expected = endOf(followed({sampleWords}));
    EXPECT_EQ(expected["cursor"].get<std::int64_t>() + 1, expected["tokens"]);
    for (const WordsFormat format : PrompterCore::allCases<WordsFormat>) {
        const std::string name(PrompterCore::rawValue(format));
        SCOPED_TRACE(name);
        const std::string text = textIn(format, sampleHeard());
        const TemporaryFile file("\uFEFF" + text);
        for (const CommandResult& result :
             {followed({file.name()}), followed({file.name(), "--format", name}),
              followed({"-"}, text)}) {
            EXPECT_EQ(result.status, 0) << result.error;
            const Json end = endOf(result);
            EXPECT_EQ(end["cursor"], expected["cursor"]);
            EXPECT_NEAR(end["time"].get<double>(), expected["time"].get<double>(), 0.5);
        }
    }
}

TEST(WordsFormats, LiveLinesAreFollowedAsTheyCome) {
    for (const WordsFormat format :
         {WordsFormat::vosk, WordsFormat::ctm, WordsFormat::jsonLines, WordsFormat::sherpa}) {
        SCOPED_TRACE(PrompterCore::rawValue(format));
        const std::vector<HeardWord> first{
            {.word = "behind", .start = 0, .end = 0.01, .confidence = {}}};
        RunningCommand command(varnelle({"follow", sampleScript, "--words", "-", "--json"}));
        command.write(textIn(format, first));
        EXPECT_TRUE(command.readUntil("aligned")) << "before the pipe ends";
        EXPECT_EQ(command.finish().status, 0);
    }
}

TEST(WordsFormats, BrokenPartsAreNamedAndEndWith65) {
    const TemporaryFile file("talk 1 0.6 0.4 behind\ntalk 1 x 0.4 me\n");
    const CommandResult result = followed({file.name()});
    EXPECT_EQ(result.status, 65);
    EXPECT_EQ(result.error, "varnelle: " + file.name() + ":2: the start is no time in seconds\n" +
                                "varnelle: " + file.name() + ": 1 broken line was passed over\n");
    EXPECT_EQ(endOf(result)["cursor"], 0);
}

TEST(WordsFormats, ANameThatIsNoneIsWrongUsage) {
    EXPECT_EQ(followed({sampleWords, "--format", "mp3"}).status, 2);
    EXPECT_EQ(
        runVarnelle({"follow", sampleScript, "--audio", sampleSound, "--format", "ctm"}).status, 2);
}

}  // namespace
}  // namespace Varnelle::Tests

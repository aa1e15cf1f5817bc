#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/RecogniserProcess.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

using std::chrono::milliseconds;

// Hears a word in each block; what it is told by a sample that no sound has is what may go wrong.
class Fragile : public Recogniser {
public:
    static constexpr float exits = 2, aborts = 3, hangs = 4, babbles = 5, lies = 6, throws = 7;

    std::vector<WordsUpdate> hear(std::span<const float> samples) override {
        const double start = time_;
        time_ += static_cast<double>(samples.size()) / recogniserRate;
        if (samples.front() == exits) std::exit(0);
        if (samples.front() == aborts) std::abort();
        if (samples.front() == throws) throw std::runtime_error("no");
        while (samples.front() == hangs) {
            pause();
        }
        if (samples.front() == babbles) std::exit(write(3, "nonsense", 8) == 8 ? 0 : 1);
        if (samples.front() == lies) count_ += 1000;
        return {{.time = time_,
                 .keep = count_++,
                 .words = {{.word = "word", .start = start, .end = time_, .confidence = {}}},
                 .final = false}};
    }
    std::vector<WordsUpdate> finish() override {
        return {{.time = time_, .keep = count_, .words = {}, .final = true}};
    }

private:
    double time_ = 0;
    std::int64_t count_ = 0;
};

std::unique_ptr<Recogniser> fragile() { return std::make_unique<Fragile>(); }

constexpr RecogniserPatience brief{.start = milliseconds(5000), .answer = milliseconds(300)};

struct Reading {
    std::vector<std::string> complaints;
    HeardWords heard;
    std::vector<WordsUpdate> updates;

    std::function<void(const std::string&)> listen() {
        return [this](const std::string& why) { complaints.push_back(why); };
    }
    void take(std::vector<WordsUpdate> more) {
        for (const WordsUpdate& update : more) {
            heard.apply(update);
            updates.push_back(update);
        }
    }
};

const std::vector<float> block(1600, 0.1F);  // a tenth of a second

std::vector<float> blockOf(float sample) { return std::vector<float>(1600, sample); }

std::size_t openFiles() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& file : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

TEST(RecogniserProcess, HearsWhatTheRecogniserWouldHearHere) {
    Reading there, here;
    RecogniserProcess process(fragile, there.listen());
    Fragile recogniser;
    for (int i = 0; i < 50; ++i) {
        there.take(process.hear(block));
        here.take(recogniser.hear(block));
    }
    there.take(process.finish());
    here.take(recogniser.finish());
    EXPECT_EQ(there.updates, here.updates);
    EXPECT_TRUE(there.complaints.empty());
    EXPECT_TRUE(process.finish().empty());
    EXPECT_TRUE(process.hear(block).empty());
    EXPECT_EQ(process.processId(), std::nullopt);
}

TEST(RecogniserProcess, HearsASoundOfAnyLengthAtOnce) {
    Reading reading;
    RecogniserProcess process(fragile, reading.listen());
    reading.take(process.hear(std::vector<float>(100 * recogniserRate, 0.1F)));
    reading.take(process.hear({}));
    EXPECT_EQ(reading.heard.words().size(), 100U);
    EXPECT_EQ(reading.updates.back().time, 100);
}

TEST(RecogniserProcess, WhateverEndsItTheNextOneGoesOn) {
    struct Case {
        const char* what;
        float sample;
        const char* said;
    };
    const Case cases[] = {
        {"the library ends the program", Fragile::exits, "ended unexpectedly"},
        {"the library aborts", Fragile::aborts, "ended unexpectedly"},
        {"an exception", Fragile::throws, "ended unexpectedly"},
        {"it hangs", Fragile::hangs, "did not answer"},
        {"it writes what is no message", Fragile::babbles, "answered nonsense"},
        {"it keeps words that were never heard", Fragile::lies, "answered nonsense"},
    };
    for (const auto& [what, sample, said] : cases) {
        SCOPED_TRACE(what);
        const std::size_t filesBefore = openFiles();
        Reading reading;
        {
            RecogniserProcess process(fragile, reading.listen(), brief);
            reading.take(process.hear(block));
            reading.take(process.hear(block));
            reading.updates.clear();
            reading.take(process.hear(blockOf(sample)));
            ASSERT_EQ(reading.updates.size(), 1U);
            EXPECT_EQ(reading.updates[0],
                      (WordsUpdate{.time = 0.3, .keep = 2, .words = {}, .final = true}));
            EXPECT_EQ(reading.complaints,
                      (std::vector<std::string>{std::string("the recogniser ") + said +
                                                " at 0.3 seconds; another one goes on"}));
            reading.take(process.hear(block));
            ASSERT_EQ(reading.heard.words().size(), 3U) << "what was heard stays";
            EXPECT_DOUBLE_EQ(reading.heard.words()[2].start, 0.3) << "and time goes on";
            EXPECT_DOUBLE_EQ(reading.updates.back().time, 0.4);
            reading.take(process.finish());
            EXPECT_TRUE(reading.updates.back().final);
            EXPECT_EQ(reading.updates.back().keep, 3);
            EXPECT_EQ(reading.complaints.size(), 1U);
        }
        EXPECT_EQ(openFiles(), filesBefore);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no process is left";
    }
}

TEST(RecogniserProcess, KilledBetweenTwoQuestionsOrBeforeTheEnd) {
    Reading reading;
    RecogniserProcess process(fragile, reading.listen());
    reading.take(process.hear(block));
    kill(process.processId().value(), SIGKILL);
    reading.take(process.hear(block));
    reading.take(process.hear(block));
    EXPECT_EQ(reading.heard.words().size(), 2U);
    kill(process.processId().value(), SIGKILL);
    reading.take(process.finish());
    EXPECT_EQ(reading.updates.back(),
              (WordsUpdate{.time = 0.3, .keep = 2, .words = {}, .final = true}));
    EXPECT_EQ(reading.complaints.size(), 2U);
}

TEST(RecogniserProcess, EndsNowAndThenAreBorne) {
    Reading reading;
    RecogniserProcess process(fragile, reading.listen());
    for (int i = 0; i < 8; ++i) {
        reading.take(process.hear(blockOf(Fragile::exits)));
        reading.take(process.hear(std::vector<float>(10 * recogniserRate, 0.1F)));
    }
    EXPECT_EQ(reading.complaints.size(), 8U);
    EXPECT_EQ(reading.heard.words().size(), 80U);
}

TEST(RecogniserProcess, EndsAgainAndAgainAreNot) {
    Reading reading;
    RecogniserProcess process(fragile, reading.listen());
    for (int i = 0; i < 3; ++i) {
        reading.take(process.hear(blockOf(Fragile::exits)));
    }
    EXPECT_THROW(reading.take(process.hear(blockOf(Fragile::exits))), Unavailable);
    EXPECT_EQ(reading.complaints.size(), 3U);
}

std::string whyItDoesNotStart(const RecogniserFactory& factory) {
    try {
        const RecogniserProcess process(
            factory, [](const std::string&) {}, brief);
    } catch (const Unavailable& failure) {
        return failure.what();
    }
    return "it started";
}

TEST(RecogniserProcess, WhatCannotStartIsRefusedWithItsReason) {
    EXPECT_EQ(whyItDoesNotStart([]() -> std::unique_ptr<Recogniser> {
                  throw Unavailable("the model is missing");
              }),
              "the model is missing");
    EXPECT_EQ(whyItDoesNotStart([]() -> std::unique_ptr<Recogniser> {
                  std::fputs("varnelle: the model is broken\n", stderr);
                  std::_Exit(69);
              }),
              "the model is broken");
    EXPECT_EQ(whyItDoesNotStart([]() -> std::unique_ptr<Recogniser> { std::_Exit(1); }),
              "the recogniser cannot be started: it ended unexpectedly each time");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no process is left";
}

TEST(RecogniserProcess, SignalsToTheWholeTerminalDoNotReachIt) {
    Reading reading;
    RecogniserProcess process(fragile, reading.listen());
    for (const int signal : {SIGINT, SIGTERM, SIGQUIT, SIGHUP}) {
        kill(process.processId().value(), signal);
    }
    reading.take(process.hear(block));
    EXPECT_EQ(reading.heard.words().size(), 1U);
    EXPECT_TRUE(reading.complaints.empty());
}

TEST(RecogniserProcess, ItHasNoFilesOfTheProgram) {
    Reading reading;
    std::FILE* const ours = std::tmpfile();
    RecogniserProcess process(fragile, reading.listen());
    const std::filesystem::path files =
        "/proc/" + std::to_string(process.processId().value()) + "/fd";
    std::vector<std::string> open;
    for (const auto& file : std::filesystem::directory_iterator(files)) {
        open.push_back(file.path().filename());
    }
    std::sort(open.begin(), open.end());
    EXPECT_EQ(open, (std::vector<std::string>{"0", "1", "2", "3"}));
    EXPECT_EQ(std::filesystem::read_symlink(files / "0"), "/dev/null");
    EXPECT_EQ(std::filesystem::read_symlink(files / "1"), "/dev/null");
    std::fclose(ours);
}

TEST(RecogniserProcess, ItEndsWithTheProgram) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    const pid_t program = fork();
    ASSERT_GE(program, 0);
    if (program == 0) {
        RecogniserProcess process(fragile, [](const std::string&) {});
        const pid_t id = process.processId().value();
        if (write(ends[1], &id, sizeof(id)) < 0) _exit(1);
        while (true) {
            pause();
        }
    }
    pid_t id = 0;
    ASSERT_EQ(read(ends[0], &id, sizeof(id)), static_cast<ssize_t>(sizeof(id)));
    const auto process = "/proc/" + std::to_string(id) + "/fd/0";
    ASSERT_TRUE(std::filesystem::exists(process));
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    for (int i = 0; i < 500 && std::filesystem::exists(process); ++i) {
        poll(nullptr, 0, 10);
    }
    EXPECT_FALSE(std::filesystem::exists(process));
    close(ends[0]);
    close(ends[1]);
}

}  // namespace
}  // namespace Varnelle

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/TakeWriter.h"
#include "tests/host/DecodedSound.h"
#include "tests/host/TemporaryFolder.h"

namespace Varnelle {
namespace {

using namespace std::chrono_literals;
using Tests::DecodedSound;
using Tests::decodedSound;
using Tests::TemporaryFolder;
using Names = std::vector<std::string>;

// Something like a voice: a tone that glides, so that each place sounds different from its
// neighbours.
std::vector<float> glide(double rate, double seconds) {
    std::vector<float> samples;
    double phase = 0;
    for (int i = 0; i < static_cast<int>(seconds * rate); ++i) {
        const double time = i / rate;
        phase += 2 * std::numbers::pi * (300 + 200 * std::sin(5 * time)) / rate;
        samples.push_back(static_cast<float>(0.4 * std::sin(phase)));
    }
    return samples;
}

TakeFile talk(const TemporaryFolder& folder, double rate = 48000) {
    return {.folder = folder.path(),
            .name = "Talk.m4a",
            .rate = rate,
            .began = std::chrono::system_clock::time_point(1741183629s)};
}

SavedTake saveTake(const TemporaryFolder& folder, double seconds) {
    TakeWriter take(talk(folder));
    take.write(glide(48000, seconds));
    return take.finish();
}

// How alike two sounds are when the second one is `lag` samples late: 1 when they are the same.
double likeness(const std::vector<float>& a, const std::vector<float>& b, std::int64_t lag) {
    double product = 0;
    double ofA = 0;
    double ofB = 0;
    for (std::int64_t i = 4096; i < static_cast<std::int64_t>(std::min(a.size(), b.size())) - 4096;
         ++i) {
        const double x = static_cast<double>(a[static_cast<std::size_t>(i)]);
        const double y = static_cast<double>(b[static_cast<std::size_t>(i + lag)]);
        product += x * y;
        ofA += x * x;
        ofB += y * y;
    }
    return product / std::sqrt(ofA * ofB);
}

TEST(TakeWriter, WhatIsDecodedIsWhatWasRecordedSampleBySample) {
    for (const double rate : {8000, 11025, 16000, 22050, 44100, 48000, 96000}) {
        SCOPED_TRACE(rate);
        const TemporaryFolder folder;
        TakeWriter take(talk(folder, rate));
        const std::vector<float> recorded = glide(rate, 3.21);
        for (std::size_t at = 0; at < recorded.size(); at += 777) {
            take.write(
                std::span(recorded).subspan(at, std::min<std::size_t>(777, recorded.size() - at)));
        }
        EXPECT_NEAR(take.seconds(), 3.21, 1 / rate);
        const SavedTake saved = take.finish();
        EXPECT_EQ(saved.file, folder.path() / "Talk.m4a");
        EXPECT_NEAR(saved.seconds, 3.21, 1 / rate);
        EXPECT_EQ(saved.trouble, std::nullopt);
        EXPECT_EQ(folder.names(), Names{"Talk.m4a"});

        const DecodedSound sound = decodedSound(saved.file);
        EXPECT_EQ(sound.rate, rate);
        EXPECT_EQ(sound.channels, 1);
        EXPECT_NEAR(sound.duration, 3.21, 1 / rate);
        EXPECT_GE(sound.samples.size(), recorded.size());
        EXPECT_LT(sound.samples.size(), recorded.size() + 1024);
        const double inPlace = likeness(recorded, sound.samples, 0);
        EXPECT_GT(inPlace, 0.995);
        for (const std::int64_t lag : {-8, -2, 2, 8}) {
            EXPECT_LT(likeness(recorded, sound.samples, lag), inPlace) << lag;
        }
    }
}

TEST(TakeWriter, ARateThatAacLacksIsConverted) {
    struct Case {
        double rate;
        int written;
    };
    for (const auto& [rate, written] : {Case{12345, 16000}, Case{37800, 44100}, Case{50000, 64000},
                                        Case{176400, 88200}, Case{192000, 96000}}) {
        SCOPED_TRACE(rate);
        const TemporaryFolder folder;
        TakeWriter take(talk(folder, rate));
        take.write(glide(rate, 2));
        const DecodedSound sound = decodedSound(take.finish().file);
        EXPECT_EQ(sound.rate, written);
        EXPECT_NEAR(sound.duration, 2, 2.0 / written);
        EXPECT_GT(likeness(glide(written, 2), sound.samples, 0), 0.99);
    }
}

TEST(TakeWriter, EveryLengthIsKeptToTheSample) {
    for (const std::size_t length : {1U, 2U, 1023U, 1024U, 1025U, 2047U, 2048U, 2049U, 48000U}) {
        SCOPED_TRACE(length);
        const TemporaryFolder folder;
        TakeWriter take(talk(folder));
        take.write(std::vector<float>(length, 0.1F));
        const SavedTake saved = take.finish();
        EXPECT_EQ(std::lround(saved.seconds * 48000), static_cast<long>(length));
        EXPECT_EQ(std::lround(decodedSound(saved.file).duration * 48000),
                  static_cast<long>(length));
    }
}

TEST(TakeWriter, TheFileSaysWhenTheTakeBegan) {
    const TemporaryFolder folder;
    EXPECT_EQ(decodedSound(saveTake(folder, 0.1).file).madeAt, "2025-03-05T14:07:09.000000Z");
}

TEST(TakeWriter, NoNumbersAreSilenceAndWhatIsTooLoudIsClipped) {
    const TemporaryFolder folder;
    TakeWriter take(talk(folder));
    const float infinity = std::numeric_limits<float>::infinity();
    take.write(std::vector<float>(24000, std::numeric_limits<float>::quiet_NaN()));
    take.write(std::vector<float>(24000, infinity));
    take.write(std::vector<float>(24000, -infinity));
    std::vector<float> loud = glide(48000, 1);
    for (float& sample : loud) {
        sample *= 1e30F;
    }
    take.write(loud);
    const std::vector<float> samples = decodedSound(take.finish().file).samples;
    for (std::size_t i = 0; i < 70000; ++i) {
        ASSERT_LT(std::abs(samples[i]), 0.001F) << i;
    }
    float loudest = 0;
    for (const float sample : samples) {
        ASSERT_TRUE(std::isfinite(sample));
        loudest = std::max(loudest, std::abs(sample));
    }
    EXPECT_GT(loudest, 0.9F);
    EXPECT_LT(loudest, 2.0F);
}

TEST(TakeWriter, NothingIsWrittenOver) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "Talk.m4a") << "somebody's";
    EXPECT_EQ(saveTake(folder, 0.1).file.filename(), "Talk 2.m4a");
    EXPECT_EQ(saveTake(folder, 0.1).file.filename(), "Talk 3.m4a");
    std::string kept;
    std::getline(std::ifstream(folder.path() / "Talk.m4a"), kept);
    EXPECT_EQ(kept, "somebody's");
}

TEST(TakeWriter, ANameIsTakenByWhateverBelongsToATake) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "Talk.marks.json") << "[]";
    EXPECT_EQ(saveTake(folder, 0.1).file.filename(), "Talk 2.m4a");
}

TEST(TakeWriter, ANameThatIsTakenMeanwhileGoesToWhoWasFirst) {
    const TemporaryFolder folder;
    TakeWriter take(talk(folder));
    take.write(glide(48000, 0.1));
    std::ofstream(folder.path() / "Talk.m4a") << "somebody's";
    EXPECT_EQ(take.finish().file.filename(), "Talk 2.m4a");
}

TEST(TakeWriter, TwoTakesAtOnceHaveTwoNames) {
    const TemporaryFolder folder;
    TakeWriter one(talk(folder));
    TakeWriter other(talk(folder));
    one.write(glide(48000, 0.1));
    other.write(glide(48000, 0.2));
    EXPECT_EQ(other.finish().file.filename(), "Talk 2.m4a");
    EXPECT_EQ(one.finish().file.filename(), "Talk.m4a");
}

TEST(TakeWriter, NothingIsLeftOfATakeThatNobodyWants) {
    const TemporaryFolder folder;
    TakeWriter take(talk(folder));
    take.discard();
    EXPECT_EQ(folder.names(), Names{});
}

TEST(TakeWriter, AFolderThatTakesNoFileIsSaidAtOnce) {
    EXPECT_THROW(TakeWriter({.folder = "/proc/nowhere", .name = "Talk.m4a", .rate = 48000}),
                 CannotWrite);
}

TEST(TakeWriter, WhatADeadProgramLeftIsSavedAndOnlyThat) {
    const TemporaryFolder folder;
    saveTake(folder, 0.5);
    const pid_t child = fork();
    if (child == 0) {
        TakeWriter take(talk(folder));
        const std::vector<float> samples = glide(48000, 3);
        for (std::size_t at = 0; at < samples.size(); at += 960) {
            take.write(std::span(samples).subspan(at, 960));
        }
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(folder.names(), (Names{"Talk 2.unfinished.aac", "Talk.m4a"}));
    TakeWriter alive(talk(folder));
    alive.write(glide(48000, 1));

    const std::vector<SavedTake> recovered = TakeWriter::recover(folder.path());
    ASSERT_EQ(recovered.size(), 1U);
    EXPECT_EQ(recovered[0].file.filename(), "Talk 2.m4a");
    EXPECT_EQ(recovered[0].trouble, std::nullopt);
    EXPECT_NEAR(recovered[0].seconds, 3, 0.1);
    const DecodedSound sound = decodedSound(recovered[0].file);
    EXPECT_NEAR(sound.duration, recovered[0].seconds, 0.001);
    EXPECT_GT(likeness(glide(48000, 2.8), sound.samples, 0), 0.995);
    EXPECT_EQ(folder.names(), (Names{"Talk 2.m4a", "Talk 3.unfinished.aac", "Talk.m4a"}));
    EXPECT_EQ(alive.finish().file.filename(), "Talk 3.m4a");
    EXPECT_TRUE(TakeWriter::recover(folder.path()).empty());
}

TEST(TakeWriter, AnUnfinishedTakeIsPlayableUpToWhereItEnds) {
    const TemporaryFolder folder;
    {
        TakeWriter take(talk(folder));
        take.write(glide(48000, 2));
    }
    const DecodedSound sound = decodedSound(folder.path() / "Talk.unfinished.aac");
    EXPECT_NEAR(static_cast<double>(sound.samples.size()) / sound.rate, 2, 0.05);
}

// A child whose files cannot grow beyond `bytes` runs `work`, which returns its exit status.
template <class Work>
int statusWithRoomFor(rlim_t bytes, const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
        const rlimit limit{.rlim_cur = bytes, .rlim_max = bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(TakeWriter, AFullDiskEndsATakeAndKeepsWhatItHolds) {
    const TemporaryFolder folder;
    const SavedTake before = saveTake(folder, 0.5);
    const int status = statusWithRoomFor(50'000, [&] {
        TakeWriter take(talk(folder));
        const std::vector<float> samples = glide(48000, 30);
        bool isFull = false;
        for (std::size_t at = 0; at < samples.size() && !isFull; at += 960) {
            try {
                take.write(std::span(samples).subspan(at, 960));
            } catch (const CannotWrite&) {
                isFull = true;
            }
        }
        const SavedTake saved = take.finish();
        if (!isFull) return 1;
        if (!saved.trouble) return 2;
        return saved.seconds > 2 && saved.seconds < 29 ? 0 : 3;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.names(), (Names{"Talk 2.aac", "Talk.m4a"}));
    EXPECT_GT(likeness(glide(48000, 2), decodedSound(folder.path() / "Talk 2.aac").samples, 1024),
              0.99);
    EXPECT_NEAR(decodedSound(before.file).duration, 0.5, 0.001);
}

TEST(TakeWriter, NothingIsLeftOfATakeWithoutSound) {
    const TemporaryFolder folder;
    EXPECT_EQ(TakeWriter(talk(folder)).finish().file, "");
    EXPECT_EQ(folder.names(), Names{});
    const int status = statusWithRoomFor(0, [&] {
        TakeWriter take(talk(folder));
        bool isFull = false;
        try {
            take.write(glide(48000, 1));
        } catch (const CannotWrite&) {
            isFull = true;
        }
        return isFull && take.finish().file.empty() ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.names(), Names{});
}

TEST(TakeWriter, WithoutRoomForTheFinishedFileTheTakeStaysAsItWasRecorded) {
    const TemporaryFolder folder;
    std::int64_t size = 0;
    {
        TakeWriter take(talk(folder));
        take.write(glide(48000, 3));
        static_cast<void>(take.finish());
        size = static_cast<std::int64_t>(std::filesystem::file_size(folder.path() / "Talk.m4a"));
    }
    // The frames' own headers take less room than the tables of the finished file.
    const int status = statusWithRoomFor(static_cast<rlim_t>(size - 200), [&] {
        TakeWriter take(talk(folder));
        take.write(glide(48000, 3));
        const SavedTake saved = take.finish();
        return saved.trouble && saved.file.extension() == ".aac" &&
                       std::abs(saved.seconds - 3) < 0.001
                   ? 0
                   : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.names(), (Names{"Talk 2.aac", "Talk.m4a"}));
}

TEST(TakeWriterDeathTest, AFinishedTakeTakesNothingMore) {
    const TemporaryFolder folder;
    TakeWriter take(talk(folder));
    static_cast<void>(take.finish());
    EXPECT_DEATH(take.write({}), "the take is not finished yet");
    EXPECT_DEATH(static_cast<void>(take.finish()), "the take is not finished yet");
    EXPECT_DEATH(static_cast<void>(take.seconds()), "the take is not finished yet");
}

TEST(TakeWriter, WhatIsNoTakeIsLeftAlone) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "notes.unfinished.aac") << "not a sound";
    std::ofstream(folder.path() / "empty.unfinished.aac");
    EXPECT_TRUE(TakeWriter::recover(folder.path()).empty());
    ASSERT_EQ(mkfifo((folder.path() / "pipe.unfinished.aac").c_str(), 0600), 0);
    create_directory(folder.path() / "folder.unfinished.aac");
    EXPECT_TRUE(TakeWriter::recover(folder.path()).empty());
    EXPECT_EQ(folder.names(),
              (Names{"folder.unfinished.aac", "notes.unfinished.aac", "pipe.unfinished.aac"}));
    EXPECT_TRUE(TakeWriter::recover(folder.path() / "nowhere").empty());
}

// Between the making of a take's file and its lock, which is an instant.
TEST(TakeWriter, ATakeThatBeginsIsNotTakenForOneThatWasLeft) {
    const TemporaryFolder folder;
    const pid_t other = fork();
    if (other == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (true) {
            static_cast<void>(TakeWriter::recover(folder.path()));
        }
    }
    int there = 0;
    for (int i = 0; i < 1000; ++i) {
        TakeWriter take(talk(folder));
        if (folder.names() == Names{"Talk.unfinished.aac"}) ++there;
        take.discard();
    }
    EXPECT_EQ(there, 1000);
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
}

}  // namespace
}  // namespace Varnelle

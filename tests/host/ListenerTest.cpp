#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/Listener.h"
#include "host/SoundFileSource.h"
#include "tests/host/TemporaryFile.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

using Tests::TemporaryFile;

constexpr double ever = std::numeric_limits<double>::infinity();

std::string line(double time, const std::string& word) {
    return "{\"time\":" + std::to_string(time) + ",\"keep\":0,\"words\":[{\"word\":\"" + word +
           "\",\"start\":0,\"end\":0}],\"final\":false}\n";
}

std::vector<std::string> wordsOf(const std::vector<Heard>& heard) {
    std::vector<std::string> words;
    for (const Heard& event : heard) {
        words.push_back(std::get<WordsUpdate>(event).words.at(0).word.utf8());
    }
    return words;
}

struct Complaints {
    std::vector<std::string> said;
    std::function<void(const std::string&)> listen() {
        return [this](const std::string& why) { said.push_back(why); };
    }
};

TEST(WordsListener, GivesUpdatesWhenTheirTimeHasCome) {
    const TemporaryFile file(line(1, "a") + line(2, "b") + line(3, "c"));
    Complaints complaints;
    WordsListener listener(file.name(), complaints.listen());
    EXPECT_EQ(wordsOf(listener.until(0.5)), std::vector<std::string>{});
    EXPECT_EQ(wordsOf(listener.until(2)), (std::vector<std::string>{"a", "b"}));
    EXPECT_FALSE(listener.hasEnded());
    EXPECT_EQ(wordsOf(listener.until(ever)), (std::vector<std::string>{"c"}));
    EXPECT_TRUE(listener.hasEnded());
    EXPECT_EQ(listener.endTime(), 3);
    EXPECT_EQ(listener.trouble(), std::nullopt);
}

TEST(WordsListener, ABrokenLineIsNamedAndTheRestGoesOn) {
    const TemporaryFile file(line(1, "a") + "\n{\"time\":1.5}\r\n" + line(2, "b") + "nonsense");
    Complaints complaints;
    WordsListener listener(file.name(), complaints.listen());
    EXPECT_EQ(wordsOf(listener.until(ever)), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(complaints.said, (std::vector<std::string>{file.name() + ":3: \"keep\" is missing",
                                                         file.name() + ":5: the line is no JSON"}));
    EXPECT_EQ(listener.trouble(), file.name() + ": 2 broken lines were passed over");
}

TEST(WordsListener, TimeNeverGoesBack) {
    const TemporaryFile file(line(2, "a") + line(1, "b"));
    Complaints complaints;
    WordsListener listener(file.name(), complaints.listen());
    const std::vector<Heard> heard = listener.until(2);
    ASSERT_EQ(wordsOf(heard), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(std::get<WordsUpdate>(heard[1]).time, 2);
}

TEST(WordsListener, AnEmptyFileHasEndedAtItsBeginning) {
    const TemporaryFile file("");
    Complaints complaints;
    WordsListener listener(file.name(), complaints.listen());
    EXPECT_TRUE(listener.until(0).empty());
    EXPECT_TRUE(listener.hasEnded());
    EXPECT_EQ(listener.endTime(), 0);
}

TEST(WordsListener, APipeIsNeverWaitedFor) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    const int kept = dup(STDIN_FILENO);
    dup2(ends[0], STDIN_FILENO);
    Complaints complaints;
    {
        WordsListener listener("-", complaints.listen());
        EXPECT_TRUE(listener.until(1).empty());
        EXPECT_EQ(listener.waitingFor(), STDIN_FILENO);
        EXPECT_FALSE(listener.hasEnded());

        const std::string whole = line(0.5, "late");
        ASSERT_EQ(write(ends[1], whole.data(), 10), 10) << "half a line";
        EXPECT_TRUE(listener.until(1).empty());
        const auto rest = static_cast<ssize_t>(whole.size() - 10);
        ASSERT_EQ(write(ends[1], whole.data() + 10, whole.size() - 10), rest);
        EXPECT_EQ(wordsOf(listener.until(1)), (std::vector<std::string>{"late"}));

        close(ends[1]);
        EXPECT_TRUE(listener.until(2).empty());
        EXPECT_TRUE(listener.hasEnded());
        EXPECT_EQ(listener.waitingFor(), std::nullopt);
    }
    dup2(kept, STDIN_FILENO);
    close(kept);
    close(ends[0]);
}

TEST(WordsListener, AMissingFileIsRefused) {
    Complaints complaints;
    EXPECT_THROW(WordsListener("/no/such/file", complaints.listen()), NoInput);
    EXPECT_THROW(WordsListener("/", complaints.listen()), NoInput);
}

// Publishes the number of samples it has been given, a thousand at a time.
class CountingRecogniser : public Recogniser {
public:
    std::vector<WordsUpdate> hear(std::span<const float> samples) override {
        count_ += samples.size();
        std::vector<WordsUpdate> updates;
        for (; count_ >= (published_ + 1) * 1000; ++published_) {
            updates.push_back({.time = static_cast<double>(count_) / recogniserRate,
                               .keep = static_cast<std::int64_t>(published_),
                               .words = {{.word = "word", .start = 0, .end = 0, .confidence = {}}},
                               .final = false});
        }
        return updates;
    }
    std::vector<WordsUpdate> finish() override {
        return {{.time = static_cast<double>(count_) / recogniserRate,
                 .keep = static_cast<std::int64_t>(published_),
                 .words = {},
                 .final = true}};
    }

private:
    std::size_t count_ = 0;
    std::size_t published_ = 0;
};

const std::string sample = VARNELLE_SAMPLE_DIRECTORY "/sample.flac";

TEST(SoundListener, HearsTheSameAtAnySpeed) {
    SoundListener atOnce(std::make_unique<SoundFileSource>(sample),
                         std::make_unique<CountingRecogniser>());
    SoundListener frameByFrame(std::make_unique<SoundFileSource>(sample),
                               std::make_unique<CountingRecogniser>());
    const std::vector<Heard> all = atOnce.until(ever);
    std::vector<Heard> pieces;
    for (int frame = 0; !frameByFrame.hasEnded(); ++frame) {
        for (const Heard& heard : frameByFrame.until(frame / 30.0)) {
            pieces.push_back(heard);
        }
    }
    EXPECT_TRUE(all == pieces);
    EXPECT_EQ(atOnce.endTime(), frameByFrame.endTime());
    EXPECT_NEAR(atOnce.endTime(), 62.55, 0.001);
    EXPECT_EQ(atOnce.trouble(), std::nullopt);
}

// Gives what it is told to, and ends when it is told so.
class ToldSource : public SoundSource {
public:
    double rate = 48000;
    std::vector<float> there;  // to be read next
    bool ended = false;

    double sampleRate() const override { return rate; }
    std::vector<float> read() override { return std::exchange(there, {}); }
    std::optional<int> waitingFor() const override {
        return there.empty() && !ended ? std::optional(7) : std::nullopt;
    }
    bool hasEnded() const override { return ended && there.empty(); }
};

TEST(SoundListener, HearsWhatIsThereAndSaysWhatItWaitsFor) {
    auto owned = std::make_unique<ToldSource>();
    ToldSource& source = *owned;
    SoundListener listener(std::move(owned), std::make_unique<CountingRecogniser>());
    EXPECT_TRUE(listener.until(1).empty());
    EXPECT_EQ(listener.waitingFor(), 7);
    source.there.assign(4800, 0.5F);
    EXPECT_GE(listener.until(1).size(), 4U) << "a tenth of a second, but for the resampler's delay";
    EXPECT_EQ(listener.waitingFor(), 7);
    EXPECT_FALSE(listener.hasEnded());
    source.there.assign(4800, 0.5F);
    EXPECT_TRUE(listener.until(0).empty()) << "its time has not come";
    EXPECT_EQ(listener.waitingFor(), std::nullopt) << "everything up to then is known";
    source.ended = true;
    static_cast<void>(listener.until(1));
    EXPECT_TRUE(listener.hasEnded());
    EXPECT_NEAR(listener.endTime(), 0.2, 0.001);
}

TEST(SoundListener, ALiveSoundIsNotHeardBehindAPauseOrAStop) {
    auto owned = std::make_unique<ToldSource>();
    ToldSource& source = *owned;
    source.rate = recogniserRate;
    SoundListener listener(std::move(owned), std::make_unique<CountingRecogniser>());
    source.there.assign(1600, 0.5F);
    EXPECT_FALSE(listener.until(0.1).empty());
    source.there.assign(16000, 0.5F);
    listener.passOver();
    EXPECT_TRUE(listener.until(1).empty()) << "it was a pause";
    EXPECT_NEAR(listener.endTime(), 0.1, 1e-9) << "and no time of the reading";
    source.there.assign(16000, 0.5F);
    EXPECT_TRUE(listener.until(0.1).empty());
    EXPECT_FALSE(listener.until(1).empty()) << "a second too early is kept for its time";
    source.there.assign(3 * recogniserRate, 0.5F);
    EXPECT_TRUE(listener.until(1.1).empty()) << "nobody asked for three seconds";
}

TEST(SoundListener, AFileIsNotTouchedByAPause) {
    SoundListener listener(std::make_unique<SoundFileSource>(sample),
                           std::make_unique<CountingRecogniser>());
    listener.passOver();
    static_cast<void>(listener.until(ever));
    EXPECT_NEAR(listener.endTime(), 62.55, 0.001);
}

TEST(SoundListener, NothingIsHeardBeforeItsTime) {
    SoundListener listener(std::make_unique<SoundFileSource>(sample),
                           std::make_unique<CountingRecogniser>());
    double last = 0;
    for (int frame = 0; frame < 300; ++frame) {
        const double now = frame / 30.0;
        for (const Heard& heard : listener.until(now)) {
            const double time = std::visit([](const auto& event) { return event.time; }, heard);
            EXPECT_LE(time, now + 1e-9);
            EXPECT_GE(time, last);
            last = time;
        }
    }
    EXPECT_GT(last, 9.9);
}

}  // namespace
}  // namespace Varnelle

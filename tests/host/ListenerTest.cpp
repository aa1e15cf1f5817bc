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

std::string refusal(const std::string& text, std::optional<WordsFormat> format = std::nullopt) {
    const TemporaryFile file(text);
    Complaints complaints;
    WordsListener listener(file.name(), complaints.listen(), format);
    try {
        static_cast<void>(listener.until(ever));
    } catch (const BadData& failure) {
        EXPECT_EQ(complaints.said, std::vector<std::string>{});
        std::string why = failure.what();
        EXPECT_TRUE(why.starts_with(file.name() + ": ")) << why;
        return why.substr(file.name().size() + 2);
    }
    return "nothing was thrown";
}

TEST(WordsListener, ATextInNoKnownFormIsRefusedWithTheFormsThereAre) {
    const std::string refused =
        "this begins like no form of recognised words that is known (jsonl, vosk, whisper, "
        "sherpa, ctm, vtt, srt); --format says which one it is";
    std::string speech;
    for (int i = 0; i < 1000; ++i) {
        speech += "Behind me stands a small white lighthouse.\n\n";
    }
    EXPECT_EQ(refusal(speech), refused);
    EXPECT_EQ(refusal("nonsense"), refused);
    EXPECT_EQ(refusal("\n\n{\"text\":\"hello\",\"segments\":[]}\n"), refused);
    const std::string twoByteText("1\0\r\0\n\0", 6);
    EXPECT_EQ(refusal(twoByteText), refused);
    EXPECT_EQ(refusal("nonsense", WordsFormat::jsonLines), "nothing was thrown");
    EXPECT_EQ(refusal("\r\n \t\n\n"), "nothing was thrown");
}

TEST(WordsListener, AFormIsRecognisedWithinTwentyLinesThatSaySomething) {
    std::string lines;
    for (int i = 0; i < 19; ++i) {
        lines += "loading\n\n";
    }
    const TemporaryFile file(lines + line(1, "a"));
    Complaints complaints;
    WordsListener listener(file.name(), complaints.listen());
    EXPECT_EQ(wordsOf(listener.until(ever)), std::vector<std::string>{"a"});
    ASSERT_EQ(complaints.said.size(), 19U);
    EXPECT_EQ(complaints.said.back(), file.name() + ":37: the line is no JSON");
    EXPECT_NE(refusal("loading\n" + lines + line(1, "a")), "nothing was thrown");
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

// A pipe in the place of standard input.
class PipedInput {
public:
    PipedInput() : kept_(dup(STDIN_FILENO)) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe(ends), 0);
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
        end_ = ends[1];
    }
    PipedInput(const PipedInput&) = delete;
    PipedInput& operator=(const PipedInput&) = delete;
    ~PipedInput() {
        dup2(kept_, STDIN_FILENO);
        close(kept_);
        finish();
    }

    void write(const std::string& bytes) const {
        EXPECT_EQ(::write(end_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    void finish() {
        if (end_ >= 0) close(std::exchange(end_, -1));
    }

private:
    int kept_;
    int end_ = -1;
};

TEST(WordsListener, APipeIsNeverWaitedFor) {
    PipedInput input;
    Complaints complaints;
    WordsListener listener("-", complaints.listen());
    EXPECT_TRUE(listener.until(1).empty());
    EXPECT_EQ(listener.waitingFor(), STDIN_FILENO);
    EXPECT_FALSE(listener.hasEnded());

    const std::string whole = line(0.5, "late");
    input.write(whole.substr(0, 10));
    EXPECT_TRUE(listener.until(1).empty());
    input.write(whole.substr(10));
    EXPECT_EQ(wordsOf(listener.until(1)), (std::vector<std::string>{"late"}));

    input.finish();
    EXPECT_TRUE(listener.until(2).empty());
    EXPECT_TRUE(listener.hasEnded());
    EXPECT_EQ(listener.waitingFor(), std::nullopt);
}

std::string ctm(double end, const std::string& word) {
    return "talk 1 " + std::to_string(end - 0.25) + " 0.25 " + word + "\n";
}

HeardWord only(const std::vector<Heard>& heard) {
    EXPECT_EQ(heard.size(), 1U);
    if (heard.size() != 1) return {};
    return std::get<WordsUpdate>(heard[0]).words.at(0);
}

TEST(WordsListener, LiveWordsArePutOnOurClockByTheLeastDelay) {
    PipedInput input;
    Complaints complaints;
    WordsListener listener("-", complaints.listen());
    EXPECT_TRUE(listener.until(29.5).empty()) << "the recogniser loads its model";
    input.write(ctm(1.5, "a"));
    EXPECT_EQ(only(listener.until(31.5)).start, 31.25);
    input.write(ctm(2.5, "b"));
    EXPECT_EQ(only(listener.until(31.75)).start, 31.5) << "it was only 29.25 behind";
    input.write(ctm(3.5, "c"));
    EXPECT_EQ(only(listener.until(33.75)).start, 32.5) << "and this word comes late";
    EXPECT_EQ(listener.until(34), std::vector<Heard>{});
}

TEST(WordsListener, RecordedWordsInAPipeWaitForTheirTime) {
    PipedInput input;
    Complaints complaints;
    WordsListener listener("-", complaints.listen());
    input.write(ctm(1.5, "a") + ctm(2.5, "b"));
    EXPECT_EQ(listener.until(1), std::vector<Heard>{});
    EXPECT_FALSE(listener.passOver(100)) << "nor does a pause touch them";
    EXPECT_EQ(only(listener.until(2)).start, 1.25);
    EXPECT_EQ(only(listener.until(2.5)).start, 2.25);
}

TEST(WordsListener, LiveWordsAreNotHeldBackByAPause) {
    PipedInput input;
    Complaints complaints;
    WordsListener listener("-", complaints.listen());
    input.write(ctm(1.5, "a"));
    EXPECT_EQ(only(listener.until(2)).start, 1.75);
    EXPECT_TRUE(listener.passOver(10));
    input.write(ctm(16.5, "aside"));
    EXPECT_TRUE(listener.passOver(10));
    EXPECT_LT(only(listener.until(2.125)).start, 2) << "said in the pause";
    input.write(ctm(22.5, "b"));
    EXPECT_EQ(only(listener.until(3)).start, 2.75);
}

TEST(WordsListener, LiveWordsWithoutTimesAreSaidWhenTheyCome) {
    PipedInput input;
    Complaints complaints;
    WordsListener listener("-", complaints.listen());
    input.write("{\"partial\":\"behind\"}\n");
    EXPECT_EQ(only(listener.until(5)).start, 5);
    input.write("{\"partial\":\"behind me\"}\n");
    EXPECT_EQ(only(listener.until(6)), (HeardWord{"me", 6, 6, std::nullopt}));
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

const std::string recording = VARNELLE_SAMPLE_DIRECTORY "/sample.flac";

TEST(SoundListener, HearsTheSameAtAnySpeed) {
    SoundListener atOnce(std::make_unique<SoundFileSource>(recording),
                         std::make_unique<CountingRecogniser>());
    SoundListener frameByFrame(std::make_unique<SoundFileSource>(recording),
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
    EXPECT_FALSE(listener.passOver(1));
    EXPECT_TRUE(listener.until(1).empty()) << "it was a pause";
    EXPECT_NEAR(listener.endTime(), 0.1, 1e-9) << "and no time of the reading";
    source.there.assign(16000, 0.5F);
    EXPECT_TRUE(listener.until(0.1).empty());
    EXPECT_FALSE(listener.until(1).empty()) << "a second too early is kept for its time";
    source.there.assign(3 * recogniserRate, 0.5F);
    EXPECT_TRUE(listener.until(1.1).empty()) << "nobody asked for three seconds";
}

TEST(SoundListener, AFileIsNotTouchedByAPause) {
    SoundListener listener(std::make_unique<SoundFileSource>(recording),
                           std::make_unique<CountingRecogniser>());
    EXPECT_FALSE(listener.passOver(1));
    static_cast<void>(listener.until(ever));
    EXPECT_NEAR(listener.endTime(), 62.55, 0.001);
}

TEST(SoundListener, NothingIsHeardBeforeItsTime) {
    SoundListener listener(std::make_unique<SoundFileSource>(recording),
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

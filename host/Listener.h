#pragma once

// What a reading is followed from: sound through a recogniser, or words that were recorded or come
// from elsewhere. Either way it is asked for what happened up to a time, so that the same sound is
// followed alike at any speed.
//
// Units: seconds on the sound's clock.
//
//   SoundListener listener(std::make_unique<SoundFileSource>("talk.flac"), std::move(recogniser));
//   for (const Heard& heard : listener.until(0.5)) ...

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/HeardWords.h"
#include "host/InputFile.h"
#include "host/Recogniser.h"
#include "host/Resampler.h"
#include "host/SoundSource.h"
#include "host/words/WordsFormat.h"

namespace Varnelle {

/// The loudness of the sound around `time`.
struct SoundLevel {
    double time = 0;   ///< seconds
    double meter = 0;  ///< 0 to 1, as AudioLevel::meter gives it

    friend bool operator==(const SoundLevel&, const SoundLevel&) = default;
};

using Heard = std::variant<SoundLevel, WordsUpdate>;

class Listener {
public:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener() = default;

    /// What happened since the last call and up to `time`, in order. Never waits: where it cannot
    /// know everything yet, `waitingFor` says on what.
    virtual std::vector<Heard> until(double time) = 0;
    /// `seconds` go by that are not followed, as in a pause: what a live sound brings meanwhile is
    /// not heard. What waits, such as a file, is not touched. True when words of that time are
    /// still to come, which must not count.
    virtual bool passOver(double seconds) = 0;
    /// A file descriptor that will be readable when more can be known. Absent when everything up to
    /// the last `until` is known.
    [[nodiscard]] virtual std::optional<int> waitingFor() const { return std::nullopt; }
    /// True when nothing more will come.
    [[nodiscard]] virtual bool hasEnded() const = 0;
    /// Once it has ended: when.
    [[nodiscard]] virtual double endTime() const = 0;
    /// What is wrong with a live sound at present, in a sentence, as when its microphone is away.
    /// Absent when nothing is.
    [[nodiscard]] virtual std::optional<std::string> presentTrouble() const { return {}; }
    /// Once it has ended: what was wrong with what was listened to, in a sentence. Absent when
    /// nothing was.
    [[nodiscard]] virtual std::optional<std::string> trouble() const = 0;
};

/// Sound, through a recogniser. A live sound, one that has to be waited for, is kept beside the
/// time that is asked for: where nobody asked for longer than `mostBehind`, what came before is
/// passed over, so that what is heard is what is being said.
class SoundListener : public Listener {
public:
    static constexpr std::size_t blockSize = 320;  ///< recogniser's samples: 20 ms, for one level
    static constexpr double mostBehind = 2;        ///< seconds

    SoundListener(std::unique_ptr<SoundSource> sound, std::unique_ptr<Recogniser> recogniser);

    std::vector<Heard> until(double time) override;
    bool passOver(double seconds) override;
    [[nodiscard]] std::optional<int> waitingFor() const override;
    [[nodiscard]] bool hasEnded() const override { return ended_; }
    [[nodiscard]] double endTime() const override;
    [[nodiscard]] std::optional<std::string> presentTrouble() const override {
        return isLive_ ? sound_->trouble() : std::nullopt;
    }
    [[nodiscard]] std::optional<std::string> trouble() const override { return sound_->trouble(); }

private:
    void read();
    bool hasBlock();

    std::unique_ptr<SoundSource> sound_;
    Resampler resampler_;
    std::unique_ptr<Recogniser> recogniser_;
    std::deque<float> pending_;      // read, and still to be heard
    std::int64_t samplesHeard_ = 0;  // by the recogniser
    bool isLive_;                    // time brings it, whether it is asked for or not
    bool isWaiting_ = false;
    bool soundEnded_ = false;
    bool ended_ = false;
};

/// Words in any WordsFormat, from a file or from standard input ("-"). A line may come late: it
/// counts when it comes. What writes words into a pipe has a clock of its own, which began at
/// another moment and goes on in our pauses: such words are put on ours by the least delay so far,
/// and a word that takes no time is said when it comes.
class WordsListener : public Listener {
public:
    /// Absent of a format, the text's beginning says it. `complain` is called at once with a
    /// sentence about each broken line, which is passed over. Throws NoInput when the file cannot
    /// be read, as `until` does when that shows later; `until` throws BadData for a text that
    /// begins like no format.
    WordsListener(const std::string& name, std::function<void(const std::string&)> complain,
                  std::optional<WordsFormat> format = std::nullopt);

    std::vector<Heard> until(double time) override;
    bool passOver(double seconds) override;
    [[nodiscard]] std::optional<int> waitingFor() const override;
    [[nodiscard]] bool hasEnded() const override;
    [[nodiscard]] double endTime() const override { return lastTime_; }
    [[nodiscard]] std::optional<std::string> trouble() const override;

private:
    void readWhatIsThere(double upTo);
    void read();
    void takeLine(std::string_view line);
    void recognise(bool isAll);
    void begin(WordsFormat format);
    void take(WordsRead read);
    void putOnOurClock(WordsUpdate& update);

    std::string name_;
    std::function<void(const std::string&)> complain_;
    InputFile input_;
    bool isEnd_ = false;  // of the file
    bool isWaiting_ = false;
    std::string partial_;                  // the beginning of a line that has not ended
    bool isBeginning_ = true;              // no line has been read
    std::string unrecognised_;             // lines, while the format is not known
    int unrecognisedCount_ = 0;            // of those that are not blank
    std::unique_ptr<WordsReader> reader_;  // null until the format is known
    std::int64_t brokenLines_ = 0;
    std::deque<WordsUpdate> updates_;   // read, and still to come
    double lastTime_ = 0;               // of the last update read
    double now_ = 0;                    // up to where it was asked for
    std::optional<bool> isPassedOver_;  // what comes in this pause; absent outside of one
    double passedOver_ = 0;             // seconds of all pauses that a live source went on in
    std::optional<double> behind_;      // seconds; absent before the first live word
};

}  // namespace Varnelle

#pragma once

// A recording session at work: sound comes in, takes come out. It listens for claps, follows the
// reading of each take, marks its chapters and saves it with them. It waits for nobody and owns no
// clock; the session's time is the sound that was heard.
//
//   TakeRecorder recorder(std::move(reading), 48000, plan);
//   for (const TakeNews& news : recorder.hear(samples)) ...     // ~20 ms at a time
//   Frame frame = recorder.frame();
//   recorder.finish();                                          // a running take ends and is saved
//
// Units: times are seconds of the session's sound; samples are mono, full scale 1.0, at the
// source's own rate.
//
// Beside "NAME.m4a" stand "NAME.marks.json" (the chapters' titles and times) and
// "NAME.chapters.txt" (the list for a video's description), where chapters were reached.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "PrompterCore/audio/ClapDetector.h"
#include "PrompterCore/takes/ChapterMark.h"
#include "PrompterCore/text/TimeZone.h"
#include "host/ReadThrough.h"
#include "host/Recogniser.h"
#include "host/SoundTail.h"
#include "host/TakeSession.h"
#include "host/TakeWriter.h"

namespace Varnelle {

/// What a session is to do.
struct TakePlan {
    std::filesystem::path folder;     ///< where the takes go; must exist
    std::optional<Text> title;        ///< the script's, for their names
    PrompterCore::TimeZone timeZone;  ///< for their names
    std::int64_t countdown = 0;       ///< seconds
    bool listensForClaps = true;
    bool goesOn =
        false;  ///< a take goes on where the last one ended; else it begins at the script's start
    /// The date of the session's time `time`, which was `ago` seconds of sound ago.
    std::function<std::chrono::system_clock::time_point(double time, double ago)> dateAt;
    /// One for each take, made before the take begins.
    std::function<std::unique_ptr<Recogniser>()> recogniser;
};

/// A countdown runs.
struct CountdownBegan {
    double time = 0;
    std::int64_t seconds = 0;
};
/// The countdown was called off, or a take that had hardly begun; or no sound of a take could be
/// written.
struct TakeCalledOff {
    double time = 0;
};
struct TakeBegan {
    double time = 0;
    std::int64_t take = 0;  ///< counted from 1
};
struct ChapterReached {
    double time = 0;
    std::int64_t take = 0;
    PrompterCore::ChapterMark mark;
};
/// The take is on disk. Where something was in the way, the sound's `trouble` says so.
struct TakeSaved {
    double time = 0;
    std::int64_t take = 0;
    SavedTake sound;
    std::optional<std::filesystem::path> marks, chapters;  ///< absent without chapters
};

using TakeNews = std::variant<CountdownBegan, TakeCalledOff, TakeBegan, ChapterReached, TakeSaved>;

class TakeRecorder {
public:
    /// At the session's beginning. Throws what `plan.recogniser` throws.
    TakeRecorder(ReadThrough reading, double rate, TakePlan plan);
    ~TakeRecorder();

    /// Takes the next samples, up to a tenth of a second of them.
    std::vector<TakeNews> hear(std::span<const float> samples);
    /// The presenter asked by hand for the next step: a take, none after all, its end.
    std::vector<TakeNews> step();
    /// Nothing more will be heard: claps that wait for a third one count, a running take ends and
    /// is saved.
    std::vector<TakeNews> finish();

    [[nodiscard]] double time() const noexcept;
    [[nodiscard]] const TakeSession& session() const noexcept { return session_; }
    /// For a hand's moves; chapters that it reaches count.
    [[nodiscard]] ReadThrough& reading() noexcept { return reading_; }
    [[nodiscard]] const ReadThrough& reading() const noexcept { return reading_; }
    /// The reading at this moment.
    [[nodiscard]] Frame frame() { return reading_.frameAt(time()); }
    [[nodiscard]] std::int64_t savedCount() const noexcept { return saved_; }
    /// Why takes cannot be written any more, in a sentence. Absent while they can.
    [[nodiscard]] const std::optional<std::string>& trouble() const noexcept { return trouble_; }

private:
    struct Take;

    void obey(const std::vector<PrompterCore::ClapGesture>& gestures, std::vector<TakeNews>& news);
    void perform(const std::vector<TakeEvent>& events, std::vector<TakeNews>& news);
    void prepare();
    void begin(double time, std::vector<TakeNews>& news);
    void record(std::int64_t writeUpTo, std::vector<TakeNews>& news);
    void write(std::int64_t upTo);
    void hearWords(std::vector<WordsUpdate> updates);
    void markChapters(double upTo, std::vector<TakeNews>& news);
    void end(double time, std::vector<TakeNews>& news);
    void forget();
    std::int64_t placeAt(double time) const;

    ReadThrough reading_;
    double rate_;
    TakePlan plan_;
    TakeSession session_;
    PrompterCore::ClapDetector claps_;
    SoundTail tail_;
    std::unique_ptr<Recogniser> nextRecogniser_;  // null until the next take is near
    std::unique_ptr<Take> take_;                  // null unless one runs
    std::int64_t begun_ = 0, saved_ = 0;
    std::optional<std::string> trouble_;
};

}  // namespace Varnelle

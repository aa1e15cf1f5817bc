#include "host/TakeRecorder.h"

#include <algorithm>
#include <utility>

#include "PrompterCore/audio/AudioLevel.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/takes/ChapterMarker.h"
#include "host/ClapsInSpeech.h"
#include "host/Failures.h"
#include "host/LastClaps.h"
#include "host/Resampler.h"
#include "host/TakeFiles.h"

namespace Varnelle {

using PrompterCore::ChapterMark;
using PrompterCore::signedCount;

// A take that runs. Its sound is written only when no claps can reach back into it.
struct TakeRecorder::Take {
    std::int64_t number;
    std::int64_t begin;  // samples of the session, as are the next two
    std::int64_t heardTo;
    std::int64_t writtenTo;
    double beganAt;  // seconds of the session
    TakeWriter writer;
    Resampler resampler;
    std::unique_ptr<Recogniser> recogniser;
    PrompterCore::ChapterMarker marker;
    std::size_t marksSaid = 0;
    std::optional<std::string> trouble = std::nullopt;
};

TakeRecorder::TakeRecorder(ReadThrough reading, double rate, TakePlan plan)
    : reading_(std::move(reading)),
      rate_(rate),
      plan_(std::move(plan)),
      session_(plan_.countdown),
      claps_(rate),
      tail_(PrompterCore::roundedToNearest(2 * TakeSession::lookBack * rate)),
      nextRecogniser_(plan_.recogniser()) {}

TakeRecorder::~TakeRecorder() = default;

double TakeRecorder::time() const noexcept { return static_cast<double>(tail_.end()) / rate_; }

std::int64_t TakeRecorder::placeAt(double time) const {
    return PrompterCore::roundedToNearest(time * rate_);
}

std::vector<TakeNews> TakeRecorder::hear(std::span<const float> samples) {
    std::vector<TakeNews> news;
    if (samples.empty()) return news;
    const double start = time();
    tail_.append(samples);
    reading_.level(PrompterCore::AudioLevel::meter(samples), time());
    perform(session_.advanceTo(time()), news);
    if (plan_.listensForClaps) {
        obey(claps_.feed(samples, start), news);
    }
    if (take_) {
        const double reach = plan_.listensForClaps ? TakeSession::lookBack : 0;
        record(placeAt(time() - reach), news);
    }
    return news;
}

std::vector<TakeNews> TakeRecorder::step() {
    std::vector<TakeNews> news;
    perform(session_.step(time()), news);
    return news;
}

std::vector<TakeNews> TakeRecorder::finish() {
    std::vector<TakeNews> news;
    if (plan_.listensForClaps) obey(lastClaps(claps_, rate_, time()), news);
    perform(session_.finish(time()), news);
    return news;
}

void TakeRecorder::obey(const std::vector<PrompterCore::ClapGesture>& gestures,
                        std::vector<TakeNews>& news) {
    for (const PrompterCore::ClapGesture& gesture : gestures) {
        if (standOut(gesture, tail_, rate_)) perform(session_.hear(gesture, time()), news);
    }
}

void TakeRecorder::perform(const std::vector<TakeEvent>& events, std::vector<TakeNews>& news) {
    for (const auto& [kind, at] : events) {
        switch (kind) {
            case TakeEvent::Kind::countdown:
                prepare();
                news.emplace_back(CountdownBegan{.time = at, .seconds = plan_.countdown});
                break;
            case TakeEvent::Kind::calledOff:
                forget();
                news.emplace_back(TakeCalledOff{.time = at});
                break;
            case TakeEvent::Kind::began: begin(at, news); break;
            case TakeEvent::Kind::ended: end(at, news); break;
        }
    }
}

void TakeRecorder::prepare() {
    if (!nextRecogniser_) nextRecogniser_ = plan_.recogniser();
}

void TakeRecorder::begin(double time, std::vector<TakeNews>& news) {
    const std::int64_t place = std::max(placeAt(time), tail_.begin());
    const auto date = plan_.dateAt(time, this->time() - time);
    prepare();
    take_.reset(
        new Take{.number = begun_ + 1,
                 .begin = place,
                 .heardTo = place,
                 .writtenTo = place,
                 .beganAt = time,
                 .writer = TakeWriter({.folder = plan_.folder,
                                       .name = TakeFiles::nameOf(plan_.title, date, plan_.timeZone),
                                       .rate = rate_,
                                       .began = date}),
                 .resampler = Resampler(rate_, recogniserRate),
                 .recogniser = std::move(nextRecogniser_),
                 .marker = PrompterCore::ChapterMarker(
                     PrompterCore::ScriptChapters::chaptersOf(reading_.script()))});
    ++begun_;
    // Words count from here on, wherever the reading stands.
    if (reading_.cursor() < 0) {
        reading_.restart(time);
    } else {
        reading_.seekTo(reading_.cursor(), time);
    }
    news.emplace_back(TakeBegan{.time = time, .take = take_->number});
    take_->marker.update(reading_.cursor(), 0);
    record(place, news);
}

// Hears all there is of the take, and writes what no claps can reach any more.
void TakeRecorder::record(std::int64_t writeUpTo, std::vector<TakeNews>& news) {
    Take& take = *take_;
    const auto samples = tail_.between(take.heardTo, tail_.end());
    take.heardTo = tail_.end();
    hearWords(take.recogniser->hear(take.resampler.convert(samples)));
    markChapters(time(), news);
    write(writeUpTo);
    if (!take.trouble) return;
    trouble_ = take.trouble;
    perform(session_.step(time()), news);
}

void TakeRecorder::write(std::int64_t upTo) {
    Take& take = *take_;
    if (take.trouble || upTo <= take.writtenTo) return;
    try {
        take.writer.write(tail_.between(take.writtenTo, upTo));
        take.writtenTo = upTo;
    } catch (const CannotWrite& failure) {
        take.trouble = std::string(failure.what()) + "; the take ends after " +
                       std::to_string(PrompterCore::roundedToNearest(take.writer.seconds())) +
                       " seconds";
    }
}

// The recogniser's times are those of the take.
void TakeRecorder::hearWords(std::vector<WordsUpdate> updates) {
    for (WordsUpdate& update : updates) {
        update.time = time();
        for (HeardWord& word : update.words) {
            word.start += take_->beganAt;
            word.end += take_->beganAt;
        }
        reading_.hear(update);
    }
}

void TakeRecorder::markChapters(double upTo, std::vector<TakeNews>& news) {
    Take& take = *take_;
    take.marker.update(reading_.cursor(), upTo - take.beganAt);
    for (; take.marksSaid < take.marker.marks().size(); ++take.marksSaid) {
        const ChapterMark& mark = take.marker.marks()[take.marksSaid];
        news.emplace_back(
            ChapterReached{.time = take.beganAt + mark.seconds, .take = take.number, .mark = mark});
    }
}

void TakeRecorder::end(double time, std::vector<TakeNews>& news) {
    if (!take_) return;  // it could not even begin
    Take& take = *take_;
    hearWords(take.recogniser->finish());
    if (time >= this->time()) markChapters(time, news);
    write(placeAt(time));
    TakeSaved saved{.time = time,
                    .take = take.number,
                    .sound = take.writer.finish(),
                    .marks = std::nullopt,
                    .chapters = std::nullopt};
    if (take.trouble) saved.sound.trouble = take.trouble;
    if (saved.sound.file.empty()) {
        trouble_ = saved.sound.trouble;
        forget();
        news.emplace_back(TakeCalledOff{.time = time});
        return;
    }
    // What was recognised while the claps were being recognised belongs to no take.
    std::vector<ChapterMark> marks = take.marker.marks();
    std::erase_if(marks,
                  [&](const ChapterMark& mark) { return mark.seconds > saved.sound.seconds; });
    if (!marks.empty()) {
        try {
            saved.marks = TakeFiles::saveMarks(saved.sound.file, marks);
            saved.chapters = TakeFiles::saveChapters(saved.sound.file, marks);
        } catch (const CannotWrite& failure) {
            if (!saved.sound.trouble) saved.sound.trouble = failure.what();
        }
    }
    if (saved.sound.trouble) trouble_ = saved.sound.trouble;
    ++saved_;
    news.emplace_back(std::move(saved));
    take_.reset();
    if (!plan_.goesOn) reading_.restart(this->time());
}

void TakeRecorder::forget() {
    if (!take_) return;
    take_->writer.discard();
    take_.reset();
    reading_.restart(time());
}

}  // namespace Varnelle

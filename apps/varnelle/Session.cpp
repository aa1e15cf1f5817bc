#include "apps/varnelle/Session.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <memory>
#include <span>
#include <utility>

#include "PrompterCore/prompter/ScrollStepper.h"
#include "PrompterCore/support/Rounding.h"
#include "apps/varnelle/ColumnLines.h"
#include "apps/varnelle/HandMoves.h"
#include "apps/varnelle/Interrupt.h"
#include "apps/varnelle/SessionDisplay.h"
#include "host/Tuning.h"

namespace Varnelle {

namespace {

constexpr double blockSeconds = 0.02;  // of sound at a time
constexpr double wheelRowsPerLine = 3;

class SessionRunner {
public:
    SessionRunner(const Script& script, SoundSource& sound, const TakePlan& plan,
                  const FollowOptions& options)
        : sound_(sound),
          options_(options),
          listensForClaps_(plan.listensForClaps),
          display_(sessionDisplay(options)),
          recorder_(readingOf(script), sound.sampleRate(), plan),
          blockSize_(static_cast<std::size_t>(std::max<std::int64_t>(
              PrompterCore::roundedToNearest(sound.sampleRate() * blockSeconds), 1))) {}

    SessionResult run(const std::vector<SavedTake>& recovered) {
        for (const SavedTake& take : recovered) {
            display_->recovered(take);
        }
        try {
            if (!listensForClaps_) tell(recorder_.step());
            loop();
        } catch (...) {
            const std::vector<TakeNews> last = recorder_.finish();
            try {
                end(last);
            } catch (const std::exception&) {  // nobody may be there to be told
            }
            throw;
        }
        end(recorder_.finish());
        return {.wasInterrupted = wasInterrupted_,
                .wasQuit = hasQuit_,
                .takes = recorder_.savedCount(),
                .seconds = recorder_.time(),
                .trouble = recorder_.trouble()};
    }

private:
    using Clock = std::chrono::steady_clock;

    ReadThrough readingOf(const Script& script) const {
        Screen* const screen = display_->screen();
        return {script,
                screen != nullptr ? screen->linesFor(script)
                                  : columnBreaker(options_.width).linesFor(script),
                Tuning::aligner, Tuning::scroll};
    }

    void loop() {
        Clock::time_point due = Clock::now();
        for (std::int64_t k = 1; !hasQuit_ && !wasInterrupted_; ++k) {
            // What comes live sets the pace itself.
            const bool hasEnded = listenUntil(
                isLive_ ? recorder_.time() + 1 : static_cast<double>(k) / options_.framesPerSecond);
            display_->frame(recorder_, sound_.trouble());
            if (hasEnded || recorder_.trouble()) return;
            takeKeys();
            due = nextDue(due);
            wasInterrupted_ = wasInterrupted_ || interrupt_.arrivesWithin(due - Clock::now());
        }
    }

    // Hears what there is up to `time`. True when nothing more will come.
    bool listenUntil(double time) {
        while (recorder_.time() < time && !recorder_.trouble()) {
            while (pending_.size() < blockSize_ && !sound_.hasEnded()) {
                const std::vector<float> samples = sound_.read();
                if (samples.empty() && !sound_.hasEnded()) {
                    if (!std::exchange(isLive_, true) && listensForClaps_)
                        display_->ready(recorder_.time());
                    return false;
                }
                pending_.insert(pending_.end(), samples.begin(), samples.end());
            }
            if (pending_.empty()) return true;
            const std::size_t size = std::min(blockSize_, pending_.size());
            tell(recorder_.hear(std::span(pending_).first(size)));
            pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(size));
        }
        return false;
    }

    void end(const std::vector<TakeNews>& news) {
        tell(news);
        display_->end(recorder_.time(), recorder_.savedCount(), wasInterrupted_);
    }

    void tell(const std::vector<TakeNews>& news) {
        for (const TakeNews& event : news) {
            display_->news(event);
        }
    }

    void takeKeys() {
        Screen* const screen = display_->screen();
        if (screen == nullptr) return;
        for (const ScreenEvent& event : screen->events()) {
            if (event.command) {
                obey(*event.command);
            } else if (const std::int64_t lines = wheel_.add(event.wheel); lines != 0) {
                recorder_.reading().moveLines(lines, recorder_.time());
            }
        }
    }

    void obey(ScreenCommand command) {
        switch (command) {
            case ScreenCommand::pause: tell(recorder_.step()); break;
            case ScreenCommand::restart: recorder_.reading().restart(recorder_.time()); break;
            case ScreenCommand::resized:
                recorder_.reading().layOut(
                    display_->screen()->linesFor(recorder_.reading().script()));
                break;
            case ScreenCommand::quit: hasQuit_ = true; break;
            case ScreenCommand::interrupt: hasQuit_ = wasInterrupted_ = true; break;
            default: moveByHand(recorder_.reading(), command, recorder_.time()); break;
        }
    }

    // When the next frame is to be shown; one that came late does not make the next ones hurry.
    Clock::time_point nextDue(Clock::time_point due) const {
        const Clock::time_point now = Clock::now();
        if (!options_.speed && !isLive_) return now;
        const double speed = isLive_ ? 1 : *options_.speed;
        due += std::chrono::duration_cast<Clock::duration>(
            std::chrono::duration<double>(1 / (options_.framesPerSecond * speed)));
        return std::max(due, now - std::chrono::seconds(1));
    }

    SoundSource& sound_;
    const FollowOptions options_;
    const bool listensForClaps_;
    Interrupt interrupt_;
    std::unique_ptr<SessionDisplay> display_;
    TakeRecorder recorder_;
    const std::size_t blockSize_;
    std::vector<float> pending_;  // read, and still to be heard
    ScrollStepper wheel_{.threshold = wheelRowsPerLine};
    bool isLive_ = false;  // the sound has had to be waited for
    bool hasQuit_ = false;
    bool wasInterrupted_ = false;
};

}  // namespace

SessionResult runSession(const Script& script, SoundSource& sound, const TakePlan& plan,
                         const FollowOptions& options, const std::vector<SavedTake>& recovered) {
    return SessionRunner(script, sound, plan, options).run(recovered);
}

}  // namespace Varnelle

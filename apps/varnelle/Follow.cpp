#include "apps/varnelle/Follow.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/ScrollStepper.h"
#include "apps/varnelle/ColumnLines.h"
#include "apps/varnelle/HandMoves.h"
#include "apps/varnelle/Interrupt.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/Screen.h"
#include "host/Tuning.h"

namespace Varnelle {

namespace {

constexpr double wheelRowsPerLine = 3;  // rows of wheel scrolling that move the reading by a line

// Shows a reading: one of the three below.
class Display {
public:
    Display() = default;
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    virtual ~Display() = default;

    virtual void words(const WordsUpdate&) {}
    virtual void aligned(const ReadThrough&, const Alignment&, double /*time*/) {}
    virtual void frame(const ReadThrough&, const Frame&, bool /*isPaused*/) {}
    virtual void end(const ReadThrough&, const Frame&, bool /*wasInterrupted*/) {}
};

class JsonDisplay : public Display {
public:
    void words(const WordsUpdate& update) override {
        write({{"event", "words"},
               {"time", update.time},
               {"keep", update.keep},
               {"words", listAsJson(update.words)},
               {"final", update.final}});
    }
    void aligned(const ReadThrough&, const Alignment& alignment, double time) override {
        write({{"event", "aligned"},
               {"time", time},
               {"token", alignment.tokenIndex},
               {"confidence", alignment.confidence}});
    }
    void frame(const ReadThrough&, const Frame& frame, bool isPaused) override {
        if (!isPaused) write(fields("frame", frame));
    }
    void end(const ReadThrough& reading, const Frame& frame, bool wasInterrupted) override {
        Json event = fields("end", frame);
        event["tokens"] = reading.script().tokens().size();
        event["interrupted"] = wasInterrupted;
        write(event);
    }

private:
    static Json fields(const char* event, const Frame& frame) {
        return {{"event", event},
                {"time", frame.time},
                {"cursor", frame.cursor},
                {"position", frame.position},
                {"line", frame.line}};
    }
    void write(const Json& event) {
        output_.line(event.dump());
        output_.flush();
    }

    Output output_;
};

class LineDisplay : public Display {
public:
    void aligned(const ReadThrough& reading, const Alignment& alignment, double time) override {
        const auto line = LineBreaker::lineContaining(alignment.tokenIndex, reading.lines());
        const ScriptToken token = *reading.script().tokenAt(alignment.tokenIndex);
        output_.line(fmt::format(
            "{:8.2f} s  token {:>4}  {:.2f}  {:<14}  {}", time, alignment.tokenIndex,
            alignment.confidence, shown(token.text.utf8()),
            line ? shown(reading.lines()[static_cast<std::size_t>(*line)].text.utf8()) : ""));
        output_.flush();
    }

private:
    Output output_;
};

class ScreenDisplay : public Display {
public:
    ScreenDisplay(bool colour, bool panel, const Listener& listener)
        : screen_({.colour = colour}), panel_(panel), listener_(listener) {}

    Screen& screen() { return screen_; }

    void frame(const ReadThrough& reading, const Frame& frame, bool isPaused) override {
        const bool isReading = !isPaused && frame.cursor >= 0;
        TakeBarInputs inputs;
        inputs.following = isReading;
        const TakeDisplay take{
            .status = ControllerStatus::take(ControllerStatus::TakeStep::idle(), isReading, {}),
            .mode = TakeBarMode::resolve(inputs)};
        screen_.draw({.reading = reading,
                      .frame = frame,
                      .paused = isPaused,
                      .ended = false,
                      .take = take,
                      .panel = panel_,
                      .trouble = listener_.presentTrouble()});
    }

private:
    Screen screen_;
    bool panel_;
    const Listener& listener_;
};

// The loop of one following: frames at even times of the sound, everything heard before each.
class Follower {
public:
    Follower(const Script& script, Listener& listener, const FollowOptions& options,
             const FollowObserver& observer)
        : listener_(listener), options_(options), observer_(observer), reading_(start(script)) {}

    FollowResult run() {
        bool wasInterrupted = false;
        Clock::time_point due = Clock::now();
        for (std::int64_t k = 0; !hasQuit_; k += isPaused_ ? 0 : 1) {
            now_ = static_cast<double>(k) / options_.framesPerSecond;
            const Clock::time_point before = std::exchange(looked_, Clock::now());
            if (isPaused_) {
                const std::chrono::duration<double> passed = looked_ - before;
                wordsPassedOver_ = listener_.passOver(passed.count());
            } else {
                wasInterrupted = listen();
            }
            const Frame frame = reading_.frameAt(now_);
            last_ = frame;
            if (observer_.frame && !isPaused_) observer_.frame(reading_, frame);
            display_->frame(reading_, frame, isPaused_);
            if (wasInterrupted || (listener_.hasEnded() && now_ >= listener_.endTime())) break;
            takeCommands();
            due = nextDue(due);
            wasInterrupted = wasInterrupted || interrupt_.arrivesWithin(due - Clock::now());
            if (wasInterrupted) break;
        }
        wasInterrupted = wasInterrupted || wasInterruptKey_;
        display_->end(reading_, last_, wasInterrupted);
        return {.wasInterrupted = wasInterrupted,
                .last = last_,
                .trouble = listener_.hasEnded() ? listener_.trouble() : std::nullopt};
    }

private:
    using Clock = std::chrono::steady_clock;

    ReadThrough start(const Script& script) {
        std::vector<PromptLine> lines;
        if (options_.display == FollowDisplay::screen) {
            auto display =
                std::make_unique<ScreenDisplay>(options_.colour, options_.panel, listener_);
            screen_ = &display->screen();
            lines = screen_->linesFor(script);
            display_ = std::move(display);
        } else {
            lines = columnBreaker(options_.width).linesFor(script);
            if (options_.display == FollowDisplay::json) {
                display_ = std::make_unique<JsonDisplay>();
            } else {
                display_ = std::make_unique<LineDisplay>();
            }
        }
        return {script, std::move(lines), Tuning::aligner, Tuning::scroll};
    }

    // Everything up to now. True when an interrupt came while waiting for it.
    bool listen() {
        take(listener_.until(now_));
        // A pipe is waited for only when no clock says how fast the reading goes.
        while (!options_.speed && listener_.waitingFor()) {
            if (interrupt_.arrivesBeforeReadable(*listener_.waitingFor())) return true;
            take(listener_.until(now_));
        }
        return false;
    }

    void take(std::vector<Heard> heard) {
        for (Heard& event : heard) {
            if (const auto* level = std::get_if<SoundLevel>(&event)) {
                reading_.level(level->meter, level->time);
                continue;
            }
            WordsUpdate& update = std::get<WordsUpdate>(event);
            update.time = std::max(update.time, last_.time);  // what comes late counts now
            display_->words(update);
            if (const auto alignment = reading_.hear(update)) {
                display_->aligned(reading_, *alignment, update.time);
                if (observer_.aligned) observer_.aligned(*alignment, update.time);
            }
        }
    }

    void takeCommands() {
        if (screen_ == nullptr) return;
        for (const ScreenEvent& event : screen_->events()) {
            if (event.command) {
                obey(*event.command);
            } else if (const std::int64_t lines = wheel_.add(event.wheel); lines != 0) {
                reading_.moveLines(lines, now_);
            }
        }
    }

    void obey(ScreenCommand command) {
        switch (command) {
            case ScreenCommand::pause: pause(); break;
            case ScreenCommand::restart: reading_.restart(now_); break;
            case ScreenCommand::resized:
                reading_.layOut(screen_->linesFor(reading_.script()));
                break;
            case ScreenCommand::quit: hasQuit_ = true; break;
            case ScreenCommand::interrupt: hasQuit_ = wasInterruptKey_ = true; break;
            default: moveByHand(reading_, command, now_); break;
        }
    }

    void pause() {
        isPaused_ = !isPaused_;
        // Up to between this frame and the next.
        if (!isPaused_ && wordsPassedOver_)
            reading_.ignoreBefore(now_ + 0.5 / options_.framesPerSecond);
        wordsPassedOver_ = false;
    }

    // When the next frame is to be shown; a frame that came late does not make the next ones hurry.
    Clock::time_point nextDue(Clock::time_point due) const {
        const Clock::time_point now = Clock::now();
        if (!options_.speed && !isPaused_) return now;
        const double seconds = 1 / (options_.framesPerSecond * options_.speed.value_or(1));
        due += std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
        return std::max(due, now - std::chrono::seconds(1));
    }

    Listener& listener_;
    const FollowOptions options_;
    const FollowObserver& observer_;
    Interrupt interrupt_;
    std::unique_ptr<Display> display_;
    Screen* screen_ = nullptr;  // the display's; null unless it is one
    ReadThrough reading_;
    ScrollStepper wheel_{.threshold = wheelRowsPerLine};
    double now_ = 0;
    Clock::time_point looked_ = Clock::now();  // when it last listened, or passed over
    Frame last_;
    bool isPaused_ = false;
    bool wordsPassedOver_ = false;  // in this pause
    bool hasQuit_ = false;
    bool wasInterruptKey_ = false;
};

}  // namespace

FollowResult follow(const Script& script, Listener& listener, const FollowOptions& options,
                    const FollowObserver& observer) {
    return Follower(script, listener, options, observer).run();
}

}  // namespace Varnelle

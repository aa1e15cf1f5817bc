#include "apps/varnelle/SessionDisplay.h"

#include <utility>

#include <fmt/format.h>

#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/takes/RecordingClock.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/TerminalText.h"

namespace Varnelle {

namespace {

using PrompterCore::Overloaded;
using PrompterCore::TakeBarMode;
namespace RecordingClock = PrompterCore::RecordingClock;

// A path as JSON and terminals take it: one that is no UTF-8 has replacement signs.
std::string textOf(const std::filesystem::path& path) { return Text(path.string()).utf8(); }

class JsonSessionDisplay : public SessionDisplay {
public:
    void recovered(const SavedTake& take) override {
        Json event{{"event", "recovered"}};
        addSound(event, take);
        write(event);
    }
    void ready(double time) override { write({{"event", "ready"}, {"time", time}}); }
    void news(const TakeNews& news) override {
        const auto base = [](const char* name, double time) {
            return Json{{"event", name}, {"time", time}};
        };
        write(std::visit(
            Overloaded{[&](const CountdownBegan& now) {
                           Json event = base("countdown", now.time);
                           event["seconds"] = now.seconds;
                           return event;
                       },
                       [&](const TakeCalledOff& now) { return base("calledOff", now.time); },
                       [&](const TakeBegan& now) {
                           Json event = base("recording", now.time);
                           event["take"] = now.take;
                           return event;
                       },
                       [&](const ChapterReached& now) {
                           Json event = base("chapter", now.time);
                           event["take"] = now.take;
                           event["title"] = asJson(now.mark.title);
                           event["seconds"] = now.mark.seconds;
                           return event;
                       },
                       [&](const TakeSaved& now) {
                           Json event = base("saved", now.time);
                           event["take"] = now.take;
                           addSound(event, now.sound);
                           event["marks"] = now.marks ? Json(textOf(*now.marks)) : Json();
                           event["chapters"] = now.chapters ? Json(textOf(*now.chapters)) : Json();
                           return event;
                       }},
            news));
    }
    void end(double time, std::int64_t takes, bool wasInterrupted) override {
        write(
            {{"event", "end"}, {"time", time}, {"takes", takes}, {"interrupted", wasInterrupted}});
    }

private:
    static void addSound(Json& event, const SavedTake& take) {
        event["file"] = textOf(take.file);
        event["seconds"] = take.seconds;
        event["trouble"] = take.trouble ? Json(Text(*take.trouble).utf8()) : Json();
    }
    void write(const Json& event) {
        output_.line(event.dump());
        output_.flush();
    }

    Output output_;
};

std::string saved(const SavedTake& take) {
    return fmt::format("{} ({})", textOf(take.file), RecordingClock::format(take.seconds));
}

std::string line(double time, std::string_view what, const std::string& more) {
    return fmt::format("{:8.2f} s  {:<10}  {}", time, what, more);
}

std::string lineOf(const TakeNews& news) {
    return std::visit(
        Overloaded{[&](const CountdownBegan& now) {
                       return line(now.time, "countdown", fmt::format("{} s", now.seconds));
                   },
                   [&](const TakeCalledOff& now) { return line(now.time, "called off", ""); },
                   [&](const TakeBegan& now) {
                       return line(now.time, "recording", fmt::format("take {}", now.take));
                   },
                   [&](const ChapterReached& now) {
                       return line(now.time, "chapter",
                                   fmt::format("{} {}", RecordingClock::format(now.mark.seconds),
                                               now.mark.title.utf8()));
                   },
                   [&](const TakeSaved& now) { return line(now.time, "saved", saved(now.sound)); }},
        news);
}

class LineSessionDisplay : public SessionDisplay {
public:
    void recovered(const SavedTake& take) override { write("recovered " + saved(take)); }
    void ready(double time) override { write(line(time, "ready", "two claps begin a take")); }
    void news(const TakeNews& news) override { write(lineOf(news)); }
    void end(double, std::int64_t, bool) override {}

private:
    void write(const std::string& line) {
        output_.line(shown(line));
        output_.flush();
    }

    Output output_;
};

// The prompter; what was saved is told when it is gone.
class ScreenSessionDisplay : public SessionDisplay {
public:
    ScreenSessionDisplay(bool colour, bool panel) : panel_(panel) {
        screen_.emplace(Screen::Options{.colour = colour});
    }

    void recovered(const SavedTake& take) override { told_.push_back("recovered " + saved(take)); }
    void news(const TakeNews& news) override {
        if (const auto* take = std::get_if<TakeSaved>(&news))
            told_.push_back("saved " + saved(take->sound));
    }
    void frame(TakeRecorder& recorder, const std::optional<std::string>& trouble) override {
        const Frame frame = recorder.frame();
        screen_->draw({.reading = recorder.reading(),
                       .frame = frame,
                       .take = takeOf(recorder.session(), recorder.time()),
                       .recordsTakes = true,
                       .panel = panel_,
                       .trouble = trouble});
    }
    void end(double, std::int64_t, bool) override {
        screen_.reset();
        Output output;
        for (const std::string& line : told_) {
            output.line(shown(line));
        }
        output.flush();
    }
    Screen* screen() override { return screen_ ? &*screen_ : nullptr; }

private:
    static TakeDisplay takeOf(const TakeSession& session, double time) {
        return {.status = session.statusAt(time),
                .mode = TakeBarMode::resolve(
                    {.countdown = session.countdownAt(time), .recording = session.isRecording()}),
                .countdownProgress = session.countdownProgressAt(time),
                .recordedSeconds = session.recordedAt(time)};
    }

    bool panel_;
    std::optional<Screen> screen_;  // absent once it is gone
    std::vector<std::string> told_;
};

}  // namespace

std::unique_ptr<SessionDisplay> sessionDisplay(const FollowOptions& options) {
    switch (options.display) {
        case FollowDisplay::screen:
            return std::make_unique<ScreenSessionDisplay>(options.colour, options.panel);
        case FollowDisplay::json: return std::make_unique<JsonSessionDisplay>();
        case FollowDisplay::lines: break;
    }
    return std::make_unique<LineSessionDisplay>();
}

}  // namespace Varnelle

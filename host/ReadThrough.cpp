#include "host/ReadThrough.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/PrompterNavigation.h"
#include "PrompterCore/support/Integers.h"

namespace Varnelle {

namespace {

// The aligner compares its tail only; a word with no spoken form takes none of its places, so a few
// more are passed.
constexpr std::int64_t recentWords = 24;

}  // namespace

ReadThrough::ReadThrough(Script script, std::vector<PromptLine> lines, const AlignerConfig& aligner,
                         const ScrollConfig& scroll)
    : lines_(std::move(lines)),
      chapters_(PromptChapters::chaptersOf(script, lines_)),
      aligner_(std::move(script), aligner),
      scroll_(scroll) {}

std::optional<Alignment> ReadThrough::hear(const WordsUpdate& update) {
    heard_.apply(update);
    if (update.words.empty()) return std::nullopt;
    scroll_.setSpeaking(voice_.words(update.time));

    const std::vector<HeardWord>& words = heard_.words();
    const std::int64_t count = signedCount(words.size());
    std::int64_t first = count;
    while (first > std::max<std::int64_t>(count - recentWords, 0) &&
           (!heardFrom_ || words[static_cast<std::size_t>(first - 1)].start >= *heardFrom_)) {
        --first;
    }
    std::vector<Text> recent;
    for (std::int64_t i = first; i < count; ++i) {
        recent.push_back(words[static_cast<std::size_t>(i)].word);
    }
    const std::optional<Alignment> alignment = aligner_.observe(recent);
    if (alignment) scroll_.anchor(alignment->tokenIndex, update.time);
    return alignment;
}

void ReadThrough::level(double meter, double time) {
    lastLevel_ = meter;
    scroll_.setSpeaking(voice_.level(meter, time));
}

Frame ReadThrough::frameAt(double time) {
    scroll_.setSpeaking(voice_.at(time));
    const double position = scroll_.tickAt(time);
    return {.time = time,
            .cursor = aligner_.cursor(),
            .position = position,
            .line = LineBreaker::lineIndexFor(position, lines_)};
}

void ReadThrough::restart(double time) {
    const bool speaking = voice_.isSpeaking();
    aligner_.reset();
    scroll_.reset();
    scroll_.setSpeaking(speaking);
    heardFrom_ = time;
}

void ReadThrough::seekTo(std::int64_t index, double time) {
    aligner_.seekTo(index);
    scroll_.jumpTo(aligner_.cursor(), time);
    heardFrom_ = time;
}

bool ReadThrough::moveLines(std::int64_t step, double time) {
    return moveTo(PrompterNavigation::lineStart(step, cursor(), lines_), time);
}

bool ReadThrough::moveParagraphs(std::int64_t step, double time) {
    return moveTo(PrompterNavigation::paragraphStart(step, cursor(), lines_), time);
}

bool ReadThrough::moveChapters(std::int64_t step, double time) {
    if (chapters_.empty() || step == 0) return false;
    const std::int64_t here = std::max<std::int64_t>(cursor(), 0);
    const std::int64_t current = PromptChapters::current(here, chapters_);
    const std::int64_t start = chapters_[static_cast<std::size_t>(current)].firstToken;
    // Before the first chapter it is the first one that lies ahead; inside one its own start lies
    // behind.
    std::int64_t target = saturatingAdd(current, step);
    if (start > here && step > 0) --target;
    if (start < here && step < 0) ++target;
    target = std::clamp<std::int64_t>(target, 0, signedCount(chapters_.size()) - 1);
    const std::int64_t token = chapters_[static_cast<std::size_t>(target)].firstToken;
    if (step > 0 ? token <= here : token >= here) return false;
    return moveTo(token, time);
}

void ReadThrough::layOut(std::vector<PromptLine> lines) {
    lines_ = std::move(lines);
    chapters_ = PromptChapters::chaptersOf(script(), lines_);
}

bool ReadThrough::moveTo(std::optional<std::int64_t> token, double time) {
    if (!token) return false;
    seekTo(*token, time);
    return true;
}

}  // namespace Varnelle

#pragma once

// One reading of a script: the one place that ties the script, its prompt lines, the aligner, the
// scroll model and the voice activity together. It owns no clock: every call says when it happens,
// so that the same calls give the same reading, live or replayed.
//
// Units: times are seconds on the sound's clock and never go back between calls; tokens, lines and
// their fractional positions as in the library; levels are meter values from 0 to 1.
//
//   ReadThrough reading(script, lines, Tuning::aligner, Tuning::scroll);
//   reading.hear(update);                      // the recogniser heard, or withdrew, words
//   reading.level(AudioLevel::meter(buffer), 1.25);
//   Frame frame = reading.frameAt(1.266);      // once per display frame
//   reading.moveLines(-1, 2.0);                // a hand move wins; following resumes from there

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/prompter/PromptChapters.h"
#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/voice/ScrollModel.h"
#include "PrompterCore/voice/VoiceAligner.h"
#include "host/HeardWords.h"
#include "host/VoiceActivity.h"

namespace Varnelle {

using namespace PrompterCore;  // NOLINT: the host speaks the library's language throughout

/// What a display shows at one moment.
struct Frame {
    double time = 0;          ///< seconds
    std::int64_t cursor = 0;  ///< the token last matched; -1 before the first
    double position = 0;      ///< tokens, smoothed: what scrolls
    double line = 0;          ///< prompt lines: where `position` stands in the lines

    friend bool operator==(const Frame&, const Frame&) = default;
};

/// A value: copy it to remember a reading's state.
class ReadThrough {
public:
    /// At the beginning: nothing heard, nothing read. `lines` are of `script`.
    ReadThrough(Script script, std::vector<PromptLine> lines, const AlignerConfig& aligner,
                const ScrollConfig& scroll);

    /// Takes what was heard at `update.time`. Absent when the words gave no new position; an update
    /// that only withdraws words never does. O(aligner window).
    std::optional<Alignment> hear(const WordsUpdate& update);

    /// Takes the meter value of the sound at `time`. Before the first, voice activity is judged
    /// from the words alone.
    void level(double meter, double time);

    /// Advances to `time`. Never allocates.
    [[nodiscard]] Frame frameAt(double time);

    /// Back to the beginning, as for another reading. Words spoken before `time` no longer count.
    void restart(double time);
    /// Moves by hand to token `index` (clamped to the script). Words spoken before `time` no longer
    /// count: following goes on from there.
    void seekTo(std::int64_t index, double time);
    /// Words spoken before `time` no longer count: they were said in a pause. The place stays.
    void ignoreBefore(double time) noexcept { heardFrom_ = time; }
    /// Moves by `step` lines, negative for up. False, and nothing moved, when there is no such
    /// line.
    bool moveLines(std::int64_t step, double time);
    /// The same for paragraphs.
    bool moveParagraphs(std::int64_t step, double time);
    /// The same for chapters: up goes to the current chapter's start first, then to earlier ones.
    bool moveChapters(std::int64_t step, double time);

    /// Shows the same reading in other lines of the same script, as after a change of width.
    void layOut(std::vector<PromptLine> lines);

    [[nodiscard]] const Script& script() const noexcept { return aligner_.script(); }
    [[nodiscard]] const std::vector<PromptLine>& lines() const noexcept { return lines_; }
    [[nodiscard]] const std::vector<PromptChapter>& chapters() const noexcept { return chapters_; }
    [[nodiscard]] const HeardWords& heard() const noexcept { return heard_; }
    [[nodiscard]] std::int64_t cursor() const noexcept { return aligner_.cursor(); }
    [[nodiscard]] double rate() const noexcept { return scroll_.rate(); }  ///< tokens a second
    [[nodiscard]] bool isSpeaking() const noexcept { return voice_.isSpeaking(); }
    /// The last meter value. Absent before the first.
    [[nodiscard]] std::optional<double> lastLevel() const noexcept { return lastLevel_; }

private:
    bool moveTo(std::optional<std::int64_t> token, double time);

    std::vector<PromptLine> lines_;
    std::vector<PromptChapter> chapters_;  // of lines_
    VoiceAligner aligner_;
    ScrollModel scroll_;
    VoiceActivity voice_;
    HeardWords heard_;
    std::optional<double> heardFrom_;  // words that began before do not count; absent: all count
    std::optional<double> lastLevel_;
};

}  // namespace Varnelle

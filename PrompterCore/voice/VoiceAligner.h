#pragma once

// Finds the word of a script that the presenter has just spoken, from what a recogniser heard.
//
// Units: positions are indices into Script::tokens; -1 means that nothing has been read yet.
//
//   VoiceAligner aligner(Script("Good evening and welcome"), config);
//   const std::vector<Text> heard = {"good", "evening"};
//   aligner.observe(heard);     // an Alignment with tokenIndex 1: "evening" was the last word
//   aligner.cursor();           // 1
//   aligner.seekTo(-5);         // cursor() is -1 again

#include <cstdint>
#include <optional>
#include <span>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/voice/AlignerConfig.h"
#include "PrompterCore/voice/Alignment.h"

namespace PrompterCore {

/// A value: copy it to remember a state (the script is shared, so a copy is cheap), compare two
/// with ==. It remembers the cursor and nothing else of what it heard.
class VoiceAligner {
public:
    /// At the very beginning, cursor -1. O(1): nothing is prepared.
    explicit VoiceAligner(Script script, const AlignerConfig& config);

    [[nodiscard]] const Script& script() const noexcept { return script_; }
    /// The token last matched, -1 before the first match; always below tokens().size().
    [[nodiscard]] std::int64_t cursor() const noexcept { return cursor_; }
    [[nodiscard]] const AlignerConfig& config() const noexcept { return config_; }

    /// Back to the beginning: cursor -1.
    void reset() noexcept { cursor_ = -1; }

    /// Moves the cursor by hand. `index` is taken as the nearest of -1 ... tokens().size() - 1.
    void seekTo(std::int64_t index) noexcept;

    /// Hears `words`, oldest first, and moves the cursor to the best position around it; the
    /// earliest of equally good ones. Each text is taken as one word, as spokenForms takes it; the
    /// newest `tailLength` forms are compared. The cursor's own token can be the best again, and is
    /// then returned like any other.
    /// Absent, and the cursor unchanged, when nothing was spoken, when there is no token to search,
    /// or when the best score is below `acceptScore` or NaN.
    /// Stops the program unless `tailLength` is not negative and, once there is something to
    /// search, `cursor() - lookBehind` and `cursor() + lookAhead` fit 64 bits.
    /// O(window x tail), whatever the script's length; of `words` only so many are looked at, from
    /// the newest back, as fill the tail.
    std::optional<Alignment> observe(std::span<const Text> words);

    /// The same script, cursor and configuration.
    friend bool operator==(const VoiceAligner&, const VoiceAligner&) = default;

private:
    Script script_;
    AlignerConfig config_;
    std::int64_t cursor_ = -1;
};

}  // namespace PrompterCore

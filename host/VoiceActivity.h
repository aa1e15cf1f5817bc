#pragma once

// Whether somebody is speaking, from the level meter: on at once when the level rises, off only
// after it has stayed low for a while, so that the gaps between words do not count as silence.
//
// Units: levels are meter values from 0 to 1 (0 is -60 dBFS or less, 1 is full scale), times are
// seconds on the sound's clock.
//
//   VoiceActivity voice;
//   voice.level(0.6, 1.0);    // true: -24 dBFS is a voice
//   voice.level(0.1, 1.2);    // still true: it may be a gap between words
//   voice.level(0.1, 1.8);    // false

#include <optional>

namespace Varnelle {

/// A value. Owns no clock.
class VoiceActivity {
public:
    static constexpr double startLevel = 0.35;    ///< -39 dBFS; from there on a voice has begun
    static constexpr double stopLevel = 0.25;     ///< -45 dBFS; below it there may be silence
    static constexpr double levelHangover = 0.4;  ///< seconds below stopLevel that end the speaking
    static constexpr double wordHangover = 1.0;   ///< seconds without words that do, where no level
                                                  ///< is known

    /// Silent.
    VoiceActivity() = default;

    /// Takes the level at `time` and returns whether somebody is speaking. A level that is not a
    /// number counts as silence.
    bool level(double meter, double time) noexcept;
    /// Words were heard at `time`. Where a level is known it knows better, and they say nothing.
    bool words(double time) noexcept;
    /// Time has passed.
    bool at(double time) noexcept;

    [[nodiscard]] bool isSpeaking() const noexcept { return speaking_; }

    friend bool operator==(const VoiceActivity&, const VoiceActivity&) = default;

private:
    bool speaking_ = false;
    bool knowsLevel_ = false;
    std::optional<double> quietSince_;  // absent unless speaking, and quiet for the moment
};

}  // namespace Varnelle

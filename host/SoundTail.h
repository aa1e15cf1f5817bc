#pragma once

// The last stretch of a sound, for what turns out afterwards to have mattered.
//
//   SoundTail tail(2 * 48000);
//   tail.append(samples);
//   tail.between(tail.end() - 480, tail.end());     // the last 10 ms
//
// Units: places are samples, counted from the sound's first one.

#include <cstdint>
#include <span>
#include <vector>

namespace Varnelle {

/// A value.
class SoundTail {
public:
    /// Remembers `length` samples at least. Stops the program unless that is 0 or more.
    explicit SoundTail(std::int64_t length);

    /// Takes the next samples.
    void append(std::span<const float> samples);

    /// The place behind the last sample: how many there were.
    [[nodiscard]] std::int64_t end() const noexcept;
    /// The first sample that is remembered.
    [[nodiscard]] std::int64_t begin() const noexcept { return begin_; }
    /// The samples from `from` to before `to`, as far as they are remembered: both are clamped.
    /// Valid until the next append.
    [[nodiscard]] std::span<const float> between(std::int64_t from, std::int64_t to) const noexcept;

    friend bool operator==(const SoundTail&, const SoundTail&) = default;

private:
    std::int64_t length_;
    std::int64_t begin_ = 0;
    std::vector<float> samples_;  // from begin_ on
};

}  // namespace Varnelle

#pragma once

// The stream format of AAC (ISO/IEC 13818-7, ADTS): before each frame stand seven bytes that say
// its rate and its length. Mono and of low complexity (LC), which is all that we write.
//
//   std::string framed = adtsFrame(payload, 48000);
//   const auto header = AdtsHeader::fromBytes(framed);    // 48000, payload.size()

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Varnelle {

/// Samples/s that the format knows, in the order of its own numbers for them.
inline constexpr std::array<int, 12> adtsRates{96000, 88200, 64000, 48000, 44100, 32000,
                                               24000, 22050, 16000, 12000, 11025, 8000};

/// What stands before a frame.
struct AdtsHeader {
    static constexpr std::size_t size = 7;  ///< bytes

    int rate = 0;             ///< samples/s, one of adtsRates
    std::size_t payload = 0;  ///< bytes of the frame behind the header

    /// The header that `bytes` begin with. Absent when they begin with none of ours.
    [[nodiscard]] static std::optional<AdtsHeader> fromBytes(std::string_view bytes) noexcept;

    friend bool operator==(const AdtsHeader&, const AdtsHeader&) = default;
};

/// `payload` with its header. Stops the program unless `rate` is one of adtsRates and the payload
/// has fewer than 8185 bytes.
[[nodiscard]] std::string adtsFrame(std::span<const std::uint8_t> payload, int rate);

/// What an MP4 file says about such frames (AudioSpecificConfig of ISO/IEC 14496-3).
[[nodiscard]] std::array<std::uint8_t, 5> aacConfiguration(int rate);

}  // namespace Varnelle

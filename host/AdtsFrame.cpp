#include "host/AdtsFrame.h"

#include <algorithm>
#include <iterator>

#include "PrompterCore/support/Require.h"

namespace Varnelle {

namespace {

using PrompterCore::require;

constexpr std::size_t largestFrame = (1U << 13) - 1;  // bytes, its header counted
constexpr unsigned lowComplexity = 2;                 // the object type

unsigned rateNumber(int rate) {
    const auto* const found = std::ranges::find(adtsRates, rate);
    require(found != adtsRates.end(), "the format knows the rate");
    return static_cast<unsigned>(std::distance(adtsRates.begin(), found));
}

}  // namespace

std::optional<AdtsHeader> AdtsHeader::fromBytes(std::string_view bytes) noexcept {
    if (bytes.size() < size) return std::nullopt;
    const auto at = [bytes](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    // A sync word of twelve ones; MPEG-4, layer 0, no check sum; low complexity; mono.
    const unsigned number = (at(2) >> 2U) & 0xFU;
    const bool isOurs = at(0) == 0xFF && at(1) == 0xF1 && at(2) >> 6U == lowComplexity - 1 &&
                        (at(2) & 1U) == 0 && at(3) >> 6U == 1 && (at(6) & 3U) == 0 &&
                        number < adtsRates.size();
    const std::size_t length = (at(3) & 3U) << 11U | static_cast<std::size_t>(at(4)) << 3U |
                               static_cast<std::size_t>(at(5)) >> 5U;
    if (!isOurs || length < size) return std::nullopt;
    return AdtsHeader{.rate = adtsRates[number], .payload = length - size};
}

std::string adtsFrame(std::span<const std::uint8_t> payload, int rate) {
    const std::size_t length = payload.size() + AdtsHeader::size;
    require(length <= largestFrame, "a frame's length fits its header");
    const auto byte = [](std::size_t bits) { return static_cast<char>(bits & 0xFFU); };
    std::string frame{byte(0xFF),
                      byte(0xF1),
                      byte((lowComplexity - 1) << 6U | rateNumber(rate) << 2U),
                      byte(1U << 6U | length >> 11U),
                      byte(length >> 3U),
                      byte(length << 5U | 0x1FU),  // the buffer's fullness: not said
                      byte(0xFC)};
    frame.insert(frame.end(), payload.begin(), payload.end());
    return frame;
}

std::array<std::uint8_t, 5> aacConfiguration(int rate) {
    // Object type, rate, one channel; then that no second layer (SBR) doubles the rate.
    const unsigned head = lowComplexity << 11U | rateNumber(rate) << 7U | 1U << 3U;
    return {static_cast<std::uint8_t>(head >> 8U), static_cast<std::uint8_t>(head & 0xFFU), 0x56,
            0xE5, 0x00};
}

}  // namespace Varnelle

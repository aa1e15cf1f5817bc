#include "PrompterCore/camera/CameraResolution.h"

#include <charconv>
#include <string_view>
#include <system_error>
#include <vector>

#include "PrompterCore/camera/FrameSize.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/text/Characters.h"

namespace PrompterCore {

namespace {

constexpr std::string_view widthKey = "width";
constexpr std::string_view heightKey = "height";

// A sign at most, and ASCII digits. Absent for anything else and for what does not fit 64 bits.
std::optional<std::int64_t> wholeNumber(std::string_view written) noexcept {
    if (written.starts_with('+')) {
        written.remove_prefix(1);
        if (written.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const char* const end = written.data() + written.size();
    const auto [stopped, failure] = std::from_chars(written.data(), end, number);
    if (failure != std::errc() || stopped != end) return std::nullopt;
    return number;
}

}  // namespace

std::optional<CameraResolution> CameraResolution::fromId(const Text& id) {
    std::vector<std::int64_t> numbers;
    std::string piece;
    const auto endPiece = [&] {
        if (const auto number = wholeNumber(piece)) numbers.push_back(*number);
        piece.clear();
    };
    // By characters: an x that carries an accent parts nothing.
    for (const Character character : Characters(id)) {
        if (character.is('x')) {
            endPiece();
        } else {
            piece += character.utf8();
        }
    }
    endPiece();
    if (numbers.size() != 2 || numbers[0] < 1 || numbers[1] < 1) return std::nullopt;
    return CameraResolution{.width = numbers[0], .height = numbers[1]};
}

Text CameraResolution::id() const { return std::to_string(width) + 'x' + std::to_string(height); }

std::string CameraResolution::title() const {
    return std::to_string(width) + " \u00D7 " + std::to_string(height);
}

CameraResolution CameraResolution::framed(CameraFraming framing) const noexcept {
    if (width < 1 || height < 1) return *this;
    const Size crop = FrameSize::cropping(
        {.width = static_cast<double>(width), .height = static_cast<double>(height)}, framing);
    return {.width = roundedToNearest(crop.width), .height = roundedToNearest(crop.height)};
}

CameraResolution CameraResolution::fromRecord(const Record& record) {
    return {.width = record.required<std::int64_t>(widthKey),
            .height = record.required<std::int64_t>(heightKey)};
}

Record CameraResolution::toRecord() const {
    return Record().with(widthKey, width).with(heightKey, height);
}

}  // namespace PrompterCore

std::size_t std::hash<PrompterCore::CameraResolution>::operator()(
    const PrompterCore::CameraResolution& resolution) const noexcept {
    const std::hash<std::int64_t> side;
    return side(resolution.width) * 1'000'003 + side(resolution.height);
}

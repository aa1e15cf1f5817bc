#include "PrompterCore/camera/CameraBackground.h"

#include <string>
#include <vector>

namespace PrompterCore {

namespace {

// What a colour is stored under, which has no name of its own.
constexpr std::string_view colourKey = "_0";
constexpr std::string_view pathKey = "path";

}  // namespace

CameraBackground::Kind CameraBackground::kind() const noexcept {
    return visit([](const Off&) { return Kind::off; }, [](const Blur&) { return Kind::blur; },
                 [](const Colour&) { return Kind::colour; },
                 [](const Image&) { return Kind::image; });
}

std::string_view CameraBackground::title() const noexcept { return PrompterCore::title(kind()); }

std::optional<CameraBackground> CameraBackground::switchedTo(Kind kind) const {
    if (kind == this->kind()) return *this;
    if (kind == Kind::image) return std::nullopt;
    if (kind == Kind::colour) return colour(defaultColour);
    return kind == Kind::blur ? blur() : off();
}

CameraBackground CameraBackground::fromRecord(const Record& record) {
    const std::vector<std::string_view> keys = record.keys();
    if (keys.size() != 1)
        throw RecordFailure(RecordFailure::Kind::mismatch,
                            "Invalid number of keys found, expected one.");
    const std::string_view name = keys.front();
    const auto kind = fromRawValue<Kind>(name);
    if (!kind)
        throw RecordFailure(RecordFailure::Kind::mismatch, "no kind of background").under(name);
    const Record carried = record.required<Record>(name);
    try {
        if (kind == Kind::colour) return colour(carried.required<RGBA>(colourKey));
        if (kind == Kind::image) return image(carried.required<Text>(pathKey));
        return kind == Kind::blur ? blur() : off();
    } catch (const RecordFailure& failure) {
        throw failure.under(name);
    }
}

Record CameraBackground::toRecord() const {
    const Record carried =
        visit([](const Off&) { return Record(); }, [](const Blur&) { return Record(); },
              [](const Colour& chosen) { return Record().with(colourKey, chosen.colour); },
              [](const Image& chosen) { return Record().with(pathKey, chosen.path); });
    return Record().with(rawValue(kind()), carried);
}

}  // namespace PrompterCore

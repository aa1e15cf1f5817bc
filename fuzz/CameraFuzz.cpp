// A camera's formats as any program may write them, and what is stored of the camera: reading never
// fails but as it says, and what was read is written and read back the same.
//
// Bytes: JSON. What reads as formats goes through the choices, beside their plain twins.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/camera/CameraAdjustment.h"
#include "PrompterCore/camera/FrameRateChoice.h"
#include "PrompterCore/camera/ResolutionChoice.h"
#include "PrompterCore/support/Require.h"
#include "host/CameraFormats.h"
#include "host/Failures.h"
#include "tests/reference/PlainCamera.h"

using namespace PrompterCore;

namespace {

template <class T>
void checkRecord(std::string_view json) {
    try {
        const T read = fromJson<T>(json);
        const std::string written = toJson(read);
        const T again = fromJson<T>(written);
        require(again == read, "what is written reads back");
        require(toJson(again) == written, "and is written alike");
    } catch (const RecordFailure& failure) {
        require(!failure.problem().empty(), "it says what is wrong");
    }
}

void checkChoices(const std::vector<Varnelle::CameraFormat>& formats) {
    const auto options = Varnelle::formatOptions(formats);
    const auto offered = ResolutionChoice::offered(options);
    require(offered == Plain::offered(options), "the slow search finds the same");
    for (const CameraFraming framing : allCases<CameraFraming>) {
        for (const CameraRotation rotation : allCases<CameraRotation>) {
            const auto menu = ResolutionChoice::framed(offered, framing, rotation);
            for (const CameraResolution& each : offered) {
                const CameraResolution turned = applied(rotation, each);
                const auto entry = ResolutionChoice::entryFor(each, menu, framing, rotation);
                require(
                    entry && entry->output == Plain::framed(turned.width, turned.height, framing),
                    "every resolution has its entry");
            }
        }
    }
    for (const CameraResolution& each : offered) {
        const auto ranges = Varnelle::frameRatesOf(each, formats);
        const auto rates = FrameRateChoice::offered(ranges);
        const auto rate = FrameRateChoice::chosen(ranges, std::nullopt);
        require(!rates.empty() && rate, "a format has a rate");
        require(std::ranges::is_sorted(rates, std::ranges::greater()), "highest first");
        require(*rate == FrameRateChoice::target || std::ranges::find(rates, *rate) != rates.end(),
                "what is chosen is the target or is offered");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    checkRecord<CameraResolution>(bytes);
    checkRecord<CameraBackground>(bytes);
    checkRecord<CameraAdjustment>(bytes);
    try {
        checkChoices(Varnelle::cameraFormats(bytes));
    } catch (const Varnelle::BadData& failure) {
        require(!std::string_view(failure.what()).empty(), "it says what is wrong");
    }
    return 0;
}

#include "host/CameraFormats.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "PrompterCore/records/Record.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

using namespace PrompterCore;  // NOLINT

// No camera comes near; what is larger is a mistake. Pixel counts and rates stay far from overflow.
constexpr std::int64_t largestSide = 100'000;
constexpr double fastestRate = 100'000;

RecordFailure wrong(const std::string& problem) { return {RecordFailure::Kind::mismatch, problem}; }

std::int64_t side(const Record& record, std::string_view key) {
    const auto pixels = record.required<std::int64_t>(key);
    if (pixels < 1 || pixels > largestSide)
        throw wrong(std::to_string(pixels) + " is not from 1 to 100000").under(key);
    return pixels;
}

ClosedRange<double> frameRateRange(const std::vector<double>& ends) {
    if (ends.size() != 2) throw wrong("a range is a lowest and a highest rate");
    for (const double rate : ends) {
        if (!(rate > 0 && rate <= fastestRate))
            throw wrong("a rate lies above 0 and is at most 100000");
    }
    if (ends[0] > ends[1]) throw wrong("the lowest rate comes first");
    return {ends[0], ends[1]};
}

std::vector<ClosedRange<double>> frameRates(const Record& record) {
    constexpr std::string_view key = "frameRates";
    const auto written = record.required<std::vector<std::vector<double>>>(key);
    if (written.empty()) throw wrong("there are none").under(key);
    std::vector<ClosedRange<double>> ranges;
    try {
        for (const auto& ends : written) {
            ranges.push_back(frameRateRange(ends));
        }
    } catch (const RecordFailure& failure) {
        throw failure.atEntry(ranges.size()).under(key);
    }
    return ranges;
}

CameraFormat format(const Record& record) {
    const CameraResolution resolution{.width = side(record, "width"),
                                      .height = side(record, "height")};
    return {.resolution = resolution, .frameRates = frameRates(record)};
}

}  // namespace

std::vector<CameraFormat> cameraFormats(std::string_view json) {
    std::vector<CameraFormat> formats;
    std::string where;
    try {
        const RecordValue value = RecordValue::fromJson(json);
        for (const RecordValue& entry : value.list()) {
            where = "format " + std::to_string(formats.size() + 1) + ": ";
            formats.push_back(format(entry.record()));
        }
    } catch (const RecordFailure& failure) {
        throw BadData(where + (failure.path().empty() ? failure.problem() : failure.what()));
    }
    return formats;
}

std::vector<CameraFormatOption> formatOptions(const std::vector<CameraFormat>& formats) {
    std::vector<CameraFormatOption> options;
    options.reserve(formats.size());
    for (const CameraFormat& format : formats) {
        options.push_back(
            {.resolution = format.resolution,
             .maxFrameRate =
                 std::ranges::max(format.frameRates, {}, &ClosedRange<double>::upper).upper()});
    }
    return options;
}

std::vector<ClosedRange<double>> frameRatesOf(const CameraResolution& resolution,
                                              const std::vector<CameraFormat>& formats) {
    std::vector<ClosedRange<double>> rates;
    for (const CameraFormat& format : formats) {
        if (format.resolution == resolution)
            rates.insert(rates.end(), format.frameRates.begin(), format.frameRates.end());
    }
    return rates;
}

}  // namespace Varnelle

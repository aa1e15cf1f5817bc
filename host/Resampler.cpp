#include "host/Resampler.h"

#include <array>
#include <cmath>
#include <new>

#include <samplerate.h>

#include "PrompterCore/support/Require.h"

namespace Varnelle {

// The library's converter.
class Resampler::Converter {
public:
    Converter() {
        int error = 0;
        state_ = src_new(SRC_SINC_MEDIUM_QUALITY, 1, &error);
        if (state_ == nullptr) throw std::bad_alloc();
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() { src_delete(state_); }

    std::vector<float> convert(std::span<const float> samples, double ratio, bool isEnd) {
        std::vector<float> converted;
        std::array<float, 4096> block{};
        SRC_DATA data{};
        // Without any place to read from, the library forgets to play out what it holds.
        const float nothing = 0;
        data.data_in = samples.empty() ? &nothing : samples.data();
        data.input_frames = static_cast<long>(samples.size());
        data.data_out = block.data();
        data.output_frames = static_cast<long>(block.size());
        data.src_ratio = ratio;
        data.end_of_input = isEnd ? 1 : 0;
        do {
            const int error = src_process(state_, &data);
            PrompterCore::require(error == 0, "a resampler's rates are ones that it converts");
            converted.insert(converted.end(), block.begin(),
                             block.begin() + data.output_frames_gen);
            data.data_in += data.input_frames_used;
            data.input_frames -= data.input_frames_used;
        } while (data.input_frames > 0 || data.output_frames_gen > 0);
        return converted;
    }

private:
    SRC_STATE* state_ = nullptr;
};

bool Resampler::converts(double from, double to) {
    return from > 0 && to > 0 && src_is_valid_ratio(to / from) != 0;
}

Resampler::Resampler(double from, double to) : ratio_(to / from) {
    PrompterCore::require(converts(from, to), "a resampler's rates are ones that it converts");
    if (ratio_ != 1) converter_ = std::make_unique<Converter>();
}
Resampler::Resampler(Resampler&&) noexcept = default;
Resampler& Resampler::operator=(Resampler&&) noexcept = default;
Resampler::~Resampler() = default;

std::vector<float> Resampler::convert(std::span<const float> samples) {
    if (converter_ == nullptr) return {samples.begin(), samples.end()};
    return converter_->convert(samples, ratio_, false);
}

std::vector<float> Resampler::finish() {
    if (converter_ == nullptr) return {};
    return converter_->convert({}, ratio_, true);
}

}  // namespace Varnelle

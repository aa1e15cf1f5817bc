#include "host/AacEncoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <new>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
#include <libavutil/frame.h>
#include <libavutil/log.h>
}

#include "PrompterCore/support/Require.h"
#include "host/AdtsFrame.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

using PrompterCore::require;

struct FreeContext {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

template <class Object, class Free>
std::unique_ptr<Object, Free> owned(Object* object, Free /*how*/) {
    if (object == nullptr) throw std::bad_alloc();
    return std::unique_ptr<Object, Free>(object);
}

// A voice in 128 kbit/s cannot be told from its original; lower rates need, and allow, less.
std::int64_t bitRateFor(int rate) { return std::min<std::int64_t>(128'000, rate * 3LL); }

float playable(float sample) {
    return std::isfinite(sample) ? std::clamp(sample, -1.0F, 1.0F) : 0.0F;
}

}  // namespace

class AacEncoder::Encoder {
public:
    explicit Encoder(int rate) : rate_(rate) {
        const AVCodec* const codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
        if (codec == nullptr)
            throw Unavailable(
                "the system cannot encode AAC; on Debian: apt-get install libavcodec-dev");
        context_ = owned(avcodec_alloc_context3(codec), FreeContext());
        context_->log_level_offset = AV_LOG_TRACE;  // it must not write over a screen
        context_->sample_rate = rate;
        context_->sample_fmt = AV_SAMPLE_FMT_FLTP;
        context_->bit_rate = bitRateFor(rate);
        context_->time_base = {1, rate};
        av_channel_layout_default(&context_->ch_layout, 1);
        if (avcodec_open2(context_.get(), codec, nullptr) != 0 ||
            context_->frame_size != frameLength || context_->initial_padding != priming)
            throw Unavailable("the system's AAC encoder cannot encode a voice");
        packet_ = owned(av_packet_alloc(), FreePacket());
        frame_ = owned(av_frame_alloc(), FreeFrame());
        frame_->nb_samples = static_cast<int>(frameLength);
        frame_->format = AV_SAMPLE_FMT_FLTP;
        frame_->sample_rate = rate;
        av_channel_layout_default(&frame_->ch_layout, 1);
        if (av_frame_get_buffer(frame_.get(), 0) != 0) throw std::bad_alloc();
    }

    std::string encode(std::span<const float> samples) {
        std::string bytes;
        for (const float sample : samples) {
            pending_[count_++] = playable(sample);
            if (count_ == pending_.size()) bytes += encodePending();
        }
        return bytes;
    }

    std::string finish() {
        std::string bytes;
        if (count_ > 0) {
            std::fill(pending_.begin() + static_cast<std::ptrdiff_t>(count_), pending_.end(), 0.0F);
            bytes += encodePending();
        }
        bytes += send(nullptr);
        return bytes;
    }

private:
    std::string encodePending() {
        // The encoder may still hold on to what it was given last.
        if (av_frame_make_writable(frame_.get()) != 0) throw std::bad_alloc();
        float* const plane = reinterpret_cast<float*>(frame_->data[0]);
        std::copy(pending_.begin(), pending_.end(), plane);
        frame_->pts = samplesSent_;
        samplesSent_ += frameLength;
        count_ = 0;
        return send(frame_.get());
    }

    std::string send(const AVFrame* frame) {
        std::string bytes;
        int status = avcodec_send_frame(context_.get(), frame);
        while (status == 0 &&
               (status = avcodec_receive_packet(context_.get(), packet_.get())) == 0) {
            bytes += adtsFrame({packet_->data, static_cast<std::size_t>(packet_->size)}, rate_);
            av_packet_unref(packet_.get());
        }
        if (status == AVERROR(ENOMEM)) throw std::bad_alloc();
        require(status == AVERROR(EAGAIN) || status == AVERROR_EOF,
                "a finished sound is not encoded any further");
        return bytes;
    }

    int rate_;
    std::unique_ptr<AVCodecContext, FreeContext> context_;
    std::unique_ptr<AVPacket, FreePacket> packet_;
    std::unique_ptr<AVFrame, FreeFrame> frame_;
    std::array<float, frameLength> pending_{};
    std::size_t count_ = 0;  // of pending_
    std::int64_t samplesSent_ = 0;
};

int AacEncoder::rateFor(double rate) {
    const auto isKnown = [](double wanted) {
        return std::ranges::find(adtsRates, wanted) != adtsRates.end();
    };
    if (rate > adtsRates.front())
        return isKnown(rate / 2) ? static_cast<int>(rate / 2) : adtsRates.front();
    int best = adtsRates.front();
    for (const int known : adtsRates) {
        if (known >= rate) best = known;
    }
    return best;
}

AacEncoder::AacEncoder(int rate) {
    require(std::ranges::find(adtsRates, rate) != adtsRates.end(), "the format knows the rate");
    encoder_ = std::make_unique<Encoder>(rate);
}

AacEncoder::AacEncoder(AacEncoder&&) noexcept = default;
AacEncoder& AacEncoder::operator=(AacEncoder&&) noexcept = default;
AacEncoder::~AacEncoder() = default;

std::string AacEncoder::encode(std::span<const float> samples) { return encoder_->encode(samples); }

std::string AacEncoder::finish() { return encoder_->finish(); }

}  // namespace Varnelle

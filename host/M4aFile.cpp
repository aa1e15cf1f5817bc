#include "host/M4aFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include <unistd.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include "host/AacEncoder.h"
#include "host/AdtsFrame.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

[[noreturn]] void failed(int error) {
    throw CannotWrite(std::string("the sound cannot be written: ") + std::strerror(error));
}

void check(int status) {
    if (status == AVERROR(ENOMEM)) throw std::bad_alloc();
    if (status < 0) failed(AVUNERROR(status));
}

// As the library reads a date.
std::string dateOf(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    std::string date(32, '\0');
    date.resize(gmtime_r(&seconds, &parts) == nullptr
                    ? 0
                    : std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%SZ", &parts));
    return date;
}

// The frames of a file, one after another, up to its end or to what is no frame.
class FrameReader {
public:
    explicit FrameReader(int descriptor) : descriptor_(descriptor) {}

    // The next frame's payload, valid until the next call; its rate is in `rate`.
    std::optional<std::string_view> next() {
        fill(AdtsHeader::size);
        const auto header = AdtsHeader::fromBytes(rest());
        if (!header || (rate_ != 0 && header->rate != rate_)) return std::nullopt;
        const std::size_t length = AdtsHeader::size + header->payload;
        fill(length);
        if (rest().size() < length) return std::nullopt;
        rate_ = header->rate;
        const std::string_view payload = rest().substr(AdtsHeader::size, header->payload);
        at_ += length;
        bytes_ += static_cast<std::int64_t>(length);
        return payload;
    }

    int rate() const { return rate_; }  // 0 before the first frame
    std::int64_t bytes() const { return bytes_; }

private:
    std::string_view rest() const { return std::string_view(buffer_).substr(at_); }

    // Makes the rest at least `count` bytes long, unless the file ends before.
    void fill(std::size_t count) {
        if (rest().size() >= count) return;
        buffer_.erase(0, at_);
        at_ = 0;
        while (buffer_.size() < count) {
            constexpr std::size_t chunk = 1 << 16;
            const std::size_t had = buffer_.size();
            buffer_.resize(had + chunk);
            const ssize_t got = pread(descriptor_, buffer_.data() + had, chunk, offset_);
            const int error = errno;
            buffer_.resize(had + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
            if (got < 0 && error == EINTR) continue;
            if (got < 0) failed(error);
            if (got == 0) return;
            offset_ += got;
        }
    }

    int descriptor_;
    off_t offset_ = 0;  // in the file, behind the buffer
    std::string buffer_;
    std::size_t at_ = 0;  // in the buffer
    std::int64_t bytes_ = 0;
    int rate_ = 0;
};

// The library's own files would be closed without a word of what went wrong.
class Target {
public:
    explicit Target(int descriptor) : descriptor_(descriptor) {
        constexpr int bufferSize = 1 << 15;
        auto* const buffer = static_cast<unsigned char*>(av_malloc(bufferSize));
        if (buffer == nullptr) throw std::bad_alloc();
        context_ =
            avio_alloc_context(buffer, bufferSize, 1, this, nullptr, &Target::write, &Target::seek);
        if (context_ == nullptr) {
            av_free(buffer);
            throw std::bad_alloc();
        }
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;
    ~Target() {
        av_freep(&context_->buffer);
        avio_context_free(&context_);
    }

    AVIOContext* context() { return context_; }
    void finish() {
        avio_flush(context_);
        check(context_->error);
    }

private:
    static int write(void* self, std::uint8_t* bytes, int count) {
        const int descriptor = static_cast<Target*>(self)->descriptor_;
        for (int written = 0; written < count;) {
            const ssize_t now =
                ::write(descriptor, bytes + written, static_cast<std::size_t>(count - written));
            if (now < 0 && errno == EINTR) continue;
            if (now < 0) return AVERROR(errno);
            written += static_cast<int>(now);
        }
        return count;
    }
    static std::int64_t seek(void* self, std::int64_t offset, int whence) {
        if (whence == AVSEEK_SIZE) return AVERROR(ENOSYS);
        const off_t at = lseek(static_cast<Target*>(self)->descriptor_, offset, whence);
        return at < 0 ? AVERROR(errno) : at;
    }

    int descriptor_;
    AVIOContext* context_ = nullptr;
};

struct FreeMuxer {
    void operator()(AVFormatContext* context) const { avformat_free_context(context); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

class Muxer {
public:
    Muxer(int descriptor, int rate, std::chrono::system_clock::time_point made)
        : target_(descriptor), packet_(av_packet_alloc()) {
        AVFormatContext* context = nullptr;
        check(avformat_alloc_output_context2(&context, nullptr, "ipod", nullptr));
        context_.reset(context);
        context->pb = target_.context();
        AVStream* const stream = avformat_new_stream(context, nullptr);
        if (stream == nullptr || packet_ == nullptr) throw std::bad_alloc();
        stream->time_base = {1, rate};
        describe(*stream->codecpar, rate);
        AVDictionary* options = nullptr;
        av_dict_set(&context->metadata, "creation_time", dateOf(made).c_str(), 0);
        // The edit that hides the priming is measured in the movie's own unit: let it be a sample.
        av_dict_set_int(&options, "movie_timescale", rate, 0);
        const int status = avformat_write_header(context, &options);
        av_dict_free(&options);
        check(status);
    }

    void write(std::string_view payload, std::int64_t start, std::int64_t duration) {
        check(av_new_packet(packet_.get(), static_cast<int>(payload.size())));
        std::memcpy(packet_->data, payload.data(), payload.size());
        packet_->pts = packet_->dts = start;
        packet_->duration = duration;
        packet_->flags |= AV_PKT_FLAG_KEY;
        const int status = av_write_frame(context_.get(), packet_.get());
        av_packet_unref(packet_.get());
        check(status);
    }

    void finish() {
        check(av_write_trailer(context_.get()));
        target_.finish();
    }

private:
    static void describe(AVCodecParameters& parameters, int rate) {
        parameters.codec_type = AVMEDIA_TYPE_AUDIO;
        parameters.codec_id = AV_CODEC_ID_AAC;
        parameters.profile = FF_PROFILE_AAC_LOW;
        parameters.sample_rate = rate;
        parameters.frame_size = static_cast<int>(AacEncoder::frameLength);
        parameters.initial_padding = static_cast<int>(AacEncoder::priming);
        av_channel_layout_default(&parameters.ch_layout, 1);
        const auto configuration = aacConfiguration(rate);
        parameters.extradata = static_cast<std::uint8_t*>(
            av_mallocz(configuration.size() + AV_INPUT_BUFFER_PADDING_SIZE));
        if (parameters.extradata == nullptr) throw std::bad_alloc();
        std::ranges::copy(configuration, parameters.extradata);
        parameters.extradata_size = static_cast<int>(configuration.size());
    }

    Target target_;
    std::unique_ptr<AVFormatContext, FreeMuxer> context_;
    std::unique_ptr<AVPacket, FreePacket> packet_;
};

}  // namespace

AacFrames aacFramesIn(int source) {
    FrameReader reader(source);
    AacFrames found;
    while (reader.next()) {
        ++found.frames;
    }
    found.rate = reader.rate();
    found.bytes = reader.bytes();
    return found;
}

void writeM4a(int source, int target, const M4aContent& content) {
    av_log_set_level(AV_LOG_QUIET);  // it would write its complaints over a screen
    const std::int64_t end = AacEncoder::priming + std::max<std::int64_t>(content.samples, 0);
    FrameReader reader(source);
    std::optional<Muxer> muxer;
    for (std::int64_t at = 0; at < end; at += AacEncoder::frameLength) {
        const auto payload = reader.next();
        if (!payload) break;
        if (!muxer) muxer.emplace(target, reader.rate(), content.made);
        muxer->write(*payload, at - AacEncoder::priming,
                     std::min(AacEncoder::frameLength, end - at));
    }
    if (muxer) muxer->finish();
}

}  // namespace Varnelle

#include "host/Microphone.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/stream.h>

#include "PrompterCore/audio/MicrophoneAccess.h"
#include "host/CaptureClock.h"
#include "host/Failures.h"
#include "host/PulseServer.h"

namespace Varnelle {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int rate = 48000;              // samples/s
constexpr milliseconds fragment{20};     // of sound that comes at once
constexpr milliseconds retryAfter{500};  // for an input that is there and cannot be heard

}  // namespace

class Microphone::Capture {
public:
    Capture(std::optional<Text> asked, std::function<void(const std::string&)> tell)
        : asked_(std::move(asked)), tell_(std::move(tell)) {
        server_.waitUntil([&] {
            choose();
            if (server_.sources() && !inputs_.chosen) throw Unavailable(*troubleWith(inputs_));
            if (error_ == PA_ERR_ACCESS)
                throw Unavailable(
                    std::string(PrompterCore::summary(PrompterCore::MicrophoneAccess::denied)) +
                    "; the sound server refuses the recording");
            return isRunning();
        });
        heard_ = listeningTo_;
        say(troubleWith(inputs_));
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture() { stop(); }

    std::vector<float> read() {
        server_.run(isRunning() ? milliseconds(100) : fragment);
        choose();
        std::vector<float> captured = drain();
        const Clock::time_point now = Clock::now();
        if (!start_) {
            start_ = now;
            captured.clear();  // it was said before anybody listened
        }
        const std::chrono::duration<double> time = now - *start_;
        using Device = CaptureClock::Device;
        const auto correction =
            clock_.take(static_cast<std::int64_t>(captured.size()), time.count(),
                        gives(captured) ? Device::runs : Device::isAway);
        captured.erase(captured.begin(), captured.begin() + correction.dropped);
        captured.insert(captured.begin(), static_cast<std::size_t>(correction.silence), 0.0F);
        return captured;
    }

    int descriptor() const { return server_.descriptor(); }
    const std::optional<std::string>& trouble() const { return trouble_; }

private:
    bool isRunning() const {
        return stream_ != nullptr && pa_stream_get_state(stream_) == PA_STREAM_READY;
    }

    // Whether what is missing may still come: not from an input that has yet to begin, or sleeps.
    bool gives(const std::vector<float>& captured) {
        hasBegun_ = hasBegun_ || !captured.empty();
        return isRunning() && hasBegun_ && pa_stream_is_suspended(stream_) <= 0;
    }

    // Listens to what is to be listened to now.
    void choose() {
        if (stream_ != nullptr &&
            (connection_ != server_.connections() || server_.state() != PulseServer::State::ready ||
             !PA_STREAM_IS_GOOD(pa_stream_get_state(stream_)))) {
            if (server_.state() == PulseServer::State::ready)
                error_ = pa_context_errno(server_.context());
            stop();
        }
        if (server_.state() != PulseServer::State::ready) {
            if (server_.state() == PulseServer::State::lost && start_)
                say("the sound server has gone; waiting for it");
            return;
        }
        if (!server_.sources()) return;
        inputs_ = audioInputsFrom(*server_.sources(), asked_);
        if (!inputs_.chosen) {
            stop();
        } else if (stream_ == nullptr || listeningTo_ != inputs_.chosen->id) {
            if (listeningTo_ != inputs_.chosen->id || Clock::now() - lastTry_ >= retryAfter)
                listen();
        }
        if (!start_ || !(isRunning() || !inputs_.chosen)) return;
        const bool wasTrouble = trouble_.has_value();
        say(troubleWith(inputs_));
        // Without a wish there is nothing to miss, but something to know.
        if (isRunning() && std::exchange(heard_, listeningTo_) != listeningTo_ && !wasTrouble &&
            !trouble_)
            tell_("listening to " + inputs_.chosen->name.utf8() + " now");
    }

    void listen() {
        stop();
        lastTry_ = Clock::now();
        listeningTo_ = inputs_.chosen->id;
        hasBegun_ = false;
        connection_ = server_.connections();
        const pa_sample_spec format{.format = PA_SAMPLE_FLOAT32NE, .rate = rate, .channels = 1};
        stream_ = pa_stream_new(server_.context(), "voice", &format, nullptr);
        if (stream_ == nullptr) return;
        constexpr auto standard = std::numeric_limits<std::uint32_t>::max();
        const pa_buffer_attr buffer{
            .maxlength = standard,
            .tlength = standard,
            .prebuf = standard,
            .minreq = standard,
            .fragsize = static_cast<std::uint32_t>(rate * sizeof(float) * fragment.count() / 1000)};
        // Where it goes when its source goes is our choice, not the server's.
        constexpr auto flags =
            static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE);
        if (pa_stream_connect_record(stream_, inputs_.chosen->id.utf8().c_str(), &buffer, flags) <
            0)
            stop();
    }

    void stop() {
        if (stream_ == nullptr) return;
        pa_stream_disconnect(stream_);
        pa_stream_unref(std::exchange(stream_, nullptr));
    }

    std::vector<float> drain() {
        std::vector<float> samples;
        while (isRunning() && pa_stream_readable_size(stream_) > 0) {
            const void* data = nullptr;
            std::size_t size = 0;
            if (pa_stream_peek(stream_, &data, &size) < 0 || size == 0) break;
            const std::size_t before = samples.size();
            samples.resize(before + size / sizeof(float));  // a hole has no data and is silence
            if (data != nullptr)
                std::memcpy(samples.data() + before, data, size / sizeof(float) * sizeof(float));
            pa_stream_drop(stream_);
        }
        for (float& sample : samples) {
            if (!std::isfinite(sample)) sample = 0;
        }
        return samples;
    }

    void say(std::optional<std::string> trouble) {
        if (trouble == trouble_) return;
        trouble_ = std::move(trouble);
        tell_(trouble_ ? *trouble_ : "listening to " + inputs_.chosen->name.utf8() + " again");
    }

    const std::optional<Text> asked_;
    const std::function<void(const std::string&)> tell_;
    PulseServer server_;
    AudioInputs inputs_;                      // as they were when they were last known
    pa_stream* stream_ = nullptr;             // null while there is nothing to listen to
    Text listeningTo_;                        // the id of the stream's input
    bool hasBegun_ = false;                   // it has given something
    std::int64_t connection_ = 0;             // to the server, that the stream belongs to
    Text heard_;                              // the id of the input that was heard last
    int error_ = PA_OK;                       // that ended the last stream
    Clock::time_point lastTry_;               // to listen
    std::optional<Clock::time_point> start_;  // of the sound; absent before it is first read
    CaptureClock clock_{rate};
    std::optional<std::string> trouble_;
};

Microphone::Microphone(const std::optional<Text>& asked,
                       std::function<void(const std::string&)> tell)
    : capture_(std::make_unique<Capture>(asked, std::move(tell))) {}
Microphone::~Microphone() = default;

double Microphone::sampleRate() const { return rate; }
std::vector<float> Microphone::read() { return capture_->read(); }
std::optional<int> Microphone::waitingFor() const { return capture_->descriptor(); }
std::optional<std::string> Microphone::trouble() const { return capture_->trouble(); }

}  // namespace Varnelle

#include "host/PulseServer.h"

#include <algorithm>
#include <utility>

#include <poll.h>
#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/subscribe.h>

#include "PrompterCore/audio/MicrophoneAccess.h"
#include "host/Failures.h"
#include "host/PulseLoop.h"

namespace Varnelle {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds patience{5000};
constexpr milliseconds retryAfter{500};

void forget(pa_operation* operation) {
    if (operation != nullptr) pa_operation_unref(operation);
}

}  // namespace

class PulseServer::Connection {
public:
    Connection() { connect(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { disconnect(); }

    void run(milliseconds wake) {
        if (state_ == State::lost && Clock::now() - lostAt_ >= retryAfter) connect();
        loop_.run(state_ == State::lost ? std::min(wake, retryAfter) : wake);
        if (state_ == State::ready && hasNews_ && !isAsking_) ask();
        loop_.run(state_ == State::lost ? std::min(wake, retryAfter) : wake);
    }

    PulseLoop loop_;
    pa_context* context_ = nullptr;
    State state_ = State::lost;
    int error_ = PA_OK;
    std::int64_t connections_ = 0;
    std::optional<std::vector<AudioSource>> sources_;

private:
    void connect() {
        disconnect();
        state_ = State::connecting;
        context_ = pa_context_new(loop_.api(), "Varnelle");
        if (context_ == nullptr) return lose(PA_ERR_INTERNAL);
        pa_context_set_state_callback(context_, &Connection::stateChanged, this);
        pa_context_set_subscribe_callback(context_, &Connection::somethingChanged, this);
        if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
            lose(pa_context_errno(context_));
    }

    void disconnect() {
        if (context_ == nullptr) return;
        pa_context_set_state_callback(context_, nullptr, nullptr);
        pa_context_set_subscribe_callback(context_, nullptr, nullptr);
        pa_context_disconnect(context_);
        pa_context_unref(std::exchange(context_, nullptr));
        isAsking_ = false;
    }

    void lose(int error) {
        state_ = State::lost;
        error_ = error;
        lostAt_ = Clock::now();
        sources_.reset();
        isAsking_ = false;
    }

    // The default first, then the list: the list is marked with it.
    void ask() {
        isAsking_ = true;
        hasNews_ = false;
        collected_.clear();
        forget(pa_context_get_server_info(context_, &Connection::serverIs, this));
    }

    static void stateChanged(pa_context* context, void* self) {
        Connection& server = *static_cast<Connection*>(self);
        switch (pa_context_get_state(context)) {
            case PA_CONTEXT_READY: {
                server.state_ = State::ready;
                ++server.connections_;
                server.hasNews_ = true;
                constexpr auto events = static_cast<pa_subscription_mask_t>(
                    PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
                forget(pa_context_subscribe(context, events, nullptr, nullptr));
                break;
            }
            case PA_CONTEXT_FAILED:
            case PA_CONTEXT_TERMINATED: server.lose(pa_context_errno(context)); break;
            default: break;
        }
    }

    static void somethingChanged(pa_context*, pa_subscription_event_type_t, std::uint32_t,
                                 void* self) {
        static_cast<Connection*>(self)->hasNews_ = true;
    }

    static void serverIs(pa_context* context, const pa_server_info* info, void* self) {
        Connection& server = *static_cast<Connection*>(self);
        const char* const name = info != nullptr ? info->default_source_name : nullptr;
        server.default_ = name != nullptr ? name : "";
        forget(pa_context_get_source_info_list(context, &Connection::sourceIs, self));
    }

    static void sourceIs(pa_context*, const pa_source_info* info, int end, void* self) {
        Connection& server = *static_cast<Connection*>(self);
        if (end == 0 && info != nullptr) {
            server.collected_.push_back(
                {.input = {.id = Text(info->name),
                           .name =
                               Text(info->description != nullptr ? info->description : info->name),
                           .isDefault = server.default_ == info->name},
                 .isMonitor = info->monitor_of_sink != PA_INVALID_INDEX});
            return;
        }
        server.isAsking_ = false;
        server.sources_ = std::exchange(server.collected_, {});
    }

    std::string default_;  // the id of the default source
    std::vector<AudioSource> collected_;
    bool hasNews_ = false;   // the list has changed since it was asked for
    bool isAsking_ = false;  // for the list
    Clock::time_point lostAt_;
};

PulseServer::PulseServer() : connection_(std::make_unique<Connection>()) {}
PulseServer::~PulseServer() = default;

int PulseServer::descriptor() const noexcept { return connection_->loop_.descriptor(); }
void PulseServer::run(milliseconds wake) { connection_->run(wake); }

void PulseServer::waitUntil(const std::function<bool()>& isDone) {
    const Clock::time_point deadline = Clock::now() + patience;
    while (true) {
        run(milliseconds(100));
        if (isDone()) return;
        if (state() == State::lost) throw Unavailable(whyNot());
        if (Clock::now() >= deadline)
            throw Unavailable("the sound server does not answer, so that there is no microphone");
        pollfd readable{.fd = descriptor(), .events = POLLIN, .revents = 0};
        poll(&readable, 1, 100);
    }
}

PulseServer::State PulseServer::state() const noexcept { return connection_->state_; }
const std::optional<std::vector<AudioSource>>& PulseServer::sources() const noexcept {
    return connection_->sources_;
}
std::int64_t PulseServer::connections() const noexcept { return connection_->connections_; }
pa_context* PulseServer::context() const noexcept { return connection_->context_; }

std::string PulseServer::whyNot() const {
    using PrompterCore::MicrophoneAccess;
    const int error = connection_->error_;
    if (error == PA_ERR_ACCESS || error == PA_ERR_AUTHKEY)
        return std::string(PrompterCore::summary(MicrophoneAccess::denied)) +
               "; the sound server refuses the connection";
    return std::string("there is no sound server to reach a microphone through (") +
           pa_strerror(error) + ")";
}

}  // namespace Varnelle

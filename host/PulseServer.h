#pragma once

// The sound server that this machine's microphones are behind (PulseAudio, or PipeWire in its
// place), asked without a thread: everything it has to say is taken when `run` is called.
//
//   PulseServer server;
//   server.waitUntil([&] { return server.sources().has_value(); });
//   server.sources()->front().input.name;
//
// Units: milliseconds.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/AudioInputs.h"

struct pa_context;

namespace Varnelle {

/// A connection, kept up: once it is lost, each `run` sees whether it can be made anew.
class PulseServer {
public:
    enum class State { connecting, ready, lost };

    /// Begins to connect. No server is started for it. Throws Unavailable when the system has no
    /// means for it.
    PulseServer();
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;
    ~PulseServer();

    /// Readable when `run` has something to do.
    [[nodiscard]] int descriptor() const noexcept;
    /// Does what there is to do; never waits. `descriptor` is readable again after `wake` at the
    /// latest.
    void run(std::chrono::milliseconds wake);
    /// Runs until `isDone`, five seconds at most. Throws Unavailable with a sentence for a user
    /// when the connection is lost or the time has passed.
    void waitUntil(const std::function<bool()>& isDone);

    [[nodiscard]] State state() const noexcept;
    /// Its sources, always as they are at present. Absent until they are known.
    [[nodiscard]] const std::optional<std::vector<AudioSource>>& sources() const noexcept;
    /// Counts how often the connection was made, so that what belongs to an old one is known.
    [[nodiscard]] std::int64_t connections() const noexcept;
    /// Why the connection cannot be made, in a sentence for a user.
    [[nodiscard]] std::string whyNot() const;
    /// The library's own connection.
    [[nodiscard]] pa_context* context() const noexcept;

private:
    class Connection;
    std::unique_ptr<Connection> connection_;
};

}  // namespace Varnelle

#pragma once

// A sound server of the test's own, without hardware, in folders of its own. Everything that the
// test does and starts finds it in place of the machine's.
//
//   SoundServer server;
//   server.start();
//   server.control({"load-module", "module-null-sink", "sink_name=booth"});

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {

class SoundServer {
public:
    /// Not started yet: there is no sound server at all.
    SoundServer() {
        std::string folder = ::testing::TempDir() + "varnelleXXXXXX";
        EXPECT_NE(mkdtemp(folder.data()), nullptr);
        folder_ = folder;
        setenv("HOME", folder.c_str(), 1);
        setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
        setenv("PULSE_RUNTIME_PATH", (folder + "/pulse").c_str(), 1);
        for (const char* name : {"PULSE_SERVER", "PULSE_SOURCE", "PULSE_COOKIE"}) {
            unsetenv(name);
        }
    }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer() {
        stop();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// Starts it and waits until it answers.
    void start() {
        process_.emplace(std::vector<std::string>{
            "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
            "--log-level=error", "-L", "module-native-protocol-unix"});
        for (int i = 0; i < 500; ++i) {
            if (runCommand({"pactl", "info"}).status == 0) return;
            poll(nullptr, 0, 20);
        }
        ADD_FAILURE() << "the sound server does not answer: " << process_->error();
    }
    void stop() { process_.reset(); }

    /// What the server's control program says; for a module that is loaded, its number.
    std::string control(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "pactl");
        const CommandResult result = runCommand(arguments);
        EXPECT_EQ(result.status, 0) << result.error;
        return result.out.substr(0, result.out.find('\n'));
    }

    /// A sink whose monitor, `id`.monitor, hears what is played into it.
    std::string addBooth(const std::string& id) {
        return control({"load-module", "module-null-sink", "sink_name=" + id, "rate=48000",
                        "channels=1", "sink_properties=device.description=" + id});
    }
    /// The same, and something hums in it.
    std::string addHum(const std::string& id) {
        const std::string module = addBooth(id);
        control({"load-module", "module-sine", "sink=" + id});
        return module;
    }
    void remove(const std::string& module) { control({"unload-module", module}); }

private:
    std::filesystem::path folder_;
    std::optional<RunningCommand> process_;
};

}  // namespace Varnelle::Tests

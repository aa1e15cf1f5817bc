#pragma once

// A session of the test's own: its home, its bus, and on it the real keyring, which keeps what it
// is given in that home.
//
//   PrivateKeyring session;             // a bus; nobody answers for secrets yet
//   session.startKeyring("password");   // makes the default keyring, or tries to unlock it
//
// While it lives, the environment of this process, and so of all that it starts, is that session's.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/RunningCommand.h"

namespace PrompterCore::Tests {

class PrivateKeyring {
public:
    /// Whether the bus lets anyone speak with the keyring.
    enum class Access { allowed, denied };

    explicit PrivateKeyring(Access access = Access::allowed) {
        std::string folder = (std::filesystem::temp_directory_path() / "keyringXXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) ADD_FAILURE() << "no folder for the session";
        home_ = folder;
        set("HOME", home_);
        set("XDG_RUNTIME_DIR", home_);
        set("XDG_DATA_HOME", home_ / "data");
        const auto settings = home_ / "bus.conf";
        // No folder of services: nothing starts unless a test starts it.
        std::ofstream(settings) << "<busconfig><type>session</type><listen>unix:dir=" << folder
                                << "</listen>"
                                << "<policy context=\"default\"><allow send_destination=\"*\"/>"
                                << "<allow receive_sender=\"*\"/><allow own=\"*\"/>"
                                << (access == Access::denied
                                        ? "<deny send_destination=\"org.freedesktop.secrets\"/>"
                                        : "")
                                << "</policy></busconfig>";
        bus_.emplace(Command{"dbus-daemon", "--nofork", "--config-file=" + settings.string(),
                             "--print-address"});
        if (!bus_->readUntil("\n")) ADD_FAILURE() << "the bus did not start";
        set("DBUS_SESSION_BUS_ADDRESS", bus_->out().substr(0, bus_->out().find('\n')));
    }
    PrivateKeyring(const PrivateKeyring&) = delete;
    PrivateKeyring& operator=(const PrivateKeyring&) = delete;
    ~PrivateKeyring() {
        stopKeyring();
        stopBus();
        for (const auto& [name, value] : before_) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
        std::filesystem::remove_all(home_);
    }

    /// Unlocks the default keyring with `password`, and makes it when there is none; without a
    /// password does neither. Answers on the bus when this returns.
    void startKeyring(const std::optional<std::string>& password) {
        stopKeyring();
        Command command{"gnome-keyring-daemon", "--foreground", "--components=secrets"};
        if (password) command.emplace_back("--unlock");
        keyring_.emplace(command);
        keyring_->write(password.value_or(""));
        keyring_->closeInput();
        const auto waited = runCommand(
            {"gdbus", "wait", "--session", "--timeout", "20", "org.freedesktop.secrets"});
        if (waited.status != 0) ADD_FAILURE() << "the keyring did not start: " << waited.error;
    }
    void stopKeyring() {
        if (!keyring_) return;
        keyring_.reset();
        // The bus notices a little later.
        while (runCommand({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                           "--object-path", "/org/freedesktop/DBus", "--method",
                           "org.freedesktop.DBus.NameHasOwner", "org.freedesktop.secrets"})
                   .out.starts_with("(true")) {
        }
    }
    /// It stays on the bus, and answers nothing.
    void freezeKeyring() { keyring_->send(SIGSTOP); }
    void stopBus() { bus_.reset(); }

    const std::filesystem::path& home() const { return home_; }

    /// Sets a variable until the end of the session.
    void set(const std::string& name, const std::string& value) {
        const char* const before = std::getenv(name.c_str());
        before_.emplace(name,
                        before == nullptr ? std::nullopt : std::optional<std::string>(before));
        setenv(name.c_str(), value.c_str(), 1);
    }

private:
    using Command = std::vector<std::string>;

    std::filesystem::path home_;
    std::map<std::string, std::optional<std::string>> before_;  // the environment's variables
    std::optional<RunningCommand> bus_;
    std::optional<RunningCommand> keyring_;
};

}  // namespace PrompterCore::Tests

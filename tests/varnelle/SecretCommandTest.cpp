// `varnelle secret` against a real keyring.

#include <csignal>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "tests/platform/PrivateKeyring.h"
#include "tests/platform/StoredSecrets.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using PrompterCore::Tests::itemsInKeyring;
using PrompterCore::Tests::PrivateKeyring;

const std::string service = "com.example.prompter";

CommandResult setSecret(const std::string& value) {
    return runVarnelle({"secret", "set", service}, {.input = value});
}
CommandResult getSecret() { return runVarnelle({"secret", "get", service}); }
CommandResult removeSecret() { return runVarnelle({"secret", "remove", service}); }

// Nothing on standard output, and on standard error this sentence, if any.
void expectSilence(const CommandResult& result, int status, const std::string& sentence = {}) {
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error, sentence.empty() ? "" : "varnelle: " + sentence + "\n");
}

class SecretCommand : public ::testing::Test {
protected:
    SecretCommand() { session.startKeyring("password"); }

    PrivateKeyring session;
};

TEST_F(SecretCommand, PrintsWhatWasSetUntilItIsRemoved) {
    expectSilence(setSecret("  abc d\n"), 0);
    EXPECT_EQ(getSecret().out, "abc d\n");
    EXPECT_EQ(getSecret().status, 0);
    expectSilence(setSecret("\u00E9\nsecond line\r\n"), 0);
    EXPECT_EQ(getSecret().out, "\u00E9\nsecond line\n");
    expectSilence(removeSecret(), 0);
    expectSilence(getSecret(), 1, "no value can be read for com.example.prompter");
    expectSilence(removeSecret(), 0);
}

TEST_F(SecretCommand, ATerminalShowsTheLinesOfAValueAndIsNotSteered) {
    setSecret("first\x1b[2J\n\nlast");
    EXPECT_EQ(getSecret().out, "first\x1b[2J\n\nlast\n");
    EXPECT_EQ(
        runCommand({"script", "-qec", VARNELLE_PROGRAM " secret get " + service, "/dev/null"}).out,
        "first[2J\r\n\r\nlast\r\n");
}

TEST_F(SecretCommand, BlankValueRemoves) {
    setSecret("abc");
    expectSilence(setSecret(" \n"), 0);
    EXPECT_EQ(getSecret().status, 1);
    expectSilence(setSecret(""), 0);
}

TEST_F(SecretCommand, ValueIsNoArgumentAndInNoMessage) {
    const std::vector<std::vector<std::string>> wrong = {
        {"secret", "set", service, "hunter2"},
        {"secret", "set", service, "--value=hunter2"},
        {"secret", "get", service, "hunter2"},
    };
    for (const auto& arguments : wrong) {
        expectSilence(runVarnelle(arguments), 2,
                      "secret takes one SERVICE; the value comes from standard input, never as an "
                      "argument");
    }
    expectSilence(setSecret("hunter2\xFF"), 65,
                  "standard input:1: the text is not UTF-8; save it as UTF-8 and try again");
    EXPECT_EQ(itemsInKeyring(), 0u);
}

TEST_F(SecretCommand, WrongUsageIs2) {
    EXPECT_EQ(runVarnelle({"secret"}).status, 2);
    EXPECT_EQ(runVarnelle({"secret", "show"}).status, 2);
    EXPECT_EQ(runVarnelle({"secret", "get"}).status, 2);
}

TEST_F(SecretCommand, ServiceNameThatIsNoUtf8Is65) {
    expectSilence(runVarnelle({"secret", "get", "caf\xE9"}), 65, "the service name is not UTF-8");
}

TEST_F(SecretCommand, LockedKeyringIs69AndKeepsWhatItHas) {
    setSecret("before");
    session.startKeyring("wrong");
    const std::string why =
        "Could not use the keychain: The keyring is locked; unlock it and try again.";
    expectSilence(setSecret("hunter2"), 69, why);
    expectSilence(removeSecret(), 69, why);
    expectSilence(getSecret(), 1, "no value can be read for com.example.prompter");
    session.startKeyring("password");
    EXPECT_EQ(getSecret().out, "before\n");
}

TEST_F(SecretCommand, ProcessesThatSetAtOnceLeaveOneItem) {
    std::vector<std::unique_ptr<RunningCommand>> writers;
    for (int writer = 0; writer < 6; ++writer) {
        writers.push_back(std::make_unique<RunningCommand>(varnelle({"secret", "set", service})));
    }
    for (std::size_t writer = 0; writer < writers.size(); ++writer) {
        writers[writer]->write("value " + std::to_string(writer));
        writers[writer]->closeInput();
    }
    for (const auto& writer : writers)
        expectSilence(writer->finish(), 0);
    EXPECT_EQ(itemsInKeyring(), 1u);
    EXPECT_EQ(getSecret().out.substr(0, 6), "value ");
}

// A bus that takes connections and says nothing.
class MuteBus {
public:
    explicit MuteBus(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(socket_, 8), 0);
    }
    MuteBus(const MuteBus&) = delete;
    MuteBus& operator=(const MuteBus&) = delete;
    ~MuteBus() { close(socket_); }

private:
    int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST_F(SecretCommand, EndsWithinSecondsWhoeverDoesNotAnswer) {
    setSecret("before");
    const std::string path = session.home() / "mute";
    const MuteBus mute(path);
    session.freezeKeyring();
    RunningCommand frozenGet(varnelle({"secret", "get", service}));
    RunningCommand frozenSet(varnelle({"secret", "set", service}), {.input = "new"});
    frozenSet.closeInput();
    std::vector<std::string> onMuteBus = varnelle({"secret", "remove", service});
    onMuteBus.insert(onMuteBus.begin(), {"env", "DBUS_SESSION_BUS_ADDRESS=unix:path=" + path});
    RunningCommand muteRemove(onMuteBus);

    const CommandResult get = frozenGet.finish();
    const CommandResult set = frozenSet.finish();
    const CommandResult remove = muteRemove.finish();
    const std::string why =
        "Could not use the keychain: No secret service answers on this session's bus.";
    expectSilence(get, 1, "no value can be read for com.example.prompter");
    expectSilence(set, 69, why);
    expectSilence(remove, 69, why);
    for (const CommandResult* result : {&get, &set, &remove})
        EXPECT_LT(result->seconds, 15);
    session.startKeyring("password");
    EXPECT_EQ(getSecret().out, "before\n");
}

// `varnelle secret set` on a terminal of its own, whose settings are shown before and after. The
// shell outlives the interrupt that its terminal sends to both, whichever shell SHELL names.
std::vector<std::string> onTerminal() {
    return {"script", "-qec",
            "trap : INT; stty -a; " VARNELLE_PROGRAM " secret set " + service +
                "; echo status $?; stty -a",
            "/dev/null"};
}

TEST_F(SecretCommand, AsksOnATerminalWithoutShowingTheValue) {
    RunningCommand command(onTerminal());
    ASSERT_TRUE(command.readUntil("Value for com.example.prompter: "));
    command.write("hunter2\n");
    ASSERT_TRUE(command.readUntil("status 0"));
    const std::string shown = command.finish().out;
    EXPECT_EQ(shown.find("hunter2"), std::string::npos);
    EXPECT_NE(shown.find(" echo ", shown.find("status 0")), std::string::npos) << shown;
    EXPECT_EQ(getSecret().out, "hunter2\n");
}

TEST_F(SecretCommand, EndOfInputEndsTheValueAndTheLine) {
    RunningCommand command(onTerminal());
    ASSERT_TRUE(command.readUntil("Value for com.example.prompter: "));
    command.write("hunter2\x04\x04");
    ASSERT_TRUE(command.readUntil("prompter: \r\nstatus 0"));
    command.finish();
    EXPECT_EQ(getSecret().out, "hunter2\n");
}

TEST_F(SecretCommand, ALineThatTheTerminalMayHaveCutIsRefused) {
    RunningCommand command(onTerminal());
    ASSERT_TRUE(command.readUntil("Value for com.example.prompter: "));
    command.write(std::string(5000, 'x') + "\n");
    ASSERT_TRUE(command.readUntil("status 65"));
    EXPECT_NE(command.finish().out.find("a terminal cuts a line after 4095 bytes; send a longer "
                                        "value through a pipe or from a file"),
              std::string::npos);
    EXPECT_EQ(getSecret().status, 1);
}

TEST_F(SecretCommand, InterruptedQuestionLeavesValueAndTerminalAsTheyWere) {
    setSecret("before");
    RunningCommand command(onTerminal());
    ASSERT_TRUE(command.readUntil("Value for com.example.prompter: "));
    command.write("hunt\x03");
    ASSERT_TRUE(command.readUntil("status 130"));
    const std::string shown = command.finish().out;
    EXPECT_EQ(shown.find("hunt"), std::string::npos);
    EXPECT_NE(shown.find(" echo ", shown.find("status 130")), std::string::npos) << shown;
    EXPECT_EQ(getSecret().out, "before\n");
}

}  // namespace
}  // namespace Varnelle::Tests

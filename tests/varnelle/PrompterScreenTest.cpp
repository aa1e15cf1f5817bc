// The full-screen prompter in a real terminal: tmux is the terminal, its keyboard and our eyes.

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include "host/TextFile.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Arguments = std::vector<std::string>;

constexpr std::size_t eyeRow = 7;  // of 24

// A terminal of 80 columns and 24 rows in which a program runs, and then nothing more.
class Terminal {
public:
    // Runs `command`, a line for the shell, and notes its exit status and the terminal's settings.
    explicit Terminal(const std::string& command, const Arguments& environment = {})
        : folder_(::testing::TempDir() + "varnelleXXXXXX") {
        EXPECT_NE(mkdtemp(folder_.data()), nullptr);
        const std::string line = "echo before; stty -g > " + folder_ + "/before; " + command +
                                 "; echo status $?; stty -g > " + folder_ + "/after; echo done; " +
                                 "read never";
        Arguments start{"-f", "/dev/null", "-u", "new-session",   "-d", "-x", "80",
                        "-y", "24",        "-e", "LC_ALL=C.UTF-8"};
        for (const std::string& variable : environment) {
            start.insert(start.end(), {"-e", variable});
        }
        start.insert(start.end(), {"sh", "-c", line});
        const CommandResult started = tmux(start);
        EXPECT_EQ(started.status, 0)
            << "tmux is needed (make setup installs it): " << started.error;
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        tmux({"kill-server"});
        std::filesystem::remove_all(folder_);
    }

    std::string screen() const { return tmux({"capture-pane", "-p"}).out; }
    std::string screenWithLooks() const { return tmux({"capture-pane", "-p", "-e"}).out; }
    std::string row(std::size_t index) const {
        std::istringstream rows(screen());
        std::string text;
        for (std::size_t i = 0; i <= index; ++i)
            std::getline(rows, text);
        return text;
    }
    // As tmux says it: "alternate_on", "cursor_flag".
    std::string property(const std::string& name) const {
        const std::string line = tmux({"display-message", "-p", "#{" + name + "}"}).out;
        return line.substr(0, line.find('\n'));
    }
    void press(const std::string& key) const { tmux({"send-keys", key}); }
    void resize(int columns, int rows) const {
        tmux({"resize-window", "-x", std::to_string(columns), "-y", std::to_string(rows)});
    }

    // Looks again and again, half a minute at most.
    bool comes(const std::function<bool()>& isThere) const {
        for (int look = 0; look < 1000; ++look) {
            if (isThere()) return true;
            poll(nullptr, 0, 30);
        }
        ADD_FAILURE() << "this is on the screen:\n" << screen();
        return false;
    }
    bool shows(const std::string& text) const {
        return comes([&] { return screen().find(text) != std::string::npos; });
    }
    bool showsNoMore(const std::string& text) const {
        return comes([&] { return screen().find(text) == std::string::npos; });
    }

    // The program has ended with that status and left the terminal as it was.
    void expectEnd(int status) const {
        EXPECT_TRUE(shows("done"));
        EXPECT_TRUE(screen().find("status " + std::to_string(status) + "\n") != std::string::npos)
            << screen();
        EXPECT_TRUE(screen().starts_with("before\n")) << screen();
        EXPECT_EQ(property("alternate_on"), "0");
        EXPECT_EQ(property("cursor_flag"), "1");
        EXPECT_EQ(property("mouse_any_flag"), "0");
        EXPECT_EQ(property("keypad_flag"), "0");
        EXPECT_EQ(readFile(folder_ + "/after"), readFile(folder_ + "/before"));
    }

private:
    CommandResult tmux(Arguments arguments) const {
        arguments.insert(arguments.begin(), {"tmux", "-S", folder_ + "/socket"});
        return runCommand(arguments, {.environment = {"LC_ALL=C.UTF-8"}});
    }

    std::string folder_;
};

std::string followSample(const std::string& more) {
    return std::string(VARNELLE_PROGRAM) + " follow " + sampleScript + " --words " + sampleWords +
           " " + more;
}

TEST(PrompterScreen, FollowsPausesMovesAndQuits) {
    const Terminal terminal(followSample("--speed 5"));
    EXPECT_TRUE(terminal.shows("Behind me stands a small white"));
    EXPECT_TRUE(terminal.comes([&] {
        return terminal.row(eyeRow).find("\u25B6\u258E over this bay") != std::string::npos;
    })) << "the second line comes under the eye";
    EXPECT_TRUE(terminal.shows("\u00B7 1/2 The Light"));
    EXPECT_EQ(terminal.property("alternate_on"), "1");

    terminal.press("Space");
    EXPECT_TRUE(terminal.shows(" paused "));
    const std::string paused = terminal.screen();
    terminal.press("End");  // means nothing
    poll(nullptr, 0, 200);  // a second of the sound
    EXPECT_EQ(terminal.screen(), paused);

    terminal.press("Right");
    EXPECT_TRUE(terminal.comes([&] {
        return terminal.row(eyeRow).find("\u25B6\u258E The lamp is electric") != std::string::npos;
    }));
    terminal.press("Down");
    EXPECT_TRUE(terminal.comes([&] {
        return terminal.row(eyeRow).find("\u25B6\u258E Still, the last") != std::string::npos;
    }));
    terminal.press("Up");
    EXPECT_TRUE(terminal.comes([&] {
        return terminal.row(eyeRow).find("\u25B6\u258E The lamp is electric") != std::string::npos;
    }));
    EXPECT_TRUE(terminal.shows(" paused ")) << "a move does not end a pause";

    terminal.resize(40, 12);
    EXPECT_TRUE(terminal.comes([&] {
        return terminal.row(3).find("\u25B6\u258E The lamp is electric") != std::string::npos;
    })) << "a smaller terminal keeps the place";

    terminal.press("Space");
    EXPECT_TRUE(terminal.showsNoMore(" paused "));
    terminal.press("q");
    terminal.expectEnd(0);
}

TEST(PrompterScreen, ControlCIsAnInterrupt) {
    const Terminal terminal(followSample("--speed 5"));
    EXPECT_TRUE(terminal.shows("\u25B6"));
    terminal.press("C-c");
    terminal.expectEnd(130);
}

TEST(PrompterScreen, EndsWithTheWords) {
    const Terminal terminal(followSample("--fast"));
    terminal.expectEnd(0);
}

TEST(PrompterScreen, KeysWorkWhileWordsArePipedIn) {
    const Terminal terminal("cat " + sampleWords + " | " + VARNELLE_PROGRAM + " follow " +
                            sampleScript + " --words -");
    EXPECT_TRUE(terminal.shows("\u25B6"));
    terminal.press("q");
    terminal.expectEnd(0);
}

TEST(PrompterScreen, WhatIsWrongWithTheWordsIsSaidWhenItIsGone) {
    const Terminal terminal("echo nonsense | " + (VARNELLE_PROGRAM + (" follow " + sampleScript)) +
                            " --words - --format jsonl");
    terminal.expectEnd(65);
    EXPECT_NE(terminal.screen().find("varnelle: standard input:1: the line is no JSON\n"
                                     "varnelle: standard input: 1 broken line was passed over\n"),
              std::string::npos)
        << terminal.screen();
}

TEST(PrompterScreen, NoColorLeavesTheColoursOut) {
    const auto isRed = [](const Terminal& terminal) {
        EXPECT_TRUE(terminal.shows("\u25B6"));
        const std::string looks = terminal.screenWithLooks();
        return looks.find("\x1B[31m") != std::string::npos ||
               looks.find(";31m") != std::string::npos;
    };
    EXPECT_TRUE(isRed(Terminal(followSample(""))));
    EXPECT_FALSE(isRed(Terminal(followSample(""), {"NO_COLOR=1"})));
}

TEST(PrompterScreen, AnUnknownTerminalIsRefused) {
    const Terminal terminal("TERM=no-such-terminal " + followSample(""));
    terminal.expectEnd(69);
    EXPECT_NE(terminal.screen().find("\"no-such-terminal\" (TERM) is unknown here"),
              std::string::npos)
        << terminal.screen();
}

TEST(PrompterScreen, OfASessionSaysWhatSpaceDoesAndShowsThePanel) {
    const TemporaryFolder folder;
    const Terminal terminal(std::string(VARNELLE_PROGRAM) + " take " + sampleScript + " --audio " +
                            sampleSound + " --to " + folder.path().string() +
                            " --speed 1 --countdown 600 --panel");
    EXPECT_TRUE(terminal.shows("space record"));
    EXPECT_TRUE(terminal.shows("\u25CF Ready"));
    EXPECT_TRUE(terminal.shows("\u2591\u2591\u2591\u2591\u2591\u2591\u2591\u2591\u2591\u2591"))
        << "the panel's progress";
    terminal.press("Space");
    EXPECT_TRUE(terminal.shows("space call off"));
    EXPECT_TRUE(terminal.shows("\u25CF Recording in "));
    terminal.press("Space");
    EXPECT_TRUE(terminal.shows("space record"));
    terminal.press("q");
    terminal.expectEnd(0);
}

}  // namespace
}  // namespace Varnelle::Tests

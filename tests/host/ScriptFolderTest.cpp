// What `varnelle library` does not show of a folder of scripts.

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "host/Failures.h"
#include "host/ScriptFolder.h"
#include "host/WriteFile.h"
#include "tests/host/TemporaryFolder.h"

namespace Varnelle {
namespace {

using Names = std::vector<std::string>;
using Tests::TemporaryFolder;

TEST(ScriptFolder, AnInterruptedCopyLeavesNothing) {
    const TemporaryFolder folder;
    create_directory(folder.path() / "Talks");
    writeFile(folder.path() / "Talks/Keynote.txt", "text");
    const auto interrupted = [&] {
        sigset_t interrupts;
        sigemptyset(&interrupts);
        sigaddset(&interrupts, SIGINT);
        sigprocmask(SIG_BLOCK, &interrupts, nullptr);
        std::raise(SIGINT);
        const ScriptFolder scripts = ScriptFolder::read(folder.path());
        try {
            static_cast<void>(duplicate(folder.path(), scripts, scripts.items[0]));
        } catch (const CannotWrite&) {
            std::_Exit(folder.names() == Names{"Talks"} ? 0 : 1);
        }
        std::_Exit(2);
    };
    EXPECT_EXIT(interrupted(), ::testing::ExitedWithCode(0), "");
}

TEST(ScriptFolder, WhatAKilledCopyLeftIsInNobodysWay) {
    const TemporaryFolder folder;
    create_directory(folder.path() / "Talks");
    const std::string left = ".varnelle-copy-" + std::to_string(getpid()) + "-0";
    create_directory(folder.path() / left);
    writeFile(folder.path() / left / "old.txt", "old");
    const ScriptFolder scripts = ScriptFolder::read(folder.path());
    EXPECT_EQ(duplicate(folder.path(), scripts, scripts.items[0]), folder.path() / "Talks copy");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "Talks copy"));
    EXPECT_EQ(folder.names(), (Names{left, "Talks", "Talks copy"}));
}

}  // namespace
}  // namespace Varnelle

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>

#include "host/HeldSignals.h"

namespace Varnelle {
namespace {

TEST(HeldSignals, EndTheProgramOnlyBehindWhatIsHeld) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto raised = [signal] {
            std::signal(signal, SIG_DFL);
            {
                const HeldSignals signals;
                if (signals.arePending()) std::_Exit(1);
                std::raise(signal);
                if (!signals.arePending()) std::_Exit(2);
                std::fputs("whole", stderr);
            }
            std::_Exit(3);
        };
        EXPECT_EXIT(raised(), ::testing::KilledBySignal(signal), "whole");
    }
}

TEST(HeldSignals, WhatIsIgnoredStaysIgnored) {
    const auto raised = [] {
        std::signal(SIGHUP, SIG_IGN);
        {
            const HeldSignals signals;
            std::raise(SIGHUP);
            if (signals.arePending()) std::_Exit(1);
        }
        std::_Exit(0);
    };
    EXPECT_EXIT(raised(), ::testing::ExitedWithCode(0), "");
}

TEST(HeldSignals, HoldWithinOneAnother) {
    const auto raised = [] {
        std::signal(SIGINT, SIG_DFL);
        {
            const HeldSignals outer;
            {
                const HeldSignals inner;
                std::raise(SIGINT);
            }
            std::fputs("held", stderr);
        }
        std::_Exit(0);
    };
    EXPECT_EXIT(raised(), ::testing::KilledBySignal(SIGINT), "held");
}

}  // namespace
}  // namespace Varnelle

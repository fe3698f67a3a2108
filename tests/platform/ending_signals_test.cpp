// How a program meets the signals that end it.
#include "platform/ending_signals.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

namespace zorvel {
namespace {

constexpr int kWentOn = 7;

void Raise(int first, int second) {
    OnEndingSignal([] {});
    std::raise(first);
    std::raise(second);
    std::_Exit(kWentOn);
}

TEST(EndingSignals, TheSecondOfAnyKindEndsTheProgramAtOnce) {
    const int signals[] = {SIGINT, SIGTERM, SIGHUP};
    for (const int first : signals) {
        for (const int second : signals)
            EXPECT_EXIT(Raise(first, second), testing::KilledBySignal(second), "") << first;
    }
}

TEST(EndingSignals, AProgramThatOutlivesItsTerminalGoesOn) {
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_IGN);
            Raise(SIGHUP, SIGHUP);
        },
        testing::ExitedWithCode(kWentOn), "");
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_IGN);
            Raise(SIGTERM, SIGHUP);
        },
        testing::ExitedWithCode(kWentOn), "");
}

}  // namespace
}  // namespace zorvel

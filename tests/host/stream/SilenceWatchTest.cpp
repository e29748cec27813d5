// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/SilenceWatch.h"

#include <gtest/gtest.h>

namespace
{
using namespace std::chrono_literals;
using host::SilenceWatch;

constexpr auto kStep = 250ms;
constexpr double kPlannedSeconds = 10.0;

/// Seconds of the run until it is given up, 0 if it is not within a minute. isHeard: whether
/// something comes at that time.
double givenUpAt(bool (*isHeard)(double seconds))
{
    const SilenceWatch::Clock::time_point begin;
    SilenceWatch watch(kPlannedSeconds);
    watch.begin(begin);
    std::uint64_t samples = 0;
    for (auto time = kStep; time <= 60s; time += kStep) {
        const double seconds = std::chrono::duration<double>(time).count();
        samples += isHeard(seconds);
        if (watch.look(samples, begin + time))
            return seconds;
    }
    return 0.0;
}

TEST(SilenceWatchTest, GivesUpWhenTheRunIsOverdueAndNothingComes)
{
    EXPECT_EQ(givenUpAt([](double) { return false; }), 15.0);
    EXPECT_EQ(givenUpAt([](double seconds) { return seconds <= 2.0; }), 15.0);
    EXPECT_EQ(givenUpAt([](double seconds) { return seconds <= 12.0; }), 17.0);
    // Slow, or with gaps: it gets there.
    EXPECT_EQ(givenUpAt([](double) { return true; }), 0.0);
    EXPECT_EQ(givenUpAt([](double seconds) { return int(seconds) % 4 == 0; }), 0.0);
}

TEST(SilenceWatchTest, AProgramThatWasHeldUpHasNotListenedMeanwhile)
{
    const SilenceWatch::Clock::time_point begin;
    SilenceWatch watch(kPlannedSeconds);
    watch.begin(begin);
    EXPECT_FALSE(watch.look(1, begin + kStep));
    for (int i = 1; i <= 5; ++i)
        EXPECT_FALSE(watch.look(1, begin + i * 10min));
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/Waiter.h"

#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

namespace
{
TEST(WaiterTest, WaitsAndGoesOnDeliveringEvents)
{
    constexpr int kMilliseconds = 60;
    constexpr int kCoarse = kMilliseconds / 20; // Qt's ordinary timers may be 5 % early
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(5);
    QElapsedTimer clock;
    clock.start();
    Waiter::wait(kMilliseconds);
    EXPECT_GE(clock.elapsed(), kMilliseconds - kCoarse);
    EXPECT_GE(ticks, 1);
}
} // namespace

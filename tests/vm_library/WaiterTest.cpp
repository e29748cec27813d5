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
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(5);
    QElapsedTimer clock;
    clock.start();
    Waiter::wait(kMilliseconds);
    EXPECT_GE(clock.elapsed(), kMilliseconds - 1);
    EXPECT_GE(ticks, 1);
}
} // namespace

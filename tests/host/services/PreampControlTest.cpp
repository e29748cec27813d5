// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostManager.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
} // namespace

TEST(PreampControlTest, TheDeviceHearsEachChangeOnceWithinTheLimits)
{
    const struct
    {
        const char *what;
        float startDb;
        std::vector<int> deltas;
        std::vector<float> told; // levels that reach the device, in order
    } cases[] = {
        {"an overflow attenuates", 0.0f, {-4, -2}, {-4.0f, -6.0f}},
        {"a weak band amplifies", -10.0f, {4, 7}, {-6.0f, 1.0f}},
        {"stops at the high limit", 4.5f, {4, 4}, {6.0f}},
        {"comes back from the low limit", -31.0f, {-2, -2, 30}, {-31.5f, -1.5f}},
        {"rounds the start to a step", 1.3f, {-2}, {-0.5f}},
        {"no number is no level", kNan, {-2}, {-2.0f}},
    };
    for (const auto &c : cases) {
        host::HostManager manager(nullptr, {});
        manager.preamp().setDb(c.startDb);
        std::vector<float> told;
        QObject::connect(&manager, &DeviceManagerAbstract::preampValueChanged,
            [&](float db) { told.push_back(db); });
        for (const int delta : c.deltas)
            Q_EMIT manager.deltaAtt(delta);
        EXPECT_EQ(told, c.told) << c.what;
        ASSERT_EQ(manager.preamp().steps().size(), c.deltas.size()); // the log of all requests
        EXPECT_EQ(manager.preamp().steps().back().deltaDb, c.deltas.back());
        EXPECT_EQ(manager.preamp().steps().back().toDb, c.told.back());
    }
    host::PreampControl preamp({});
    for (std::size_t i = 0; i <= host::PreampControl::kMaxSteps; ++i)
        preamp.applyDelta(3);
    EXPECT_EQ(preamp.steps().size(), host::PreampControl::kMaxSteps);
}

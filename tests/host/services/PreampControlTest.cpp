// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostManager.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

struct Case
{
    const char *name;
    float startDb;
    std::vector<int> deltas;
    std::vector<float> told; // levels that reach the device, in order
};

class PreampLoopTest : public testing::TestWithParam<Case>
{ };
} // namespace

TEST_P(PreampLoopTest, TheDeviceHearsEachChangeOnce)
{
    host::HostManager manager(nullptr, {});
    manager.preamp().setDb(GetParam().startDb);
    std::vector<float> told;
    QObject::connect(&manager, &DeviceManagerAbstract::preampValueChanged,
        [&](float db) { told.push_back(db); });
    for (const int delta : GetParam().deltas)
        Q_EMIT manager.deltaAtt(delta);

    EXPECT_EQ(told, GetParam().told);
    EXPECT_EQ(manager.preamp().steps().size(), GetParam().deltas.size());
}

INSTANTIATE_TEST_SUITE_P(, PreampLoopTest,
    testing::Values( //
        Case{"OverflowAttenuates", 0.0f, {-4, -2}, {-4.0f, -6.0f}},
        Case{"WeakBandAmplifies", -10.0f, {4, 7}, {-6.0f, 1.0f}},
        Case{"StopsAtTheLowLimit", -30.0f, {-4, -4}, {-31.5f}},
        Case{"StopsAtTheHighLimit", 4.5f, {4, 4}, {6.0f}},
        Case{"ComesBackFromALimit", -31.0f, {-2, 30}, {-31.5f, -1.5f}},
        Case{"RoundsTheStartToAStep", 1.3f, {-2}, {-0.5f}},
        Case{"TakesNoStepOfZero", 0.0f, {0}, {}}, Case{"NoNumberIsNoLevel", kNan, {-2}, {-2.0f}}),
    [](const auto &info) { return info.param.name; });

TEST(PreampControlTest, LogTellsWhatEachRequestCameTo)
{
    host::PreampControl preamp({});
    preamp.setDb(-30.0f);
    preamp.applyDelta(-4);
    preamp.applyDelta(-2);
    ASSERT_EQ(preamp.steps().size(), 2u);
    const auto &[first, second] = std::pair(preamp.steps()[0], preamp.steps()[1]);
    EXPECT_EQ(first.fromDb, -30.0f);
    EXPECT_EQ(first.toDb, -31.5f);
    EXPECT_EQ(second.deltaDb, -2);
    EXPECT_EQ(second.toDb, second.fromDb);
    EXPECT_LE(first.seconds, second.seconds);
    for (std::size_t i = 0; i < host::PreampControl::kMaxSteps; ++i)
        preamp.applyDelta(3);
    EXPECT_EQ(preamp.steps().size(), host::PreampControl::kMaxSteps);
    EXPECT_EQ(preamp.steps().front().deltaDb, 3);
}

TEST(HostManagerTest, GetsTheDevicesAnswersAndCountsItsOverflows)
{
    host::HostManager manager(nullptr, {});
    EXPECT_FALSE(manager.isDeviceAvailable());
    bool isPluggedIn = true;
    QObject::connect(
        &manager, &DeviceManagerAbstract::sDeviceAvalible, &manager, [&] { return isPluggedIn; },
        Qt::DirectConnection);
    EXPECT_TRUE(manager.isDeviceAvailable());
    isPluggedIn = false;
    EXPECT_FALSE(manager.isDeviceAvailable());

    Q_EMIT manager.adcOverflow();
    Q_EMIT manager.adcOverflow();
    EXPECT_EQ(manager.preamp().overflows(), 2u);

    auto menu = std::make_unique<QMenu>();
    manager.setDeviceMenu(menu.get());
    EXPECT_EQ(manager.deviceMenu(), menu.get());
    menu.reset();
    EXPECT_EQ(manager.deviceMenu(), nullptr);
}

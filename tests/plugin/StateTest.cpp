// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace
{
using test::PluginRig;

enum class State {
    Ready,
    Opened,
    Started,
};

struct Row
{
    const char *name;
    State from;
    std::function<void(DeviceAbstract &)> call;
    State to;
    bool isPlugged = true;
};

constexpr auto kOpen = &DeviceAbstract::open;
constexpr auto kStart = &DeviceAbstract::start;
constexpr auto kStop = &DeviceAbstract::stop;
constexpr auto kClose = &DeviceAbstract::close;
constexpr auto kDeinit = &DeviceAbstract::deinit;
constexpr auto kChangeRate = [](DeviceAbstract &device) {
    QMetaObject::invokeMethod(&device, "onSampleRate", Q_ARG(int, 4));
};

const Row kRows[] = {
    {"OpenReady", State::Ready, kOpen, State::Opened},
    {"OpenReadyWithoutDevice", State::Ready, kOpen, State::Ready, false},
    {"StartReady", State::Ready, kStart, State::Started},
    {"StartOpened", State::Opened, kStart, State::Started},
    {"StartStarted", State::Started, kStart, State::Started},
    {"StopStarted", State::Started, kStop, State::Opened},
    {"StopReady", State::Ready, kStop, State::Opened},
    {"CloseStarted", State::Started, kClose, State::Ready},
    {"ChangeRateStarted", State::Started, kChangeRate, State::Started},
    {"DeinitStarted", State::Started, kDeinit, State::Ready},
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

State state(PluginRig &rig)
{
    if (rig.device().isStart())
        return State::Started;
    return rig.device().isOpen() ? State::Opened : State::Ready;
}

class DeviceState : public testing::TestWithParam<Row>
{ };

TEST_P(DeviceState, FollowsTheCall)
{
    const Row &row = GetParam();
    PluginRig rig;
    rig.prepare();
    EXPECT_TRUE(row.from != State::Opened || rig.device().open());
    EXPECT_TRUE(row.from != State::Started || rig.device().start());
    if (!row.isPlugged)
        vr_set_plugged(0);
    ASSERT_EQ(state(rig), row.from);
    row.call(rig.device());
    EXPECT_EQ(state(rig), row.to);
    EXPECT_EQ(rig.receiver().open, row.to != State::Ready);
    EXPECT_EQ(rig.receiver().streaming, row.to == State::Started);
    const auto before = rig.receiver().samples_sent;
    PluginRig::wait(50);
    EXPECT_EQ(rig.receiver().samples_sent > before, row.to == State::Started);
}

INSTANTIATE_TEST_SUITE_P(AllRows, DeviceState, testing::ValuesIn(kRows),
    [](const auto &info) { return info.param.name; });

TEST(DeviceLifeTest, ADeviceThatIsPulledOutStopsAndStartsAgainWhenItIsBack)
{
    // The watchdog looks once a second and gives up when a whole period brought nothing.
    constexpr int kTwoPeriodsMs = 2000;
    constexpr int kSlackMs = 300;
    const QTemporaryDir recordings;
    PluginRig rig;
    rig.bridge().setRecordingPath(recordings.path());
    rig.start();
    QSignalSpy closed(&rig.device(), SIGNAL(devClosed()));
    QSignalSpy recording(&rig.device(), SIGNAL(sWriteIQ(bool, int)));
    PluginRig::wait(300);
    const int running = test::threadCount();
    rig.device().writeIQ(true, 0);
    vr_set_plugged(0);
    ASSERT_TRUE(PluginRig::waitFor([&] { return !closed.empty(); }, kTwoPeriodsMs + kSlackMs));
    EXPECT_EQ(state(rig), State::Opened);
    EXPECT_TRUE(PluginRig::waitFor(
        [&] { return test::threadCount() == running - 2; }, 500)); // engine and reader
    PluginRig::wait(50);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(recording, (QList<QVariantList>{{true, 0}, {false, 0}}));

    rig.device().close();
    EXPECT_FALSE(rig.device().open() || rig.device().start());
    vr_set_plugged(1);
    ASSERT_TRUE(PluginRig::waitFor([&] { return rig.device().start(); }, 3000));
    const auto before = rig.receiver().samples_sent;
    EXPECT_TRUE(
        PluginRig::waitFor([&] { return rig.receiver().samples_sent > before + 10000; }, 1000));
}
} // namespace

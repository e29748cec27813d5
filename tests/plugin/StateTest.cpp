// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

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
    bool (*call)(DeviceAbstract &);
    State to;
    bool answer = true; // of open() and start()
    bool isPlugged = true;
};

bool open(DeviceAbstract &device)
{
    return device.open();
}
bool start(DeviceAbstract &device)
{
    return device.start();
}
bool stop(DeviceAbstract &device)
{
    device.stop();
    return true;
}
bool close(DeviceAbstract &device)
{
    device.close();
    return true;
}
bool deinit(DeviceAbstract &device)
{
    device.deinit();
    return true;
}
bool changeRate(DeviceAbstract &device)
{
    return QMetaObject::invokeMethod(&device, "onSampleRate", Q_ARG(int, 4));
}

const Row kRows[] = {
    {"OpenReady", State::Ready, open, State::Opened},
    {"OpenReadyWithoutDevice", State::Ready, open, State::Ready, false, false},
    {"OpenStarted", State::Started, open, State::Started},
    {"StartReady", State::Ready, start, State::Started},
    {"StartReadyWithoutDevice", State::Ready, start, State::Ready, false, false},
    {"StartOpened", State::Opened, start, State::Started},
    {"StartStarted", State::Started, start, State::Started},
    {"StopStarted", State::Started, stop, State::Opened},
    {"StopReady", State::Ready, stop, State::Opened},
    {"StopReadyWithoutDevice", State::Ready, stop, State::Ready, true, false},
    {"CloseStarted", State::Started, close, State::Ready},
    {"CloseOpened", State::Opened, close, State::Ready},
    {"CloseReady", State::Ready, close, State::Ready},
    {"ChangeRateStarted", State::Started, changeRate, State::Started},
    {"ChangeRateOpened", State::Opened, changeRate, State::Opened},
    {"DeinitStarted", State::Started, deinit, State::Ready},
    {"DeinitOpened", State::Opened, deinit, State::Ready},
    {"DeinitReady", State::Ready, deinit, State::Ready},
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
    EXPECT_EQ(row.call(rig.device()), row.answer);
    EXPECT_EQ(state(rig), row.to);
    EXPECT_EQ(rig.receiver().open, row.to != State::Ready);
    EXPECT_EQ(rig.receiver().streaming, row.to == State::Started);
    const auto before = rig.receiver().samples_sent;
    PluginRig::wait(50);
    EXPECT_EQ(rig.receiver().samples_sent > before, row.to == State::Started);
}

INSTANTIATE_TEST_SUITE_P(AllRows, DeviceState, testing::ValuesIn(kRows),
    [](const auto &info) { return info.param.name; });

TEST(DeviceLifeTest, AStartedDeviceTakesItsGainAgain)
{
    PluginRig rig;
    rig.start();
    PluginRig::wait(200); // past the second setting of the gain
    const auto before = rig.receiver().commands;
    ASSERT_TRUE(rig.device().start());
    EXPECT_GT(rig.receiver().commands, before);
}

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
    EXPECT_FALSE(rig.device().start());
    vr_set_plugged(1);
    ASSERT_TRUE(PluginRig::waitFor([&] { return rig.device().start(); }, 3000));
    const auto before = rig.receiver().samples_sent;
    EXPECT_TRUE(
        PluginRig::waitFor([&] { return rig.receiver().samples_sent > before + 10000; }, 1000));
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include <QSignalSpy>
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

enum class Event {
    Open,
    Start,
    Stop,
    Close,
    ChangeRate,
    Deinit,
};

struct Row
{
    const char *name;
    State from;
    Event event;
    bool isPlugged;
    State to;
    bool answer; // of open() and start()
};

const Row kRows[] = {
    {"OpenReady", State::Ready, Event::Open, true, State::Opened, true},
    {"OpenReadyWithoutDevice", State::Ready, Event::Open, false, State::Ready, false},
    {"OpenOpened", State::Opened, Event::Open, true, State::Opened, true},
    {"OpenStarted", State::Started, Event::Open, true, State::Started, true},
    {"StartReady", State::Ready, Event::Start, true, State::Started, true},
    {"StartReadyWithoutDevice", State::Ready, Event::Start, false, State::Ready, false},
    {"StartOpened", State::Opened, Event::Start, true, State::Started, true},
    {"StartStarted", State::Started, Event::Start, true, State::Started, true},
    {"StopStarted", State::Started, Event::Stop, true, State::Opened, true},
    {"StopReady", State::Ready, Event::Stop, true, State::Opened, true},
    {"StopReadyWithoutDevice", State::Ready, Event::Stop, false, State::Ready, true},
    {"StopOpened", State::Opened, Event::Stop, true, State::Opened, true},
    {"CloseStarted", State::Started, Event::Close, true, State::Ready, true},
    {"CloseOpened", State::Opened, Event::Close, true, State::Ready, true},
    {"CloseReady", State::Ready, Event::Close, true, State::Ready, true},
    {"ChangeRateStarted", State::Started, Event::ChangeRate, true, State::Started, true},
    {"ChangeRateOpened", State::Opened, Event::ChangeRate, true, State::Opened, true},
    {"DeinitStarted", State::Started, Event::Deinit, true, State::Ready, true},
    {"DeinitOpened", State::Opened, Event::Deinit, true, State::Ready, true},
    {"DeinitReady", State::Ready, Event::Deinit, true, State::Ready, true},
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
{
protected:
    DeviceState()
    {
        m_rig.prepare();
        EXPECT_TRUE(m_rig.waitForReceiver());
        if (GetParam().from == State::Opened) {
            EXPECT_TRUE(m_rig.device().open());
        }
        if (GetParam().from == State::Started) {
            EXPECT_TRUE(m_rig.device().start());
        }
        if (!GetParam().isPlugged)
            vr_set_plugged(0);
    }

    bool raise(Event event)
    {
        switch (event) {
        case Event::Open:
            return m_rig.device().open();
        case Event::Start:
            return m_rig.device().start();
        case Event::Stop:
            m_rig.device().stop();
            return true;
        case Event::Close:
            m_rig.device().close();
            return true;
        case Event::ChangeRate:
            m_rig.readSettings({{"SampleRate", 4}});
            return true;
        case Event::Deinit:
            m_rig.device().deinit();
            return true;
        }
        return false;
    }

    PluginRig m_rig;
};

TEST_P(DeviceState, FollowsTheCall)
{
    const Row &row = GetParam();
    ASSERT_EQ(state(m_rig), row.from);
    EXPECT_EQ(raise(row.event), row.answer);
    EXPECT_EQ(state(m_rig), row.to);
    EXPECT_EQ(m_rig.receiver().open, row.to != State::Ready);
    EXPECT_EQ(m_rig.receiver().streaming, row.to == State::Started);
    const auto before = m_rig.receiver().samples_sent;
    PluginRig::wait(50);
    EXPECT_EQ(m_rig.receiver().samples_sent > before, row.to == State::Started);
}

INSTANTIATE_TEST_SUITE_P(AllRows, DeviceState, testing::ValuesIn(kRows),
    [](const auto &info) { return info.param.name; });

TEST(DeviceLifeTest, AStartedDeviceTakesItsGainAgain)
{
    PluginRig rig;
    rig.prepare();
    ASSERT_TRUE(rig.waitForReceiver());
    ASSERT_TRUE(rig.device().start());
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
    PluginRig rig;
    rig.prepare();
    ASSERT_TRUE(rig.waitForReceiver());
    QSignalSpy closed(&rig.device(), SIGNAL(devClosed()));
    ASSERT_TRUE(rig.device().start());
    PluginRig::wait(300);
    const int running = test::threadCount();
    vr_set_plugged(0);
    ASSERT_TRUE(PluginRig::waitFor([&] { return !closed.empty(); }, kTwoPeriodsMs + kSlackMs));
    EXPECT_EQ(state(rig), State::Opened);
    EXPECT_TRUE(PluginRig::waitFor(
        [&] { return test::threadCount() == running - 2; }, 500)); // engine and reader
    PluginRig::wait(50);
    EXPECT_EQ(closed.size(), 1);

    rig.device().close();
    EXPECT_FALSE(rig.device().start());
    vr_set_plugged(1);
    ASSERT_TRUE(PluginRig::waitFor([&] { return rig.device().start(); }, 3000));
    const auto before = rig.receiver().samples_sent;
    EXPECT_TRUE(
        PluginRig::waitFor([&] { return rig.receiver().samples_sent > before + 10000; }, 1000));
}
} // namespace

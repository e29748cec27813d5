// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/AutoPreamp.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTimer>
#include <gtest/gtest.h>
#include <vector>

namespace
{
constexpr int kPeriod = 21; // ticks with data
constexpr unsigned short kOverflow = 0x8000;
constexpr unsigned short kLoud = 0x3fff; // 0 dBFS: no cause to raise the gain

// The one instance, its ticks driven by hand.
class AutoPreampTest : public testing::Test
{
protected:
    AutoPreampTest()
    {
        tick(); // takes what another test may have left
        preamp.start();
        preamp.stop();
        preamp.setAuto(true);
        QObject::connect(
            &preamp, &AutoPreamp::deltaAtt, &context, [this](int dB) { steps.push_back(dB); });
        QObject::connect(&preamp, &AutoPreamp::adcOverflow, &context, [this] { ++overflows; });
    }

    void tick() { QMetaObject::invokeMethod(&preamp, "onUpdate", Qt::DirectConnection); }

    void tick(unsigned short value)
    {
        preamp.setAdcValue(value);
        tick();
    }

    void periods(int count, unsigned short value)
    {
        for (int i = 0; i < count * kPeriod; ++i)
            tick(value);
    }

    AutoPreamp &preamp = *AutoPreamp::instance();
    QObject context;
    std::vector<int> steps;
    int overflows = 0;
};

using Steps = std::vector<int>;

TEST_F(AutoPreampTest, OverflowLowersTheGainAtTheEndOfThePeriod)
{
    for (const auto &[count, steps] :
        {std::pair{0, Steps{}}, {1, Steps{-2}}, {7, Steps{-2}}, {8, Steps{-4}}, {21, Steps{-4}}}) {
        this->steps.clear();
        overflows = 0;
        for (int i = 0; i < kPeriod - 1; ++i)
            tick(i < count - 1 ? kOverflow | 1 : kLoud);
        EXPECT_TRUE(this->steps.empty()) << count;
        tick(count > 0 ? kOverflow : kLoud);
        EXPECT_EQ(this->steps, steps) << count;
        EXPECT_EQ(overflows, count);
    }
}

// 16383 * 10^(-13/20) = 3667.8: one code above, -13 dBFS is passed and 3 dB are too few.
TEST_F(AutoPreampTest, QuietTimeRaisesTheGainByWhatIsMissingToMinus10)
{
    for (const auto &[value, steps] : {std::pair{3667, Steps{4}}, {3668, Steps{}}, {3463, Steps{4}},
             {3268, Steps{5}}, {1, Steps{75}}, {0x3fff, Steps{}}, {0x4000 | 3667, Steps{4}}}) {
        this->steps.clear();
        periods(15, static_cast<unsigned short>(value));
        for (int i = 1; i < kPeriod; ++i)
            tick(1);
        EXPECT_TRUE(this->steps.empty()) << value;
        tick(1);
        EXPECT_EQ(this->steps, steps) << value; // of all periods the highest level counts
    }
}

TEST_F(AutoPreampTest, OverflowStartsTheQuietTimeAnew)
{
    periods(15, 100);
    tick(kOverflow);
    for (int i = 1; i < kPeriod; ++i)
        tick(100);
    EXPECT_EQ(steps, Steps{-2});
    periods(15, 1000);
    EXPECT_EQ(steps, Steps{-2});
    periods(1, 1000); // ceil(-10 - 20 log10(1000 / 16383)) = ceil(14.29)
    EXPECT_EQ(steps, (Steps{-2, 15}));
}

TEST_F(AutoPreampTest, OverflowWithoutMagnitudeLeavesTheHighestLevel)
{
    preamp.setAuto(false);
    tick(kOverflow);
    EXPECT_EQ(overflows, 1);
    preamp.setAuto(true); // no overflow counted from here on
    periods(16, 1000);
    EXPECT_EQ(steps, Steps{15});
}

TEST_F(AutoPreampTest, SwitchedOffItReportsOverflowAndNothingElse)
{
    preamp.setAuto(false);
    periods(20, kOverflow);
    EXPECT_EQ(overflows, 20 * kPeriod);
    EXPECT_TRUE(steps.empty());
    preamp.setAuto(true);
    periods(1, kLoud);
    EXPECT_TRUE(steps.empty()); // what was counted while off is forgotten
}

TEST_F(AutoPreampTest, SwitchingKeepsThePeriodInProgress)
{
    for (int i = 0; i < 20; ++i)
        tick(kLoud);
    preamp.setAuto(true);
    tick(kOverflow);
    EXPECT_EQ(steps, Steps{-2});
}

TEST_F(AutoPreampTest, LargestPeakOfATickWinsAndTicksWithoutOneCountForNothing)
{
    periods(15, 1000);
    for (int i = 0; i < 1000; ++i)
        tick();
    EXPECT_TRUE(steps.empty());
    preamp.setAdcValue(3463); // -13.5 dBFS
    preamp.setAdcValue(5);
    tick();
    for (int i = 1; i < kPeriod; ++i)
        tick(1000);
    EXPECT_EQ(steps, Steps{4});
}

TEST_F(AutoPreampTest, TicksEvery100MillisecondsBetweenStartAndStop)
{
    QElapsedTimer clock;
    QEventLoop loop;
    QTimer feed;
    qint64 stopped = 0;
    QObject::connect(&feed, &QTimer::timeout, &context, [&] {
        preamp.setAdcValue(kOverflow);
        if (overflows == 4 && stopped == 0) {
            stopped = clock.elapsed();
            preamp.stop();
            QTimer::singleShot(250, &loop, &QEventLoop::quit);
        }
    });
    clock.start();
    preamp.start();
    feed.start(5);
    loop.exec();
    EXPECT_EQ(overflows, 4);
    EXPECT_GE(stopped, 4 * 95); // coarse timers run up to 5 % early
    tick();                     // takes the last value
}

TEST(ValueTimeoutTest, TellsTheLatestValueOnceAPeriod)
{
    constexpr double kEarly = 0.95; // coarse timers run up to 5 % early
    for (const auto &[asked, period] : {std::pair{0u, 10}, {200u, 200}, {4000000000u, 1000}}) {
        ValueTimeout timeout;
        QSignalSpy told(&timeout, &ValueTimeout::valueChanged);
        timeout.setValue(1);
        timeout.setValue(2);
        QElapsedTimer clock;
        clock.start();
        timeout.setTimeout(asked);
        ASSERT_TRUE(told.wait(2000)) << asked;
        EXPECT_GE(clock.elapsed(), int(kEarly * period));
        timeout.setValue(2);
        EXPECT_FALSE(told.wait(50 + period * 5 / 4)) << asked;
        timeout.setValue(3);
        EXPECT_TRUE(told.wait(50 + period * 5 / 4)) << asked;
        EXPECT_EQ(told, (QList<QVariantList>{{2}, {3}}));
    }
}
} // namespace

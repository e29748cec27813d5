// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/AutoPreamp.h"

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
        restart();
        QObject::connect(
            &preamp, &AutoPreamp::deltaAtt, &context, [this](int dB) { steps.push_back(dB); });
        QObject::connect(&preamp, &AutoPreamp::adcOverflow, &context, [this] { ++overflows; });
    }

    /// With so many peaks since the last one.
    void tick(std::initializer_list<int> peaks = {})
    {
        for (const int peak : peaks)
            preamp.setAdcValue(static_cast<unsigned short>(peak));
        QMetaObject::invokeMethod(&preamp, "onUpdate", Qt::DirectConnection);
    }

    void restart()
    {
        preamp.start();
        preamp.stop();
        preamp.setAuto(true);
        steps.clear();
        overflows = 0;
    }

    AutoPreamp &preamp = *AutoPreamp::instance();
    QObject context;
    std::vector<int> steps;
    int overflows = 0;
};

using Steps = std::vector<int>;

// What happens in turn: so many ticks with a peak, or without one, and the switch.
struct Part
{
    int ticks; // 0: `value` is the switch
    int value; // kNothing: a tick without data
};
constexpr int kNothing = -1;
constexpr Part kOff{0, false}, kOn{0, true};

struct Course
{
    const char *name;
    std::vector<Part> parts;
    Steps steps;
    int overflows;
};

// 16383 * 10^(-13/20) = 3667.8: one code above, -13 dBFS is passed and 3 dB are too few. A level of
// 1000 is 14.3 dB short of -10 dBFS.
// clang-format off
const Course kCourses[] = {
    {"OneOverflow", {{20, kLoud}, {1, kOverflow}}, {-2}, 1},
    {"EightOverflows", {{8, kOverflow}, {13, kLoud}}, {-4}, 8},
    {"NothingBeforeSixteenPeriods", {{16 * kPeriod - 1, 1}}, {}, 0},
    {"FourDecibelsShort", {{16 * kPeriod, 3667}}, {4}, 0},
    {"ThreeDecibelsShort", {{16 * kPeriod, 3668}}, {}, 0},
    {"TheHighestLevelOfAllPeriodsCounts", {{1, 3463}, {16 * kPeriod - 1, 1000}}, {4}, 0},
    {"OverflowStartsTheQuietTimeAnew",
        {{15 * kPeriod, 100}, {1, kOverflow}, {kPeriod - 1, 100}, {16 * kPeriod, 1000}}, {-2, 15}, 1},
    {"SwitchedOffItReportsOverflowAndForgetsIt",
        {kOff, {20 * kPeriod, kOverflow}, kOn, {kPeriod, kLoud}}, {}, 20 * kPeriod},
    {"TicksWithoutDataCountForNothing",
        {{15 * kPeriod, 1000}, {1000, kNothing}, {kPeriod - 1, 1000}}, {}, 0},
};
// clang-format on

TEST_F(AutoPreampTest, DecidesByTheCourseOfThePeaks)
{
    for (const Course &course : kCourses) {
        SCOPED_TRACE(course.name);
        restart();
        for (const Part &part : course.parts) {
            if (part.ticks == 0)
                preamp.setAuto(part.value != 0);
            for (int i = 0; i < part.ticks; ++i)
                part.value == kNothing ? tick() : tick({part.value});
        }
        EXPECT_EQ(steps, course.steps);
        EXPECT_EQ(overflows, course.overflows);
    }
}

TEST_F(AutoPreampTest, LargestPeakOfATickWins)
{
    tick({3463, 5}); // -13.5 dBFS
    for (int i = 0; i < 16 * kPeriod; ++i)
        tick({5});
    EXPECT_EQ(steps, Steps{4});
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/CalibrationControl.h"
#include "ZephrinNano/Control/driver/DriverTest.h"
#include "ZephrinNano/Control/driver/FrameStream.h"
#include "host_interfaces/Repairs.h"

#include <cmath>
#include <limits>

namespace
{
constexpr double kNone[] = {std::numeric_limits<double>::quiet_NaN(), INFINITY, -INFINITY};

TEST(CalibrationRepairTest, ACoefficientThatIsNoNumberIsRefusedAndToldOf)
{
    void (CalibrationControl::*const setters[])(double) = {&CalibrationControl::setUserPreampCoeff,
        &CalibrationControl::setUserFreqCoeff, &CalibrationControl::setAdminPreampCoeff,
        &CalibrationControl::setAdminFreqCoeff};
    for (const bool repaired : {false, true}) {
        for (const double value : kNone) {
            CalibrationControl calibration;
            calibration.setFiniteOnly(repaired);
            test::LogCapture log;
            for (const auto setter : setters)
                (calibration.*setter)(value);
            EXPECT_EQ(log.warnings().size(), repaired ? 4 : 0);
            for (const double kept : {calibration.streamPreampCoeff(),
                     calibration.userFreqCoeff() * calibration.adminFreqCoeff()})
                EXPECT_EQ(std::isfinite(kept), repaired) << value;
        }
    }
}

using DriverRepairTest = DriverTest;

TEST_F(DriverRepairTest, ALevelThatGivesNoFactorLeavesTheSamplesAsTheyAre)
{
    constexpr double kHuge = 1e5; // finite decibels, an infinite factor
    for (const double dB : {kNone[0], kNone[1], kHuge}) {
        for (const bool repaired : {false, true}) {
            log.clear();
            QStringList unknown;
            driver.setRepairs(
                Repairs::named(repaired ? QStringList("numbers") : QStringList(), unknown));
            driver.setPreampCoeff(0.0);
            driver.setPreampCoeff(dB);
            EXPECT_EQ(warnings().filter("refused").size(), repaired ? 1 : 0) << dB;
            engine->open(vm::thread::jthread::Priority::Highest);
            std::vector<COMPLEX> samples(EngineLimits::kBlock);
            // Again and again, as in a stream: a thread that is yet to wait is not woken by the
            // first.
            ASSERT_TRUE(wait(2000, [&] {
                auto block = test::frames(8, 1000);
                driver.extractIQ(block, driver.findHeaders(block));
                return engine->iqBuffer()->count() >= samples.size();
            }));
            engine->iqBuffer()->read(samples.data(), int(samples.size()));
            engine->close();
            EXPECT_EQ(std::isfinite(samples.back().re), repaired) << dB;
        }
    }
}
} // namespace

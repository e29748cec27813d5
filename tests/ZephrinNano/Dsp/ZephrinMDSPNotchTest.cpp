// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "ZephrinMFunctions.h"
#include "host_interfaces/AmateurRegion.h"
#include "support/TemporarySettings.h"

#include <stdexcept>

namespace
{
constexpr unsigned long k20m = 4; // index of the band
constexpr double kDds = 14.1e6;
constexpr double kCarrier = kDds + 5000.0;

struct BandPlan
{
    BandPlan()
    {
        AmateurRegion::instance()->setCountry(QLocale::Austria);
        AmateurRegion::instance()->setCurrent(AmateurRegion::Region1);
        functions = std::make_shared<ZephrinMFunctions>();
    }

    test::TemporarySettings settings;
    std::shared_ptr<ZephrinMFunctions> functions;
};

class EngineNotchTest : private BandPlan, public EngineTest
{
protected:
    EngineNotchTest() : EngineTest(functions)
    {
        iqServer.onWrite = [this](COMPLEX *block, int count) { seen.assign(block, block + count); };
        engine.setIqServer(&iqServer);
        engine.setDds(0, kDds);
        start();
    }

    /// What of a carrier of 1 the host still gets after a while, decibels.
    double remains(double hz = kCarrier, double dds = kDds, double rate = 48000.0)
    {
        play(test::tone(20 * kBlock, (hz - dds) / rate));
        std::vector<COMPLEX> tapped(engine.iqBuffer()->count());
        engine.iqBuffer()->read(tapped.data(), int(tapped.size()));
        EXPECT_EQ(test::rms({tapped.end() - kBlock, tapped.end()}), test::rms(seen));
        return test::decibels(test::rms(seen));
    }

    std::vector<COMPLEX> seen; // last block
};

constexpr double kGone = -60.0;
constexpr double kThere = -0.5;
} // namespace

TEST_F(EngineNotchTest, FollowsTuningAndRate)
{
    engine.onRnfParam(k20m, 7, true, kCarrier, 400.0);
    EXPECT_GT(remains(), kThere) << "the band's filters are off";
    engine.onRnfEnabled(k20m, true);
    EXPECT_LT(remains(), kGone);
    EXPECT_GT(remains(kCarrier + 1000.0), kThere);
    engine.setDds(0, kDds + 3000.0);
    EXPECT_LT(remains(kCarrier, kDds + 3000.0), kGone);
    engine.setSampleRate(96000.0);
    EXPECT_LT(remains(kCarrier, kDds + 3000.0, 96000.0), kGone);
    engine.onRnfParam(k20m, 7, false, kCarrier, 400.0);
    EXPECT_GT(remains(kCarrier, kDds + 3000.0, 96000.0), kThere);
}

TEST_F(EngineNotchTest, AnotherBandIsIgnored)
{
    constexpr unsigned long kTooLong = (1UL << 32) + k20m; // the same number in 32 bits
    for (const unsigned long band : {0UL, k20m - 1, kTooLong}) {
        engine.onRnfEnabled(band, true);
        engine.onRnfParam(band, 0, true, kCarrier, 400.0);
        EXPECT_NO_THROW(engine.onRnfParam(band, 8, true, kCarrier, 400.0));
    }
    EXPECT_GT(remains(), kThere);
    EXPECT_THROW(engine.onRnfParam(k20m, 8, true, kCarrier, 400.0), std::out_of_range);

    engine.onRnfEnabled(k20m, true);
    engine.onRnfParam(k20m, 0, true, kCarrier, 400.0);
    engine.onRnfEnabled(k20m - 1, false);
    engine.onRnfParam(k20m - 1, 0, false, 7.1e6, 400.0);
    EXPECT_LT(remains(), kGone);
    // The list belongs to the frequency, not to the band that is tuned now.
    engine.setDds(0, 10e6);
    engine.setDds(0, kDds);
    EXPECT_LT(remains(), kGone);
}

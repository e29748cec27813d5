// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "ZephrinMFunctions.h"
#include "host_interfaces/AmateurRegion.h"
#include "support/TemporarySettings.h"

namespace
{
constexpr unsigned long k20m = 4; // index of the band
constexpr double kDds = 14.1e6;
constexpr double kCarrier = kDds + 5000.0;
constexpr double kGone = -60.0; // dB
constexpr double kThere = -0.5;

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
    EngineNotchTest() : EngineTest(BandPlan::functions)
    {
        engine.setDds(0, kDds);
        recordIq();
        start();
    }

    /// What of a carrier of 1 the host still gets after a while, decibels.
    double remains(double hz = kCarrier, double dds = kDds, double rate = 48000.0)
    {
        iq.clear();
        play(test::tone(20 * kBlock, (hz - dds) / rate));
        const std::vector<COMPLEX> end(iq.end() - kBlock, iq.end());
        std::vector<COMPLEX> tapped(engine.iqBuffer()->count());
        engine.iqBuffer()->read(tapped.data(), int(tapped.size()));
        EXPECT_EQ(std::vector<COMPLEX>(tapped.end() - kBlock, tapped.end()), end);
        return test::decibels(test::rms(end));
    }
};
} // namespace

TEST_F(EngineNotchTest, FollowsTuningAndRate)
{
    engine.onRnfParam(k20m, 7, true, kCarrier, 400.0);
    EXPECT_GT(remains(), kThere) << "the band's filters are off";
    engine.onRnfEnabled(k20m - 1, true); // another band's
    EXPECT_GT(remains(), kThere);
    engine.onRnfEnabled(k20m, true);
    EXPECT_LT(remains(), kGone);
    engine.setDds(0, kDds + 3000.0);
    EXPECT_LT(remains(kCarrier, kDds + 3000.0), kGone);
    engine.setSampleRate(96000.0);
    EXPECT_LT(remains(kCarrier, kDds + 3000.0, 96000.0), kGone);
    engine.onRnfParam(k20m, 7, false, kCarrier, 400.0);
    EXPECT_GT(remains(kCarrier, kDds + 3000.0, 96000.0), kThere);
}

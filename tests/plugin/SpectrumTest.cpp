// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"
#include "support/Peak.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace
{
using test::PluginRig;

constexpr double kRateHz = 192e3;
constexpr double kCentreHz = 7.1e6;
constexpr double kAveragerDb = 0.7; // what the averaged line stands too high

class PanoramaTest : public testing::Test
{
protected:
    void start(const std::vector<PluginRig::Carrier> &carriers)
    {
        PluginRig::chooseCarriers(carriers);
        m_rig.start({{"SampleRate", 2}, {"PreampAuto", false}});
        m_rig.tune(kCentreHz, kCentreHz);
        m_rig.device().setAgcGain(0, 0, 0); // dB
        m_rig.device().setAgcMode(0, 0, 1); // so that the next is a change
        m_rig.device().setAgcMode(0, 0, 0);
    }

    /// The last of a few lines that the device told of.
    std::vector<float> line()
    {
        constexpr int kLines = 5; // past what the filters hold of the time before
        QSignalSpy lines(&m_rig.device(), SIGNAL(rxSpectrum(uint)));
        while (lines.size() < kLines)
            m_audio = m_rig.listen(0.3);
        const SpectrumView view = m_rig.device().receiverSpectrum(0);
        return {view.spectrum, view.spectrum + view.count};
    }

    /// In a line of the panorama, by frequency.
    double levelAt(const std::vector<float> &line, double hz, double centreHz = kCentreHz)
    {
        constexpr double kReachHz = 100.0;
        return test::peakNear(centreHz, kRateHz, line, hz, kReachHz).levelDb;
    }

    double audioLevelAt(double hz) const
    {
        return PluginRig::level({m_audio.end() - 8192, m_audio.end()}, hz);
    }

    PluginRig m_rig;
    std::vector<COMPLEX> m_audio; // heard along with the last line
};

TEST_F(PanoramaTest, ANotchTakesACarrierOutAndStaysOnIt)
{
    constexpr double kNotchedHz = 7.1015e6;
    constexpr double kNeighbourHz = 7.1025e6;
    constexpr double kWidthHz = 100.0;
    constexpr double kDepthDb = 60.0;
    constexpr double kNeighbourDb = 0.5;
    start({{kNotchedHz, -30.0}, {kNeighbourHz, -30.0}});
    line();
    const double before = audioLevelAt(1500.0);
    const double neighbourBefore = audioLevelAt(2500.0);

    auto &notches = *m_rig.bridge().radioNotchControl();
    const auto band =
        std::size_t(m_rig.device().getAvalibleFunctions()->getBandFromFreq(kCentreHz));
    ASSERT_TRUE(notches.setFilter(band, 2, {kWidthHz, kNotchedHz, true}));
    ASSERT_TRUE(notches.setBandEnabled(band, true));
    line();
    auto notched = line();
    EXPECT_LT(levelAt(notched, kNotchedHz), -30.0 - kDepthDb);
    EXPECT_NEAR(levelAt(notched, kNeighbourHz), -30.0 + kAveragerDb, kNeighbourDb);
    EXPECT_LT(audioLevelAt(1500.0), before - kDepthDb);
    EXPECT_NEAR(audioLevelAt(2500.0), neighbourBefore, kNeighbourDb);

    // Another centre, the same station: the notch stays on the air frequency.
    m_rig.tune(kCentreHz + 20e3, kCentreHz);
    line();
    notched = line();
    EXPECT_LT(levelAt(notched, kNotchedHz, kCentreHz + 20e3), -30.0 - kDepthDb);
    EXPECT_LT(audioLevelAt(1500.0), before - kDepthDb);
    EXPECT_NEAR(audioLevelAt(2500.0), neighbourBefore, kNeighbourDb);
}
} // namespace

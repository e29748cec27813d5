// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include "host_interfaces/EngineLimits.h"
#include "support/Signals.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace
{
using test::PluginRig;

constexpr double kCentreHz = 7.1e6;
constexpr double kToneHz = 1000.0;
constexpr auto kRates = EngineLimits::kRatesHz;

/// A carrier kToneHz above a station, and noise.
void chooseCarrier(double levelDb)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("carrier.band"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("band centre=7.1M noise=-150\nstation offset=1k mode=carrier level="
        + QByteArray::number(levelDb) + "\n");
    file.close();
    ASSERT_EQ(vr_scene_band(QFile::encodeName(file.fileName())), 0) << vr_last_error();
}

double level(const std::vector<COMPLEX> &audio, double hz)
{
    return test::decibels(
        test::magnitude(test::component(audio, hz / PluginRig::kAudioRateHz)) + 1e-12);
}

/// Up through all rates and down again.
std::vector<int> wayThroughTheRates()
{
    std::vector<int> way;
    for (int i = 1; i < int(kRates.size()); ++i)
        way.push_back(i);
    for (int i = int(kRates.size()) - 2; i >= 0; --i)
        way.push_back(i);
    return way;
}

/// Whether the tone stands alone.
bool isClean(const std::vector<COMPLEX> &audio)
{
    constexpr double kSilentDb = -70.0;
    constexpr double kDistanceDb = 60.0;
    const double tone = level(audio, kToneHz);
    if (tone < kSilentDb)
        return false;
    for (const double other : {300.0, 500.0, 1500.0, 2000.0, 3000.0})
        if (level(audio, other) > tone - kDistanceDb)
            return false;
    return true;
}

/// Whether it sounds as a block of the old rate would, were it taken for one of the new: the tone
/// is where the quotient of both puts it.
bool hasGhost(const std::vector<COMPLEX> &audio, double ghostHz)
{
    constexpr double kHeardDb = -70.0;
    constexpr std::size_t kPiece = 2400; // 50 ms
    for (std::size_t at = 0; at + kPiece <= audio.size(); at += kPiece) {
        const std::vector<COMPLEX> piece(
            audio.begin() + long(at), audio.begin() + long(at + kPiece));
        if (level(piece, ghostHz) > std::max(kHeardDb, level(piece, kToneHz)))
            return true;
    }
    return false;
}

TEST(ReceptionTest, TheRateChangesInARunningStream)
{
    constexpr double kWindowSeconds = 0.25;
    constexpr int kMostWindows = 12; // until all that rises and falls has settled
    PluginRig rig;
    vr_set_pace(VR_PACE_CREDIT);
    chooseCarrier(-40.0);
    rig.prepare();
    ASSERT_TRUE(rig.waitForReceiver());
    rig.readSettings({{"SampleRate", 0}});
    rig.tune(kCentreHz, kCentreHz);
    ASSERT_TRUE(rig.device().start());
    QSignalSpy rates(&rig.device(), SIGNAL(changedSampleRate(double)));
    int before = kRates[0];
    for (const int index : wayThroughTheRates()) {
        const int rate = kRates[std::size_t(index)];
        rates.clear();
        rig.readSettings({{"SampleRate", index}});
        ASSERT_EQ(rates.last().first().toDouble(), rate);
        EXPECT_EQ(rig.receiver().sample_rate_hz, rate);
        rig.tune(kCentreHz, kCentreHz);
        const double ghost = kToneHz * rate / before;
        int windows = 0;
        for (bool clean = false; !clean && windows < kMostWindows; ++windows) {
            const auto audio = rig.listen(kWindowSeconds);
            EXPECT_FALSE(hasGhost(audio, ghost)) << "from " << before << " to " << rate;
            clean = isClean(audio);
        }
        EXPECT_LT(windows, kMostWindows) << rate;
        before = rate;
    }
}

TEST(ReceptionTest, WithoutSlopesThePanoramaIsNarrowerThanTheStream)
{
    PluginRig rig;
    rig.prepare();
    QSignalSpy rates(&rig.device(), SIGNAL(changedSampleRate(double)));
    emit rig.manager().hideSpectrumSlopesChanged(true);
    rig.readSettings({{"SampleRate", 7}});
    EXPECT_EQ(rates.last().first().toDouble(), 2293333.0);
    EXPECT_EQ(rig.device().getAvalibleFunctions()->getCurrentPanSampleRateRX(), 2293333.0);
    EXPECT_EQ(rig.device().getAvalibleFunctions()->getCurrentSampleRateRX(), 2560000.0);
    emit rig.manager().hideSpectrumSlopesChanged(false);
    EXPECT_EQ(rates.last().first().toDouble(), 2560000.0);
    const auto count = rates.size();
    rig.device().setManager(&rig.manager()); // known already
    emit rig.manager().hideSpectrumSlopesChanged(false);
    EXPECT_EQ(rates.size(), count);
}

TEST(ReceptionTest, TheAutomaticPreampBringsAnOverloadedBandDown)
{
    // 21 ticks of 100 ms make a decision, and a second one may be needed.
    constexpr int kDecisionMs = 2100;
    PluginRig rig;
    chooseCarrier(3.0);
    rig.prepare();
    ASSERT_TRUE(rig.waitForReceiver());
    rig.readSettings({{"SampleRate", 2}, {"PreampAuto", true}});
    rig.tune(kCentreHz, kCentreHz);
    ASSERT_TRUE(rig.device().start());
    QSignalSpy overflows(&rig.manager(), SIGNAL(adcOverflow()));
    ASSERT_TRUE(PluginRig::waitFor(
        [&] { return !rig.manager().preamp().steps().empty(); }, kDecisionMs + 500));
    const auto first = rig.manager().preamp().steps().front();
    EXPECT_EQ(first.deltaDb, -4);             // an overflow at nearly every tick
    EXPECT_EQ(rig.receiver().attenuator, 8u); // in half decibels
    PluginRig::wait(500);
    overflows.clear();
    PluginRig::wait(1000);
    EXPECT_TRUE(overflows.empty());
}

TEST(ReceptionTest, TheAutomaticPreampRaisesAWeakBandWhenItHasBeenQuietForLong)
{
    constexpr int kSixteenDecisionsMs = 16 * 2100;
    constexpr double kWeakDb = -14.0;
    PluginRig rig;
    chooseCarrier(kWeakDb);
    rig.prepare();
    ASSERT_TRUE(rig.waitForReceiver());
    rig.readSettings({{"SampleRate", 2}, {"PreampAuto", true}});
    rig.tune(kCentreHz, kCentreHz);
    ASSERT_TRUE(rig.device().start());
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(PluginRig::waitFor(
        [&] { return !rig.manager().preamp().steps().empty(); }, 2 * kSixteenDecisionsMs));
    EXPECT_GT(clock.elapsed(), kSixteenDecisionsMs - 200);
    std::cout << "raised after " << clock.elapsed() << " ms by "
              << rig.manager().preamp().steps().front().deltaDb << " dB\n";
    EXPECT_EQ(rig.manager().preamp().steps().front().deltaDb, 4);
}
} // namespace

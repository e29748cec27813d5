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
    for (const int index : {1, 2, 3, 4, 5, 6, 7, 8, 4, 0}) {
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

TEST(ReceptionTest, TheAutomaticPreampBringsAnOverloadedBandDown)
{
    constexpr int kDecisionMs = 2100; // 21 ticks of 100 ms
    PluginRig rig;
    chooseCarrier(3.0);
    rig.prepare();
    ASSERT_TRUE(rig.waitForReceiver());
    rig.readSettings({{"SampleRate", 2}, {"PreampAuto", true}});
    rig.tune(kCentreHz, kCentreHz);
    QSignalSpy overflows(&rig.manager(), SIGNAL(adcOverflow()));
    ASSERT_TRUE(rig.device().start());
    const auto &steps = rig.manager().preamp().steps();
    ASSERT_TRUE(PluginRig::waitFor([&] { return !steps.empty(); }, 2 * kDecisionMs));
    EXPECT_EQ(steps.front().deltaDb, -4);     // an overflow at nearly every tick
    EXPECT_EQ(rig.receiver().attenuator, 8u); // in half decibels
    EXPECT_GE(overflows.size(), 8);
}

} // namespace

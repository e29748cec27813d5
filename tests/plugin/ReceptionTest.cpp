// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include "host_interfaces/EngineLimits.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
using test::PluginRig;

constexpr double kCentreHz = 7.1e6;
constexpr double kToneHz = 1000.0;
constexpr double kSilentDb = -70.0;
constexpr auto kRates = EngineLimits::kRatesHz;

/// Whether the tone stands alone.
bool isClean(const std::vector<COMPLEX> &audio)
{
    constexpr double kDistanceDb = 60.0;
    const double tone = PluginRig::level(audio, kToneHz);
    const auto rest = {300.0, 500.0, 1500.0, 2000.0, 3000.0};
    return tone > kSilentDb && std::all_of(rest.begin(), rest.end(), [&](double hz) {
        return PluginRig::level(audio, hz) < tone - kDistanceDb;
    });
}

/// Whether it sounds as a block of the old rate would, were it taken for one of the new: the tone
/// is where the quotient of both puts it.
bool hasGhost(const std::vector<COMPLEX> &audio, double ghostHz)
{
    constexpr long kPiece = 2400; // 50 ms
    for (auto at = audio.begin(); audio.end() - at >= kPiece; at += kPiece) {
        const std::vector<COMPLEX> piece(at, at + kPiece);
        if (PluginRig::level(piece, ghostHz)
            > std::max(kSilentDb, PluginRig::level(piece, kToneHz)))
            return true;
    }
    return false;
}

TEST(ReceptionTest, EveryRateIsTakenInARunningStreamAndOnlyTheStationIsHeard)
{
    constexpr double kWindowSeconds = 0.25;
    constexpr int kMostWindows = 12; // until all that rises and falls has settled
    PluginRig rig;
    // Beside the station: the other sideband, what is past the filter, and what a weak decimation
    // would fold onto 1500, 2000 and 3000 Hz of audio.
    std::vector<PluginRig::Carrier> carriers;
    for (const double hz : {kToneHz, -1500.0, -500.0, 6000.0, 50000.0, -46000.0, 97500.0, 147000.0})
        carriers.push_back({kCentreHz + hz, -40.0});
    PluginRig::chooseCarriers(carriers);
    rig.start({{"SampleRate", 0}});
    rig.tune(kCentreHz, kCentreHz);
    QSignalSpy rates(&rig.device(), SIGNAL(changedSampleRate(double)));
    int before = kRates[0];
    for (const int index : {2, 8, 7, 4, 1, 6, 3, 5, 0}) {
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

// A pure tone obeys x[n] = 2 cos(w) x[n-1] - x[n-2]; a sample lost or doubled anywhere breaks that
// by about amplitude times w.
TEST(ReceptionTest, NoSampleIsLostOrRepeated)
{
    constexpr double kTolerance = 1e-4; // of the largest: a lost one breaks it by 0.1 and more
    PluginRig rig;
    PluginRig::chooseCarriers({{kCentreHz + kToneHz, -40.0}});
    rig.start({{"SampleRate", 2}});
    rig.tune(kCentreHz, kCentreHz);
    rig.listen(2.0);
    const auto audio = rig.listen(10.0);
    const double factor =
        2.0 * std::cos(2.0 * std::numbers::pi * kToneHz / PluginRig::kAudioRateHz);
    double largest = 0.0, residual = 0.0;
    for (std::size_t n = 2; n < audio.size(); ++n) {
        const double now = audio[n].re - factor * audio[n - 1].re + audio[n - 2].re;
        residual = std::max(residual, std::abs(now));
        largest = std::max(largest, audio[n].re);
    }
    EXPECT_LT(residual, kTolerance * largest);
}
} // namespace

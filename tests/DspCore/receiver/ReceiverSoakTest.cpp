// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kInputRates[] = {48000.0, 192000.0, 1536000.0, 1920000.0, 2560000.0}; // Hz
constexpr double kOutputRates[] = {44100.0, 48000.0, 48000.0, 96000.0};

/// Draws settings from the whole range that each control allows.
class Knobs
{
public:
    explicit Knobs(unsigned seed) : mRandom(seed) { }

    int whole(int low, int high) { return std::uniform_int_distribution(low, high)(mRandom); }
    double real(double low, double high)
    {
        return std::uniform_real_distribution(low, high)(mRandom);
    }
    bool flag() { return whole(0, 1) != 0; }

    /// A learning rate or leak, each decade alike.
    double rate() { return std::pow(10.0, real(-6.0, 0.0)); }
    template <typename T, std::size_t N>
    T oneOf(const T (&values)[N])
    {
        return values[std::size_t(whole(0, int(N) - 1))];
    }
    QVector<int> gains()
    {
        QVector<int> gains(18);
        for (int &gain : gains)
            gain = whole(-20, 20);
        return gains;
    }

    void turnSome(Receiver &r)
    {
        const std::function<void()> knobs[] = {
            [&] { r.setModulation(Modulation(whole(0, 10))); },
            [&] { test::setMode(r, Modulation(whole(0, 10))); },
            [&] { r.setBandFilterIf(0, real(-12000, 2000), real(2001, 12000)); },
            [&] { r.setFilterTaps(whole(200, 2000)); },
            [&] { r.setDownConverter(unsigned(whole(0, 1)), real(-200000, 200000)); },
            [&] { r.setRit(0, real(-10000, 10000)); },
            [&] { r.setInputSampleRate(oneOf(kInputRates)); },
            [&] { r.setOutputSampleRate(oneOf(kOutputRates)); },
            [&] { r.setAgcParam(flag(), real(0.1, 2.5), whole(10, 5000), whole(10, 5000)); },
            [&] { r.setAgcGain(0, whole(-80, 140)); },
            [&] { r.setCwTone(whole(200, 2000)); },
            [&] { r.setDiglOffset(whole(2, 10000)); },
            [&] { r.setMainVolume(real(-70, 10)); },
            [&] { r.setVolume(unsigned(whole(0, 1)), real(-70, 10)); },
            [&] { r.setBalance(unsigned(whole(0, 1)), real(-70, 70)); },
            [&] { r.setEnableVfob(flag()); },
            [&] { r.setMainMute(whole(0, 9) == 0); },
            [&] { r.setBin(flag()); },
            [&] { r.setNr(flag()); },
            [&] { r.setNrTaps(whole(1, 257)); },
            [&] { r.setNrDelay(whole(1, 257)); },
            [&] { r.setNrRate(rate()); },
            [&] { r.setNrLeak(rate()); },
            [&] { r.setAnf(flag()); },
            [&] { r.setAnfTaps(whole(1, 257)); },
            [&] { r.setAnfDelay(whole(1, 257)); },
            [&] { r.setAnfRate(rate()); },
            [&] { r.setAnfLeak(rate()); },
            [&] { r.setApf(flag()); },
            [&] { r.setCwApfGain(whole(6, 60)); },
            [&] { r.setCwApfQuality(whole(1, 20)); },
            [&] { r.setSsbApfGain(whole(3, 60)); },
            [&] { r.setSsbApfQuality(real(0.1, 10.0)); },
            [&] { r.setSsbApfFreq(whole(200, 2000)); },
            [&] { r.setDse(flag()); },
            [&] { r.setDseQuality(whole(140, 250)); },
            [&] { r.setDseSwap(flag()); },
            [&] { r.setEqualizerEnable(flag()); },
            [&] { r.setEqualizerGains(gains()); },
            [&] { r.setSqlEnable(unsigned(whole(0, 1)), whole(0, 3) == 0); },
            [&] { r.setSqlValue(unsigned(whole(0, 1)), whole(-130, 0)); },
            [&] { r.setEnableCTCSS(whole(0, 3) == 0); },
            [&] { r.setToneCTCSS(whole(-1, 41)); },
            [&] { r.setWfmStereo(flag()); },
            [&] { r.setWfmUsa(flag()); },
        };
        for (int i = 0; i < 5; ++i)
            knobs[std::size_t(whole(0, int(std::size(knobs)) - 1))]();
    }

private:
    std::mt19937 mRandom;
};

/// Infinite if any part is not a number.
double largestPart(const std::vector<COMPLEX> &samples)
{
    return test::maxError(samples, std::vector<COMPLEX>(samples.size()));
}

TEST(ReceiverSoakTest, AnySettingsGiveFiniteAudioWithinFullScale)
{
    constexpr int kRounds = 400;
    Receiver receiver;
    Knobs knobs(2024);
    std::size_t heard = 0;
    for (unsigned round = 0; round < kRounds; ++round) {
        knobs.turnSome(receiver);
        const double gain = std::pow(10.0, knobs.real(-7.0, 0.0));
        const auto stream = test::scaled(test::noise(8 * 512, round), gain);
        const test::Heard out = test::feed(receiver, stream, knobs.oneOf({512, 512, 4096, 37}));
        ASSERT_LE(largestPart(out.audio), 1.0) << round;
        ASSERT_TRUE(std::isfinite(largestPart(out.vac) + largestPart(out.lineout))) << round;
        double levels[4];
        receiver.getDbm(0, levels[0], levels[1]);
        receiver.getAdc(0, levels[2], levels[3]);
        for (const double level : levels)
            ASSERT_TRUE(std::isfinite(level)) << round;
        heard += largestPart(out.audio) > 1e-9;
    }
    EXPECT_GT(heard, kRounds / 4u); // mutes and squelches do not hide everything
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kSinglePrecision = 1e-4; // a float ramp stops moving that close to its target
constexpr double kFixedGain = 0.7;
constexpr int kSecond = 192000;

std::vector<COMPLEX> carrier(int length)
{
    return std::vector<COMPLEX>(std::size_t(length), {0.2, 0.2});
}

/// A receiver with a steady carrier after its filters.
void settle(Receiver &receiver)
{
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DSB);
    test::feed(receiver, carrier(kSecond));
}

struct MainVolumeCase
{
    const char *name;
    void (*change)(Receiver &);
    double from, to; // linear gains
    double audioRate;
};

class MainVolumeTest : public testing::TestWithParam<MainVolumeCase>
{ };

TEST_P(MainVolumeTest, GlidesInFiftyMilliseconds)
{
    const MainVolumeCase &c = GetParam();
    Receiver receiver;
    receiver.setOutputSampleRate(c.audioRate);
    settle(receiver);
    c.change(receiver);
    const auto heard = test::feed(receiver, carrier(kSecond / 2));
    const double timeConstant = 0.050 * c.audioRate; // samples
    const int settled = int(heard.audio.size());
    for (int n : {2400, 3600, 6000, settled}) { // the carrier is back after every delay
        const double expected = c.to + (c.from - c.to) * std::exp(-n / timeConstant);
        EXPECT_NEAR(heard.audio[n - 1].re / heard.lineout[n - 1].re, kFixedGain * expected,
            kSinglePrecision)
            << c.name << " sample " << n;
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, MainVolumeTest,
    testing::Values(
        MainVolumeCase{"-20 dB", [](Receiver &r) { r.setMainVolume(-20.0); }, 1.0, 0.1, 48000},
        MainVolumeCase{"96 kHz", [](Receiver &r) { r.setMainVolume(-20.0); }, 1.0, 0.1, 96000},
        MainVolumeCase{"-60 dB", [](Receiver &r) { r.setMainVolume(-60.0); }, 1.0, 0.0, 48000},
        MainVolumeCase{"-80 dB", [](Receiver &r) { r.setMainVolume(-80.0); }, 1.0, 0.0, 48000},
        MainVolumeCase{"+6 dB", [](Receiver &r) { r.setMainVolume(6.0); }, 1.0, 1.0, 48000},
        MainVolumeCase{"mute", [](Receiver &r) { r.setMainMute(true); }, 1.0, 0.0, 48000},
        MainVolumeCase{"channel gains without B",
            [](Receiver &r) {
                r.setMute(0, true);
                r.setVolume(0, -20.0);
                r.setBalance(0, 20.0);
            },
            1.0, 1.0, 48000},
        MainVolumeCase{"new input rate",
            [](Receiver &r) {
                r.setInputSampleRate(96000.0);
                r.setInputSampleRate(192000.0);
            },
            0.0, 1.0, 48000}));

TEST(ReceiverGainTest, ANewReceiverFadesIn)
{
    Receiver receiver;
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DSB);
    const auto heard = test::feed(receiver, carrier(kSecond));
    for (int n : {2400, 3600, 6000, int(heard.audio.size())})
        EXPECT_NEAR(heard.audio[n - 1].re / heard.lineout[n - 1].re,
            kFixedGain * (1.0 - std::exp(-n / 2400.0)), kSinglePrecision);
}

/// Levels of A's station and of B's station at the left and the right ear.
using Levels = std::array<double, 4>;

Levels levels(void (*change)(Receiver &))
{
    Receiver receiver;
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, 300, 4000);
    receiver.setDownConverter(0, 30000.0);
    receiver.setDownConverter(1, -30000.0);
    receiver.setEnableVfob(true);
    test::setMode(receiver, Modulation::USB);
    change(receiver);
    auto stream = test::tone(kSecond, 31000.0 / 192000.0, 0.1);
    test::add(stream, test::tone(kSecond, -28000.0 / 192000.0, 0.1));
    const auto audio = test::last(test::feed(receiver, stream).audio, 9600);
    const auto left = test::ear(audio, &COMPLEX::re);
    const auto right = test::ear(audio, &COMPLEX::im);
    constexpr double kA = 1000.0 / 48000.0;
    constexpr double kB = 2000.0 / 48000.0;
    return {test::level(left, kA), test::level(right, kA), test::level(left, kB),
        test::level(right, kB)};
}

TEST(ReceiverGainTest, ChannelGainsActWhileChannelBIsInUse)
{
    struct Row
    {
        const char *name;
        void (*change)(Receiver &);
        Levels gains; // A left, A right, B left, B right
    };
    const Row rows[] = {
        {"B unused",
            [](Receiver &r) {
                r.setEnableVfob(false);
                r.setVolume(0, -20);
            },
            {1, 1, 0, 0}},
        {"volume A", [](Receiver &r) { r.setVolume(0, -20); }, {.1, .1, 1, 1}},
        {"volume B", [](Receiver &r) { r.setVolume(1, -60); }, {1, 1, 0, 0}},
        {"below -60", [](Receiver &r) { r.setVolume(1, -80); }, {1, 1, 1e-4, 1e-4}},
        {"above 0", [](Receiver &r) { r.setVolume(0, 10); }, {1, 1, 1, 1}},
        {"right of A weaker", [](Receiver &r) { r.setBalance(0, 20); }, {1, .1, 1, 1}},
        {"right of A off", [](Receiver &r) { r.setBalance(0, 60); }, {1, 0, 1, 1}},
        {"left of B weaker", [](Receiver &r) { r.setBalance(1, -20); }, {1, 1, .1, 1}},
        {"left of B never off", [](Receiver &r) { r.setBalance(1, -60); }, {1, 1, 1e-3, 1}},
        {"back to the middle",
            [](Receiver &r) {
                r.setBalance(0, 20);
                r.setBalance(0, 0);
            },
            {1, 1, 1, 1}},
        {"mute A", [](Receiver &r) { r.setMute(0, true); }, {0, 0, 1, 1}},
        {"mute main", [](Receiver &r) { r.setMainMute(true); }, {0, 0, 0, 0}},
        {"no such channel",
            [](Receiver &r) {
                r.setMute(2, true);
                r.setVolume(2, -20);
                r.setBalance(2, 9);
            },
            {1, 1, 1, 1}},
    };
    constexpr double kGain = 1e-4; // stop band of the filters plus single precision
    const Levels full = levels([](Receiver &) {});
    for (const Row &row : rows) {
        const Levels heard = levels(row.change);
        for (std::size_t i = 0; i < full.size(); ++i)
            EXPECT_NEAR(heard[i] / full[i], row.gains[i], kGain) << row.name << " " << i;
    }
}

TEST(ReceiverGainTest, ChannelGainsMoveTwoPercentPerSample)
{
    Receiver receiver;
    settle(receiver);
    receiver.setEnableVfob(true);
    receiver.setMute(1, true); // B hears the same carrier; leaves A alone in the sum
    test::feed(receiver, carrier(kSecond / 4));
    receiver.setBalance(0, 20.0);
    const auto heard = test::feed(receiver, carrier(4096));
    for (int n : {1, 10, 50, 200}) {
        const double ratio = heard.audio[n - 1].im / heard.audio[n - 1].re;
        EXPECT_NEAR(ratio, 0.1 + 0.9 * std::pow(0.98, n), kSinglePrecision) << n;
    }
}
} // namespace

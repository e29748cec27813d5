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

TEST(ReceiverGainTest, MainVolumeGlidesInFiftyMilliseconds)
{
    struct Row
    {
        const char *name;
        void (*change)(Receiver &); // null: a new receiver
        double from, to;            // linear gains
        double audioRate;
    };
    const Row rows[] = {
        {"new", nullptr, 0.0, 1.0, 48000},
        {"-20 dB", [](Receiver &r) { r.setMainVolume(-20.0); }, 1.0, 0.1, 48000},
        {"96 kHz", [](Receiver &r) { r.setMainVolume(-20.0); }, 1.0, 0.1, 96000},
        {"-80 dB", [](Receiver &r) { r.setMainVolume(-80.0); }, 1.0, 0.0, 48000},
        {"+6 dB", [](Receiver &r) { r.setMainVolume(6.0); }, 1.0, 1.0, 48000},
        {"mute", [](Receiver &r) { r.setMainMute(true); }, 1.0, 0.0, 48000},
        {"new input rate",
            [](Receiver &r) {
                r.setInputSampleRate(96000.0);
                r.setInputSampleRate(192000.0);
            },
            0.0, 1.0, 48000},
    };
    for (const Row &row : rows) {
        Receiver receiver; // hears a carrier in the middle of the panorama
        test::holdGain(receiver);
        receiver.setBandFilterIf(0, -4000, 4000);
        test::setMode(receiver, Modulation::DSB);
        receiver.setOutputSampleRate(row.audioRate);
        const std::vector<COMPLEX> carrier(kSecond, COMPLEX{0.2, 0.2});
        if (row.change) {
            test::feed(receiver, carrier);
            row.change(receiver);
        }
        const auto heard = test::feed(receiver, carrier);
        const double timeConstant = 0.050 * row.audioRate; // samples
        const int settled = int(heard.audio.size());
        for (const int n : {2400, 3600, 6000, settled}) { // the carrier is back after every delay
            const double expected = row.to + (row.from - row.to) * std::exp(-n / timeConstant);
            const auto i = std::size_t(n - 1);
            EXPECT_NEAR(
                heard.audio[i].re / heard.lineout[i].re, kFixedGain * expected, kSinglePrecision)
                << row.name << " sample " << n;
        }
    }
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
        {"B unused, volume A",
            [](Receiver &r) {
                r.setEnableVfob(false);
                r.setVolume(0, -20);
            },
            {1, 1, 0, 0}},
        {"volume A", [](Receiver &r) { r.setVolume(0, -20); }, {.1, .1, 1, 1}},
        {"below -60", [](Receiver &r) { r.setVolume(1, -80); }, {1, 1, 1e-4, 1e-4}},
        {"right of A weaker", [](Receiver &r) { r.setBalance(0, 20); }, {1, .1, 1, 1}},
        {"left of B never off", [](Receiver &r) { r.setBalance(1, -60); }, {1, 1, 1e-3, 1}},
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
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DSB);
    receiver.setEnableVfob(true);
    receiver.setMute(1, true); // B hears the same; leaves A alone in the sum
    test::feed(receiver, std::vector<COMPLEX>(kSecond, {0.2, 0.2}));
    receiver.setBalance(0, 20.0);
    const auto heard = test::feed(receiver, std::vector<COMPLEX>(4096, {0.2, 0.2}));
    for (const int n : {1, 10, 50, 200}) {
        const COMPLEX pair = heard.audio[std::size_t(n - 1)];
        EXPECT_NEAR(pair.im / pair.re, 0.1 + 0.9 * std::pow(0.98, n), kSinglePrecision) << n;
    }
}
} // namespace

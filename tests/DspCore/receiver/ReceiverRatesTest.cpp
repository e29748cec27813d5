// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
struct RateCase
{
    double input;  // Hz
    double output; // Hz, set before the input rate
    double heard;  // Hz, rate of the audio
};

class ReceiverRatesTest : public testing::TestWithParam<RateCase>
{ };

/// The shift and the band of the digital mode follow the output rate, and the pre-filter keeps away
/// what would fold onto the audio.
TEST_P(ReceiverRatesTest, AudioComesAtItsRateAndPitch)
{
    constexpr double kFoldedDb = -70.0;
    const RateCase &c = GetParam();
    Receiver receiver;
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, 200, 3000);
    receiver.setOutputSampleRate(c.output);
    receiver.setInputSampleRate(c.input);
    test::setMode(receiver, Modulation::DIGU);
    receiver.setDownConverter(0, c.input / 8);
    const int length = int(c.input * 0.6);
    const double pitch = 1500.0 * c.heard / c.output - 500.0; // Hz

    auto stream = test::tone(length, 0.125 - 500.0 / c.input, 0.2);
    const bool folds = c.heard == c.output && c.input >= 4 * c.output;
    if (folds)
        test::add(stream, test::tone(length, 0.125 + c.heard / c.input, 0.2));
    const auto audio = test::feed(receiver, stream).audio;
    EXPECT_NEAR(double(audio.size()), length * c.heard / c.input, 1.0);
    const auto tail = test::last(audio, 9600);
    const double level = test::level(tail, pitch / c.heard);
    EXPECT_NEAR(level / test::rms(tail), 1.0, 0.01);
    if (folds) {
        EXPECT_LT(test::decibels(test::level(tail, 1500.0 / c.heard) / level), kFoldedDb);
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, ReceiverRatesTest,
    testing::Values(RateCase{48000, 48000, 48000}, RateCase{96000, 48000, 48000},
        RateCase{192000, 48000, 48000}, RateCase{384000, 48000, 48000},
        RateCase{768000, 48000, 48000}, RateCase{1536000, 48000, 48000},
        RateCase{1920000, 48000, 48000}, RateCase{2560000, 48000, 48000},
        RateCase{3072000, 48000, 48000}, RateCase{192000, 44100, 44100},
        RateCase{384000, 96000, 96000},
        // The ratios of these two input rates are made for 48 kHz, whatever comes after.
        RateCase{1920000, 96000, 48000}, RateCase{2560000, 96000, 48000}));

TEST(ReceiverRatesTest, AnOutputRateAfterTheInputRateIsAlwaysMet)
{
    for (double input : {1920000.0, 2560000.0}) {
        Receiver receiver;
        receiver.setInputSampleRate(input);
        receiver.setOutputSampleRate(96000.0);
        const int length = 512 * 1000;
        const auto audio = test::feed(receiver, test::noise(length, 1)).audio;
        EXPECT_NEAR(double(audio.size()), length * 96000.0 / input, 1.0);
    }
}

TEST(ReceiverRatesTest, AnInputRateChangeEmptiesTheSoundCardOutletAlone)
{
    Receiver receiver;
    auto block = test::noise(4096, 1);
    receiver.process(block.data(), 4096);
    receiver.setInputSampleRate(192000.0); // no change
    EXPECT_EQ(receiver.buffer().count(), 1024u);
    receiver.setInputSampleRate(384000.0);
    EXPECT_EQ(receiver.buffer().count(), 0u);
    EXPECT_EQ(receiver.buffer().freeCount(), 16384u);
    EXPECT_EQ(receiver.vac().count(), 1024u);
}

/// A sound card faster than the device makes more samples than it takes. What the arrays hold is
/// used to the last sample.
TEST(ReceiverRatesTest, TheLongestBlockFillsTheArraysAndNoMore)
{
    for (const auto &[input, output] : {std::pair{48000.0, 48000.0}, {44100.0, 48000.0},
             {48000.0, 96000.0}, {48000.0, 192000.0}}) {
        Receiver receiver;
        receiver.setOutputSampleRate(output);
        receiver.setInputSampleRate(input);
        const auto audio =
            test::feed(receiver, test::noise(SIGNAL_MAX_SIZE, 1), SIGNAL_MAX_SIZE).audio;
        EXPECT_EQ(audio.size(), std::size_t(SIGNAL_MAX_SIZE)) << input << " to " << output;
    }
}
} // namespace

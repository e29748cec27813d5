// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
struct RateCase
{
    double input;  // Hz
    double output; // Hz
    bool last;     // the output rate is set after the input rate
    double heard;  // Hz, rate of the audio
    Modulation mode;
};

/// The shifts and the band follow the output rate, and the pre-filter keeps away what would fold
/// onto the audio.
TEST(ReceiverRatesTest, AudioComesAtItsRateAndPitch)
{
    constexpr double kFoldedDb = -70.0;
    constexpr double kAlone = 0.01; // what there may be beside the tone, of its level
    const RateCase cases[] = {
        {48000, 48000, false, 48000, Modulation::DIGU},
        {192000, 44100, false, 44100, Modulation::DIGU},
        {384000, 96000, false, 96000, Modulation::CW},
        // The ratio of this input rate is made for 48 kHz, unless another rate follows.
        {2560000, 96000, false, 48000, Modulation::DIGU},
        {2560000, 96000, true, 96000, Modulation::DIGU},
    };
    for (const RateCase &c : cases) {
        Receiver receiver;
        test::holdGain(receiver);
        receiver.setBandFilterIf(0, -1000, 3000);
        if (!c.last)
            receiver.setOutputSampleRate(c.output);
        receiver.setInputSampleRate(c.input);
        receiver.setOutputSampleRate(c.output);
        test::setMode(receiver, c.mode);
        receiver.setDownConverter(0, c.input / 8);
        const int length = int(c.input * 0.6);
        const double shift = (c.mode == Modulation::CW ? 700.0 : 1500.0) * c.heard / c.output;

        auto stream = test::tone(length, 0.125 - 500.0 / c.input, 0.2);
        const bool folds = c.heard == c.output && c.input >= 4 * c.output;
        if (folds)
            test::add(stream, test::tone(length, 0.125 + c.heard / c.input, 0.2));
        const auto audio = test::feed(receiver, stream).audio;
        EXPECT_NEAR(double(audio.size()), length * c.heard / c.input, 1.0);
        const auto tail = test::last(audio, 9600);
        const double level = test::level(tail, (shift - 500.0) / c.heard);
        const double share = c.mode == Modulation::CW ? std::sqrt(0.5) : 1.0; // CW is real
        EXPECT_NEAR(level / test::rms(tail) / share, 1.0, kAlone) << c.input << " " << c.output;
        if (folds) {
            EXPECT_LT(test::decibels(test::level(tail, shift / c.heard) / level), kFoldedDb);
        }
    }
}

// A sound card faster than the device makes more samples than it takes. What the arrays hold is
// used to the last sample. A new rate empties the sound card's outlet alone.
TEST(ReceiverRatesTest, TheLongestBlockFillsTheArraysAndNoMore)
{
    for (const auto &[input, output] :
        {std::pair{48000.0, 48000.0}, {44100.0, 48000.0}, {48000.0, 192000.0}}) {
        Receiver receiver;
        receiver.setOutputSampleRate(output);
        receiver.setInputSampleRate(input);
        auto block = test::noise(SIGNAL_MAX_SIZE, 1);
        receiver.process(block.data(), SIGNAL_MAX_SIZE);
        EXPECT_EQ(receiver.buffer().count(), unsigned(SIGNAL_MAX_SIZE)) << input << " " << output;
        receiver.setInputSampleRate(input); // no change
        EXPECT_EQ(receiver.buffer().count(), unsigned(SIGNAL_MAX_SIZE));
        receiver.setInputSampleRate(384000.0);
        EXPECT_EQ(receiver.buffer().count(), 0u);
        EXPECT_EQ(receiver.vac().count(), unsigned(SIGNAL_MAX_SIZE));
    }
}
} // namespace

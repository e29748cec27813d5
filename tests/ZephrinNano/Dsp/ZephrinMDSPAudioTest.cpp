// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include "DspCore/filters/Resampler.h"

#include <algorithm>

namespace
{
// The taps hand out single precision.
constexpr double kFloatError = 2e-7;
} // namespace

class EngineAudioTest : public EngineTest
{
protected:
    EngineAudioTest()
    {
        recordAudio();
        engine.setModulation(0, DspCore::Modulation::USB);
    }

    using Callback = bool (ZephrinMDSP::*)(
        std::vector<float> &, std::vector<float> &, unsigned long, unsigned long);

    /// Pulls a given number of stereo pairs; an empty result means that the callback refused.
    std::vector<COMPLEX> pull(Callback callback, int pairs)
    {
        std::vector<float> out(std::size_t(2 * pairs), -1.0f);
        if (!(engine.*callback)(noInput, out, 0, 2))
            return {};
        std::vector<COMPLEX> audio(out.size() / 2);
        for (std::size_t i = 0; i < audio.size(); ++i)
            audio[i] = {out[2 * i], out[2 * i + 1]};
        return audio;
    }

    /// Pairs that wait, in steps of 64. What the VAC plays has no silence of that length, and the
    /// line out refuses when it is empty.
    int waiting(Callback callback)
    {
        for (int count = 0;; count += 64) {
            const auto audio = pull(callback, 64);
            if (audio.empty() || (callback == &ZephrinMDSP::vacIO && test::rms(audio) == 0.0))
                return count;
        }
    }

    /// A stream through a resampler of its own in small cuts, times a gain.
    static std::vector<COMPLEX> resampled(
        std::vector<COMPLEX> in, double from, double to, double gain)
    {
        DspCore::Resampler resampler;
        resampler.setSampleRates(from, to);
        std::vector<COMPLEX> part(SIGNAL_MAX_SIZE);
        std::vector<COMPLEX> out;
        for (std::size_t at = 0; at < in.size(); at += 128) {
            int length = 0;
            resampler.process(in.data() + at, 128, part.data(), length);
            out.insert(out.end(), part.begin(), part.begin() + length);
        }
        for (COMPLEX &pair : out)
            pair = {gain * pair.re, gain * pair.im};
        return out;
    }
};

TEST_F(EngineAudioTest, SoundCardPlaysTheReceiversAudioInPairs)
{
    start();
    playTone(20, 0.1);
    ASSERT_EQ(soundCard.size(), std::size_t(20 * kBlock));
    EXPECT_EQ(test::rms(pull(&ZephrinMDSP::soundCardIO, 20 * kBlock + 1)), 0.0) << "too much";
    for (int at = 0; at < 20 * kBlock; at += 640) {
        const auto audio = pull(&ZephrinMDSP::soundCardIO, 640);
        for (int i = 0; i < 640; ++i) {
            ASSERT_FLOAT_EQ(float(audio[i].re), float(0.7 * soundCard[at + i].re)) << at + i;
            ASSERT_FLOAT_EQ(float(audio[i].im), float(0.7 * soundCard[at + i].im)) << at + i;
        }
    }
    EXPECT_EQ(test::rms(pull(&ZephrinMDSP::soundCardIO, 1)), 0.0) << "all played";
}

TEST_F(EngineAudioTest, VacCarriesTheAudioServersStreamAtItsOwnRate)
{
    // At 192 kHz a chunk makes 8192 pairs, more than the resampler gives at a time.
    for (const double rate : {44100.0, 192000.0}) {
        vacSource.clear();
        engine.setVacSampleRate(rate);
        engine.vacOpen();
        start();
        playTone(8, 0.1); // two chunks
        ASSERT_EQ(vacSource.size(), std::size_t(2 * kChunk)) << rate;
        const auto expected = resampled(vacSource, 48000.0, rate, 0.3);
        const auto audio = pull(&ZephrinMDSP::vacIO, int(expected.size()));
        EXPECT_GT(test::rms(expected), 1e-3) << rate;
        EXPECT_LT(test::maxError(audio, expected), kFloatError) << rate;
        EXPECT_EQ(waiting(&ZephrinMDSP::vacIO), 0) << rate;
        engine.close();
    }
}

TEST_F(EngineAudioTest, AClosedVacIsDrainedAndAPathStartsEmpty)
{
    start();
    playTone(80, 0.1); // more than the receiver's rings hold
    EXPECT_EQ(vacSource.size(), std::size_t(80 * kBlock));
    EXPECT_EQ(waiting(&ZephrinMDSP::vacIO), 0);

    // A ring with something in it would give a chunk early.
    for (const int before : {0, 6}) { // blocks: a chunk in the taps and half a chunk ahead of them
        playTone(before, 0.1);
        engine.vacClose();
        engine.lineoutClose();
        engine.vacOpen();
        engine.setLineOutEnable(true);
        playTone(3, 0.1);
        EXPECT_EQ(waiting(&ZephrinMDSP::vacIO), 0);
        EXPECT_EQ(waiting(&ZephrinMDSP::lineOutIO), 0);
        playTone(1, 0.1);
        EXPECT_EQ(waiting(&ZephrinMDSP::vacIO), kChunk);
        EXPECT_EQ(waiting(&ZephrinMDSP::lineOutIO), kChunk);
    }
    engine.lineoutClose();
    playTone(4, 0.1);
    EXPECT_EQ(waiting(&ZephrinMDSP::lineOutIO), 0);
}

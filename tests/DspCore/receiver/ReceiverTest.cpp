// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/Receiver.h"
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kInputRate = 192000.0; // Hz
constexpr double kRate = 48000.0;       // Hz, audio
constexpr int kSecond = 192000;
constexpr int kTail = 9600;           // audio samples judged, 0.2 s: after every delay and ramp
constexpr double kTuned = 30000.0;    // Hz from the middle of the panorama
constexpr double kStopBandDb = -70.0; // a 1000-tap filter 1 kHz off its edge

std::vector<COMPLEX> station(double offset, int length = kSecond, double rate = kInputRate)
{
    return test::tone(length, (kTuned + offset) / rate, 0.2);
}

struct ModeCase
{
    Modulation mode;
    double low, high; // Hz, band
    double offset;    // Hz, station from the tuned frequency
    double heard;     // Hz
    bool complex;     // one-sided at the outlets
    double vac;       // Hz, one-sided before the finishing
};

class ReceiverModeTest : public testing::TestWithParam<ModeCase>
{ };

TEST_P(ReceiverModeTest, BringsAStationToItsPitch)
{
    const ModeCase &c = GetParam();
    Receiver receiver;
    test::holdGain(receiver);
    test::setMode(receiver, c.mode);
    receiver.setBandFilterIf(0, c.low, c.high);
    receiver.setDownConverter(0, kTuned);
    const test::Heard heard = test::feed(receiver, station(c.offset));
    const auto audio = test::last(heard.audio, kTail);
    const double level = test::level(audio, c.heard / kRate);
    const double mirror = test::level(audio, -c.heard / kRate);

    // All of the power is in the wanted component: alone, or paired with its mirror image.
    const double expected = test::rms(audio) * (c.complex ? 1.0 : std::sqrt(0.5));
    EXPECT_GT(level, 0.05);
    EXPECT_NEAR(level / expected, 1.0, 0.01);
    EXPECT_LT(test::decibels(mirror / level), c.complex ? kStopBandDb : 0.01);
    const auto vac = test::last(heard.vac, kTail);
    EXPECT_NEAR(test::level(vac, c.vac / kRate) / test::rms(vac), 1.0, 0.01);
    const auto line = test::last(heard.lineout, kTail);
    for (int i = test::kLookAhead; i < kTail; ++i) {
        const COMPLEX before = vac[i - test::kLookAhead];
        const double left = c.mode == Modulation::LSB ? before.im : before.re;
        ASSERT_EQ(line[i], (COMPLEX{left, c.complex ? before.im : left}));
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, ReceiverModeTest,
    testing::Values(ModeCase{Modulation::DSB, -4000, 4000, -1200, 1200, false, -1200},
        ModeCase{Modulation::LSB, -3000, -300, -1000, 1000, false, -1000},
        ModeCase{Modulation::USB, 300, 3000, 1000, 1000, false, 1000},
        ModeCase{Modulation::DIGL, 300, 3000, 3200, 1000, true, 1000},
        ModeCase{Modulation::DIGU, 300, 3000, -500, 1000, true, 1000},
        ModeCase{Modulation::DRM, -5000, 5000, 1000, 6000, true, 6000}));

TEST(ReceiverTest, RejectsTheOppositeSideband)
{
    for (const auto &[mode, low, high, wanted] :
        {std::tuple{Modulation::USB, 300.0, 3000.0, 1000.0},
            std::tuple{Modulation::LSB, -3000.0, -300.0, -1000.0}}) {
        Receiver receiver;
        test::holdGain(receiver);
        test::setMode(receiver, mode);
        receiver.setBandFilterIf(0, low, high);
        receiver.setDownConverter(0, kTuned);
        const auto in = test::feed(receiver, station(wanted));
        const auto out = test::feed(receiver, station(-wanted));
        const double ratio =
            test::rms(test::last(out.audio, kTail)) / test::rms(test::last(in.audio, kTail));
        EXPECT_LT(test::decibels(ratio), kStopBandDb);
    }
}

TEST(ReceiverTest, DigitalOffsetsMoveTheirOwnModeOnly)
{
    for (const auto &[mode, heard] :
        {std::pair{Modulation::DIGU, 1800.0}, std::pair{Modulation::DIGL, -600.0}}) {
        Receiver receiver;
        receiver.setBandFilterIf(0, -4000, 4000);
        receiver.setDiguOffset(800);
        receiver.setDiglOffset(1600);
        receiver.setDownConverter(0, kTuned);
        test::setMode(receiver, mode);
        const auto audio = test::last(test::feed(receiver, station(1000)).audio, kTail);
        EXPECT_NEAR(test::level(audio, heard / kRate) / test::rms(audio), 1.0, 0.01);
    }
}

TEST(ReceiverTest, RitSurvivesARateChangeAndTuningDoesNot)
{
    Receiver receiver;
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DRM);
    receiver.setDownConverter(0, kTuned);
    receiver.setRit(0, 500.0);
    receiver.setRit(1, 2000.0); // B has none
    const auto tuned = test::last(test::feed(receiver, station(1000)).audio, kTail);
    EXPECT_NEAR(test::level(tuned, 5500 / kRate) / test::rms(tuned), 1.0, 0.01);
    EXPECT_EQ(receiver.downConverter(0), 0.0);

    receiver.setInputSampleRate(384000.0);
    const auto middle = test::tone(2 * kSecond, 1000 / 384000.0);
    const auto untuned = test::last(test::feed(receiver, middle).audio, kTail);
    EXPECT_NEAR(test::level(untuned, 5500 / kRate) / test::rms(untuned), 1.0, 0.01);
}

TEST(ReceiverTest, ModeChangeClearsInTheOldModeAndStartsTheNewOneInTheNextBlock)
{
    constexpr double kPole = 0.9982947888607377;
    constexpr double kSilence = 3.162277660168379e-07;
    constexpr int kAudioBlock = 512 / 4;
    // From full gain to within 1e-5 of -130 dB.
    const int fadeBlocks =
        int(std::ceil(std::log(1e-5 * kSilence) / std::log(kPole) / kAudioBlock));

    Receiver receiver;
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DSB);
    receiver.setAgcParam(true, 1, 600, 600); // one whole fade, so that the next starts at 1
    const std::vector<COMPLEX> carrier(kSecond, {0.2, 0.1});
    const double steady = test::last(test::feed(receiver, carrier).lineout, 1).front().re;
    ASSERT_GT(steady, 0.1);

    receiver.setModulation(Modulation::DRM);
    const auto heard = test::feed(receiver, carrier);
    const auto &line = heard.lineout;
    constexpr double kFullGain = 2e-5; // the fade-in before ended that close to 1
    for (int n : {1, 100, 1000, 4000})
        EXPECT_NEAR(line[n - 1].re / steady, std::pow(kPole, n) + kSilence, kFullGain) << n;

    const int clearAt = fadeBlocks * kAudioBlock;
    EXPECT_NEAR(line[clearAt - 1].re / steady, kSilence, 2e-5 * kSilence);
    for (int n = clearAt; n < clearAt + test::kLookAhead; ++n)
        ASSERT_EQ(test::magnitude(line[n]), 0.0) << n; // an empty look-ahead
    // After empty filters the carrier grows from nothing, in DSB with its parts in proportion for
    // one block more; the shift of DRM turns it.
    const auto proportion = [&](int block) {
        const COMPLEX sample =
            heard.vac[std::size_t(clearAt + block * kAudioBlock + kAudioBlock - 1)];
        EXPECT_LT(test::magnitude(sample), 0.1 * steady) << block;
        return sample.im / sample.re;
    };
    EXPECT_NEAR(proportion(0), 0.5, 1e-3);
    EXPECT_GT(std::abs(proportion(1) - 0.5), 0.1);

    const double full = test::magnitude(line.back());
    constexpr double kRipple = 1e-4; // of the carrier after the filters' delay, in single precision
    for (int n : {3000, 4000, 6000})
        EXPECT_NEAR(test::magnitude(line[clearAt + n - 1]) / full, 1 - std::pow(kPole, n), kRipple);
}

/// Delay of the gain control, by the likeness of the line-out to the VAC before it, which passes
/// any gain; -1 if nothing is alike.
int lookAhead(Receiver &receiver, int length)
{
    constexpr std::size_t kJudged = 400;
    auto stream = test::noise(length, 5);
    for (COMPLEX &sample : stream)
        sample = {0.1 * sample.re, 0.1 * sample.im};
    const test::Heard heard = test::feed(receiver, stream);
    const auto &line = heard.lineout;
    const auto &vac = heard.vac;
    for (std::size_t lag = 0; lag + kJudged <= line.size(); ++lag) {
        double product = 0.0;
        double linePower = 0.0;
        double vacPower = 0.0;
        for (std::size_t i = line.size() - kJudged; i < line.size(); ++i) {
            product += line[i].re * vac[i - lag].re;
            linePower += line[i].re * line[i].re;
            vacPower += vac[i - lag].re * vac[i - lag].re;
        }
        if (product > 0.9 * std::sqrt(linePower * vacPower))
            return int(lag);
    }
    return -1;
}

TEST(ReceiverTest, NewestAgcParametersComeIntoForceAtTheBottomOfTheFade)
{
    constexpr int kShort = 24000; // ends long before the bottom
    Receiver receiver;
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DRM);
    EXPECT_EQ(lookAhead(receiver, kShort), test::kLookAhead);
    receiver.setAgcParam(false, 2.0, 400.0, 400.0);
    receiver.setAgcParam(true, 9.0, 600.0, 250.9);
    EXPECT_EQ(lookAhead(receiver, kShort), test::kLookAhead);
    EXPECT_EQ(lookAhead(receiver, kSecond), 7200 - 1); // attack limited to 5 ms
    receiver.setAgcParam(false, 0.01, 600.0, 250.0);
    EXPECT_EQ(lookAhead(receiver, kSecond), 0); // off

    // A new output rate ends the fade: the times count from here on, the switch does not.
    receiver.setAgcParam(true, 2.0, 400.0, 0.0);
    receiver.setOutputSampleRate(44100.0);
    EXPECT_EQ(lookAhead(receiver, kSecond), 0);
    receiver.setAgcParam(true, 0.01, 400.0, 0.0);
    EXPECT_EQ(lookAhead(receiver, kSecond), 132 - 1); // 0.1 ms at 44.1 kHz
    receiver.setAgcParam(false, 2.0, 400.0, 0.0);
    receiver.setOutputSampleRate(48000.0);
    EXPECT_EQ(lookAhead(receiver, kSecond), 2880 - 1);
}

TEST(ReceiverTest, AFadeEndedByClearOrRateChangeGoesStraightToTheNewMode)
{
    for (const auto &end :
        {+[](Receiver &r) { r.clear(); }, +[](Receiver &r) { r.setInputSampleRate(96000.0); },
            +[](Receiver &r) { r.setOutputSampleRate(96000.0); }}) {
        Receiver receiver;
        receiver.setBandFilterIf(0, -4000, 4000);
        receiver.setModulation(Modulation::DRM);
        const std::vector<COMPLEX> carrier(kSecond, {0.2, 0.0});
        test::feed(receiver, {carrier.begin(), carrier.begin() + 4096});
        end(receiver);
        const auto heard = test::feed(receiver, carrier);
        EXPECT_GT(test::magnitude(heard.lineout.back()), 0.2);
        EXPECT_NE(heard.lineout.back().re, heard.lineout.back().im);
    }
}

TEST(ReceiverTest, OutputDoesNotDependOnHowTheStreamIsCut)
{
    constexpr double kSinglePrecision = 1e-6; // the decimator rounds sums of another order
    auto stream = test::noise(kSecond / 4, 7);
    for (COMPLEX &sample : stream)
        sample = {0.1 * sample.re, 0.1 * sample.im};
    // The phase loops are left out: on noise they turn a rounding error into another lock.
    for (Modulation mode : {Modulation::AM, Modulation::CW, Modulation::DIGU}) {
        const auto run = [&stream, mode](int block) {
            Receiver receiver;
            test::holdGain(receiver); // it would look once per block
            receiver.setEqualizerEnable(true);
            receiver.setEqualizerGains(QVector<int>(18, 3));
            receiver.setBandFilterIf(0, -4000, 4000);
            receiver.setEnableVfob(true);
            receiver.setDownConverter(0, kTuned);
            receiver.setDownConverter(1, -kTuned);
            test::setMode(receiver, mode);
            return test::feed(receiver, stream, block).audio;
        };
        const auto whole = run(4096);
        EXPECT_LT(test::maxError(whole, run(512)), kSinglePrecision);
        EXPECT_LT(test::maxError(whole, run(333)), kSinglePrecision);
        EXPECT_LT(test::maxError(whole, run(3)), kSinglePrecision); // blocks without any output
    }
}

TEST(ReceiverTest, EachOutletDropsTheBlocksThatDoNotFitIt)
{
    Receiver receiver;
    std::size_t hooked = 0;
    receiver.setSoundCardCallback([&hooked](gsl::span<COMPLEX> block) { hooked += block.size(); });
    auto block = test::noise(4096, 3);
    for (int i = 0; i < 17; ++i) // 1024 audio samples each, one block more than fits
        receiver.process(block.data(), int(block.size()));
    EXPECT_EQ(hooked, 17 * 1024u);
    EXPECT_EQ(receiver.buffer().count(), 16384u);
    EXPECT_EQ(receiver.lineout().count(), 16384u);

    std::vector<COMPLEX> out(1024);
    ASSERT_TRUE(receiver.vac().read(out.data(), 1024));
    receiver.process(block.data(), int(block.size()));
    EXPECT_EQ(receiver.vac().count(), 16384u);
    EXPECT_EQ(receiver.buffer().count(), 16384u);
    receiver.process(block.data(), 0);
    receiver.process(nullptr, 512);
    EXPECT_EQ(hooked, 18 * 1024u);
}

TEST(ReceiverTest, ClearLeavesNothingOfTheSignal)
{
    for (int mode = int(Modulation::AM); mode < int(Modulation::WFM); ++mode) {
        Receiver receiver;
        test::switchToolsOn(receiver);
        test::setMode(receiver, Modulation(mode));
        test::feed(receiver, test::noise(8192, 2));
        receiver.clear();
        EXPECT_EQ(test::rms(test::feed(receiver, std::vector<COMPLEX>(8192)).lineout), 0.0) << mode;
    }
}

TEST(ReceiverTest, WideFmGivesAudioForTheDurationOfItsInput)
{
    for (double rate : {48000.0, 192000.0, 1920000.0, 3072000.0}) {
        Receiver receiver;
        receiver.setInputSampleRate(rate);
        test::feed(receiver, test::noise(40960, 5));
        test::setMode(receiver, Modulation::WFM);
        const auto heard = test::feed(receiver, test::noise(100 * 512, 5));
        EXPECT_NEAR(double(heard.audio.size()), 100 * 512 * kRate / rate, 1.0);
        EXPECT_GT(test::rms(heard.audio), 0.0);
        EXPECT_TRUE(heard.vac.empty());
        EXPECT_FALSE(receiver.wfmIsStereo());
    }
}

TEST(ReceiverTest, WideFmAddsWhatChannelBLastHeld)
{
    constexpr double kVolumeRamp = 1e-3; // it ends that close to 1, and acts on B once a block
    Receiver receiver;
    receiver.setEnableVfob(true);
    receiver.setMute(0, true); // the sum before the switch is B alone
    test::feed(receiver, test::noise(kSecond, 5));
    const auto before = test::feed(receiver, test::noise(512, 6)).audio;
    test::setMode(receiver, Modulation::WFM);
    for (int i = 0; i < 3; ++i) {
        const auto heard = test::feed(receiver, test::noise(512, 6)).audio;
        EXPECT_LT(test::maxError(heard, before), kVolumeRamp * test::rms(before));
    }
}

TEST(ReceiverTest, LevelsStandAtTheirFloorBeforeAnythingIsMeasured)
{
    Receiver receiver;
    double first = 0.0;
    double second = 0.0;
    receiver.getAdc(9, first, second);
    EXPECT_EQ(first + second, -240.0);
    receiver.getDbm(9, first, second);
    EXPECT_EQ(first + second, -240.0);
    EXPECT_EQ(receiver.signalLevel(DspCore::Channel::B), -120.0);
}

TEST(ReceiverDeathTest, ABlockAboveTheLimitStopsTheProgram)
{
    Receiver receiver;
    std::vector<COMPLEX> block(SIGNAL_MAX_SIZE + 1);
    EXPECT_DEATH(receiver.process(block.data(), int(block.size())), "len <= SIGNAL_MAX_SIZE");
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/Receiver.h"
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>

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
constexpr double kAlone = 0.01;       // what there may be beside a component, of its level

struct ModeCase
{
    const char *name;
    Modulation mode;
    double low, high; // Hz, band
    double offset;    // Hz, carrier from the tuned frequency
    double tone;      // Hz, modulates it by half: the amplitude, in narrow FM the phase
    double heard;     // Hz
    bool complex;     // one-sided at the outlets
    double vac;       // Hz, one-sided before the finishing; 0: both parts alike
    void (*set)(Receiver &);
};

std::vector<COMPLEX> station(const ModeCase &c)
{
    std::vector<COMPLEX> stream(kSecond);
    for (std::size_t n = 0; n < stream.size(); ++n) {
        const double t = 2.0 * std::numbers::pi * double(n) / kInputRate;
        const double swing = 0.5 * std::sin(c.tone * t);
        const bool fm = c.mode == Modulation::NFM;
        const auto sample = std::polar(
            fm ? 0.2 : 0.2 * (1.0 + swing), (kTuned + c.offset) * t + (fm ? swing : 0.0));
        stream[n] = {sample.real(), sample.imag()};
    }
    return stream;
}

class ReceiverModeTest : public testing::TestWithParam<ModeCase>
{ };

TEST_P(ReceiverModeTest, BringsAStationToItsPitch)
{
    constexpr double kDistortion = 0.03; // the phase loops' own, the largest
    const ModeCase &c = GetParam();
    Receiver receiver;
    test::holdGain(receiver);
    test::setMode(receiver, c.mode);
    receiver.setBandFilterIf(0, c.low, c.high);
    receiver.setDownConverter(0, kTuned);
    c.set(receiver);
    const test::Heard heard = test::feed(receiver, station(c));
    const auto audio = test::last(heard.audio, kTail);
    const double level = test::level(audio, c.heard / kRate);
    const double mirror = test::level(audio, -c.heard / kRate);

    // All of the power is in the wanted component: alone, or paired with its mirror image.
    const double expected = test::rms(audio) * (c.complex ? 1.0 : std::sqrt(0.5));
    EXPECT_GT(level, 0.01);
    EXPECT_NEAR(level / expected, 1.0, c.tone > 0.0 ? kDistortion : kAlone);
    EXPECT_LT(test::decibels(mirror / level), c.complex ? kStopBandDb : 0.01);
    const auto vac = test::last(heard.vac, kTail);
    if (c.vac == 0.0)
        EXPECT_EQ(test::ear(vac, &COMPLEX::re), test::ear(vac, &COMPLEX::im));
    else
        EXPECT_NEAR(test::level(vac, c.vac / kRate) / test::rms(vac), 1.0, kAlone);
    const auto line = test::last(heard.lineout, kTail);
    const int delay = c.mode == Modulation::NFM ? 0 : test::kLookAhead;
    for (int i = delay; i < kTail; ++i) {
        COMPLEX before = vac[std::size_t(i - delay)];
        if (c.mode == Modulation::LSB)
            std::swap(before.re, before.im);
        ASSERT_EQ(line[std::size_t(i)], (COMPLEX{before.re, c.complex ? before.im : before.re}));
    }
}

void asItIs(Receiver &) { }
void binaural(Receiver &r)
{
    r.setDse(true); // binaural comes first
    r.setBin(true);
}
void digitalOffsets(Receiver &r)
{
    r.setDiguOffset(800);
    r.setDiglOffset(1600);
}

INSTANTIATE_TEST_SUITE_P(Modes, ReceiverModeTest,
    testing::Values(
        ModeCase{"DSB", Modulation::DSB, -4000, 4000, -1200, 0, 1200, false, -1200, asItIs},
        ModeCase{"LSB", Modulation::LSB, -3000, -300, -1000, 0, 1000, false, -1000, asItIs},
        ModeCase{"USB", Modulation::USB, 300, 3000, 1000, 0, 1000, false, 1000, asItIs},
        ModeCase{"DIGL", Modulation::DIGL, 300, 3000, 3200, 0, 1000, true, 1000, asItIs},
        ModeCase{"DRM", Modulation::DRM, -5000, 5000, 1000, 0, 6000, true, 6000, asItIs},
        ModeCase{
            "DiglMoved", Modulation::DIGL, -4e3, 4e3, 1e3, 0, -600, true, -600, digitalOffsets},
        ModeCase{"AM", Modulation::AM, -4000, 4000, 0, 1000, 1000, false, 0, asItIs},
        ModeCase{"SamFollows", Modulation::SAM, -4000, 4000, 15, 1000, 1000, false, 0, asItIs},
        ModeCase{"NFM", Modulation::NFM, -4000, 4000, 150, 300, 300, false, 0, asItIs},
        ModeCase{"CW", Modulation::CW, -300, 300, 50, 0, 750, false, 750, asItIs},
        ModeCase{"BinLSB", Modulation::LSB, -3000, 3000, -1000, 0, 1000, true, -1000, binaural},
        ModeCase{"BinCW", Modulation::CW, -3000, 3000, 1000, 0, 1700, true, 1700, binaural}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(ReceiverTest, RitSurvivesARateChangeAndTuningDoesNot)
{
    Receiver receiver;
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DRM);
    receiver.setDownConverter(0, kTuned);
    receiver.setRit(0, 500.0);
    receiver.setRit(1, 2000.0); // B has none
    const auto expectHeard = [&](double hz, double rate) {
        const auto stream = test::tone(int(rate), hz / rate, 0.2);
        const auto audio = test::last(test::feed(receiver, stream).audio, kTail);
        EXPECT_NEAR(test::level(audio, 5500 / kRate) / test::rms(audio), 1.0, kAlone) << hz;
    };
    expectHeard(kTuned + 1000.0, kInputRate);
    EXPECT_EQ(receiver.downConverter(0), 0.0);
    receiver.setInputSampleRate(384000.0);
    expectHeard(1000.0, 384000.0);
}

TEST(ReceiverTest, NewestAgcParametersComeIntoForceAfterAFadeOrWithARate)
{
    Receiver receiver;
    receiver.setBandFilterIf(0, -4000, 4000);
    test::setMode(receiver, Modulation::DRM);
    test::holdGain(receiver);
    const auto noise = test::scaled(test::noise(kSecond, 5), 0.1);
    const auto expectDelay = [&](int delay) {
        const auto heard = test::feed(receiver, noise);
        const auto line = test::last(heard.lineout, 100);
        const std::vector<COMPLEX> vac(heard.vac.begin(), heard.vac.end() - delay);
        EXPECT_EQ(line, test::last(vac, 100)) << delay;
    };
    receiver.setAgcParam(false, 2.0, 400.0, 400.0);
    receiver.setAgcParam(true, 9.0, 600.0, 250.9);
    expectDelay(7200 - 1); // attack limited to 5 ms
    receiver.setAgcParam(false, 0.01, 600.0, 250.0);
    expectDelay(0); // off
    // A new output rate ends the fade: the times count from here on, the switch does not.
    receiver.setAgcParam(true, 2.0, 400.0, 0.0);
    receiver.setOutputSampleRate(44100.0);
    expectDelay(0);
    receiver.setAgcParam(true, 0.01, 400.0, 0.0);
    expectDelay(132 - 1); // 0.1 ms at 44.1 kHz
}

TEST(ReceiverTest, EachOutletDropsTheBlocksThatDoNotFitIt)
{
    Receiver receiver;
    std::size_t hooked = 0;
    receiver.setSoundCardCallback([&hooked](gsl::span<COMPLEX> block) { hooked += block.size(); });
    auto block = test::noise(4096, 3);
    for (int i = 0; i < 17; ++i) { // 1024 audio samples each, one block more than fits
        if (i == 16)
            test::drained(receiver.vac());
        receiver.process(block.data(), int(block.size()));
    }
    receiver.process(block.data(), 0);
    receiver.process(nullptr, 512);
    EXPECT_EQ(hooked, 17 * 1024u);
    EXPECT_EQ(receiver.buffer().count(), 16384u);
    EXPECT_EQ(receiver.lineout().count(), 16384u);
    EXPECT_EQ(receiver.vac().count(), 1024u);
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

} // namespace

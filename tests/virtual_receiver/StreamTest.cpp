// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rig.h"
#include "support/Signals.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <thread>

namespace
{
using test::Rig;

constexpr double kHalfCode = 0.5 + 1e-5; // rounding, and the product's own
constexpr double kCentreHz = 7.1e6;

void playSamples(
    const std::vector<COMPLEX> &samples, double rateHz, bool repeat, double frequencyHz = kCentreHz)
{
    ASSERT_EQ(vr_scene_samples(&samples[0].re, samples.size(), rateHz, frequencyHz, repeat), 0);
}

/// The frequency to which the device is tuned by the word nearest below.
double onTheGrid(double hertz)
{
    constexpr double kGrid = 122.88e6 / 4294967296.0;
    return std::floor(hertz / kGrid) * kGrid;
}

TEST(StreamTest, FramesCarryTheSceneToHalfACode)
{
    for (const bool shortSamples : {false, true}) {
        Rig rig;
        const double largest = shortSamples ? 32767.0 : 8388607.0;
        const auto scene = test::noise(200, 3);
        playSamples(scene, 96000, /*repeat*/ true);
        rig.tune(kCentreHz);
        rig.stream(1, shortSamples);
        std::size_t at = 0;
        for (const auto &frame : rig.frames(4, shortSamples)) {
            ASSERT_EQ(frame.codes.size(), shortSamples ? 252u : 168u);
            for (std::size_t i = 0; i < frame.codes.size(); i += 2, ++at) {
                EXPECT_NEAR(frame.codes[i], scene[at % 200].re * largest, kHalfCode);
                EXPECT_NEAR(frame.codes[i + 1], scene[at % 200].im * largest, kHalfCode);
            }
        }
    }
}

TEST(StreamTest, FullScaleOverflowAndPeak)
{
    struct Row
    {
        double level;
        std::int32_t code;
        std::uint16_t peakWord;
        std::uint64_t clipped; // samples in two frames
    };
    // 16383 is the 14-bit full scale; bit 15 tells of limiting.
    for (const Row &row : {Row{0.5, 4194304, 8192, 0}, {1.0, 8388607, 16383, 0},
             {1.5, 8388607, 0x8000 | 16383, 168}, {-2.0, -8388608, 0x8000 | 16383, 168}}) {
        Rig rig;
        playSamples(std::vector<COMPLEX>(84, {row.level, 0.25 * row.level}), 48000, true);
        rig.tune(kCentreHz);
        rig.stream(0);
        for (const auto &frame : rig.frames(2)) {
            EXPECT_EQ(frame.codes[166], row.code) << row.level;
            EXPECT_EQ(frame.peakWord, row.peakWord) << row.level;
        }
        EXPECT_EQ(rig.status().clipped_samples, row.clipped) << row.level;
    }
}

TEST(StreamTest, AttenuatorAndGainMoveTheLevelInHalfDecibels)
{
    constexpr double kRounding = 0.01; // dB, of 24-bit codes at the lowest level here
    struct Row
    {
        std::uint32_t attenuator;
        std::uint32_t gainSteps;
        double decibels;
    };
    for (const Row &row : {Row{63, 0, -31.5}, {200, 0, -31.5}, {0, 15, 6.0}, {10, 4, -3.0}}) {
        Rig rig;
        playSamples(test::tone(480, 0.1, 0.25), 48000, true);
        rig.tune(kCentreHz);
        rig.send(4, row.attenuator);
        rig.send(3, 0x2500 | row.gainSteps << 4);
        rig.stream(0);
        EXPECT_NEAR(test::decibels(test::rms(rig.samples(480)) / 0.25), row.decibels, kRounding)
            << row.attenuator << ' ' << row.gainSteps;
    }
}

TEST(StreamTest, TuningMovesAToneToItsPlaceAtEveryRate)
{
    constexpr double kLevel = 1e-4;    // the filter's ripple and the 24 bits
    constexpr double kSpurious = 1e-5; // -100 dB: what is left when the tone is taken away
    constexpr double kToneHz = 3000.0; // whole cycles in the scene, so it repeats seamlessly
    constexpr double kTunedHz = kCentreHz - 7000.0;
    constexpr int kLength = 4096;
    // Each rate of the device at another rate of the scene: odd, lower, higher, its own.
    constexpr double kOthers[] = {44100, 192000, 250000, 768000};
    for (unsigned code = 0; code < 9; ++code) {
        const double rate = test::kRatesHz[code];
        const double sceneRate = kOthers[code % 4];
        Rig rig;
        // Past the start of the resampling filter, whose reach is counted at the lower rate.
        const int settled = int(40.0 * std::max(1.0, rate / sceneRate));
        playSamples(test::tone(int(sceneRate), kToneHz / sceneRate, 0.5), sceneRate, true);
        rig.tune(kTunedHz);
        rig.stream(code);
        auto received = rig.samples(settled + kLength);
        received.erase(received.begin(), received.begin() + settled);
        const double at = (kCentreHz + kToneHz - onTheGrid(kTunedHz)) / rate;
        const COMPLEX found = test::component(received, at);
        EXPECT_NEAR(test::magnitude(found), 0.5, kLevel) << rate << ' ' << sceneRate;
        const auto expected =
            test::tone(kLength, at, test::magnitude(found), std::atan2(found.im, found.re));
        EXPECT_LT(test::maxError(received, expected), kSpurious) << rate << ' ' << sceneRate;
    }
}

TEST(StreamTest, AliasesAndImagesAreAHundredDecibelsDown)
{
    constexpr double kRejection = -100.0; // dB, in the middle 80 % of the band
    constexpr double kSideLobes = 10.0;   // the window's own are 92 dB below a tone in the band
    struct Row
    {
        double sceneRate;
        unsigned code;
        double sceneHz; // where the tone is in the recording
    };
    for (const Row &row : {Row{192000, 0, 28800.5}, // just too high: would alias to -19200
             {250000, 1, 57601}, {44100, 2, -17640}}) {
        Rig rig;
        const double rate = test::kRatesHz[row.code];
        playSamples(test::tone(int(2 * row.sceneRate), row.sceneHz / row.sceneRate, 0.9),
            row.sceneRate, true);
        rig.tune(kCentreHz);
        rig.stream(row.code);
        auto received = rig.samples(2048 + 400);
        received.erase(received.begin(), received.begin() + 400);
        const double limit =
            std::fabs(row.sceneHz) < rate / 2 ? kRejection + kSideLobes : kRejection;
        for (double hz = -0.4 * rate; hz <= 0.4 * rate; hz += rate / 512) {
            const bool isTone = std::fabs(hz - row.sceneHz) < 6.0 * rate / 2048;
            const double level = test::magnitude(test::component(received, hz / rate)) / 0.9;
            ASSERT_TRUE(isTone || test::decibels(level) < limit) << hz << " of " << rate;
        }
    }
}

TEST(StreamTest, ARecordingTunedOutOfTheBandDoesNotComeBackAtTheOtherEdge)
{
    // Its tone lies 10 kHz beyond the upper edge, so the lower half of the band must stay empty.
    constexpr double kEmpty = 1e-5;
    Rig rig;
    playSamples(test::tone(48000, 16000.0 / 48000, 0.9), 48000, true);
    rig.tune(kCentreHz - 90000.0);
    rig.stream(2);
    rig.samples(2000);
    EXPECT_LT(test::rms(rig.samples(4096)), kEmpty);
}

TEST(StreamTest, RetuningDuringAStreamKeepsThePhase)
{
    // A step of phase at the change would exceed the step from sample to sample of the tones.
    constexpr double kOvershoot = 1.2; // of the filter at the step in frequency
    constexpr double kLargest = 2.0 * M_PI * 1000.0 / 192000.0 * kOvershoot;
    Rig rig;
    playSamples(std::vector<COMPLEX>(48000, {0.5, 0.0}), 48000, true);
    rig.tune(kCentreHz - 1000.0);
    rig.stream(2);
    auto received = rig.samples(840);
    rig.tune(kCentreHz + 500.0);
    const auto more = rig.samples(840);
    received.insert(received.end(), more.begin(), more.end());
    for (std::size_t i = 200; i + 1 < received.size(); ++i) {
        const std::complex<double> a(received[i].re, received[i].im);
        const std::complex<double> b(received[i + 1].re, received[i + 1].im);
        ASSERT_LT(std::fabs(std::arg(b / a)), kLargest) << i;
    }
}

TEST(StreamTest, CreditIsSpentWhollyAndNothingIsLostInATimeout)
{
    Rig rig;
    FT_SetTimeouts(rig.handle(), 20, 20);
    vr_set_pace(VR_PACE_CREDIT);
    const auto scene = test::noise(84 * 8, 11);
    playSamples(scene, 48000, true);
    rig.tune(kCentreHz);
    rig.stream(0);
    vr_add_credit(84 * 7);
    EXPECT_TRUE(rig.read(8 * 512).empty());
    vr_add_credit(84);
    EXPECT_LT(test::maxError(rig.samples(84 * 8), scene), kHalfCode / 8388607.0);
    EXPECT_TRUE(rig.read(512).empty());
}

TEST(StreamTest, TheClockSetsTheByteRateInRealTime)
{
    constexpr double kSeconds = 0.2;
    constexpr double kBusyMachine = 0.7; // less than the second ahead
    const struct
    {
        unsigned code;
        const char *fault; // of the clock
        double speed;
    } rows[] = {{0, "none", 1.0}, {5, "none", 1.0}, {0, "clock:-50000", 0.95}};
    for (const auto &[code, fault, speed] : rows) {
        const double rate = test::kRatesHz[code];
        Rig rig;
        ASSERT_EQ(vr_fault(fault), 0) << vr_last_error();
        playSamples(test::tone(480, 0.1, 0.5), rate, true);
        rig.stream(code);
        rig.read(std::size_t(rate / 84) * 512); // a second ahead, which does not count
        const auto start = std::chrono::steady_clock::now();
        vr_set_pace(VR_PACE_REAL_TIME);
        const auto frames = std::size_t(kSeconds * rate / 84);
        for (std::size_t i = 0; i < frames; ++i)
            ASSERT_EQ(rig.read(512).size(), 512u);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        EXPECT_GE(took.count(), double(frames) * 84 / rate / speed);
        EXPECT_LT(took.count(), kSeconds + kBusyMachine);
    }
}

TEST(StreamTest, ASlowReaderLosesFramesAndATimelyReadTimesOutShort)
{
    Rig rig;
    vr_set_pace(VR_PACE_REAL_TIME);
    FT_SetTimeouts(rig.handle(), 30, 30);
    playSamples(test::noise(4800, 2), 3072000, true);
    rig.stream(8);
    std::this_thread::sleep_for(std::chrono::milliseconds(80));
    EXPECT_GT(rig.status().fifo_overruns, 100u); // 80 ms are 2925 frames, the FIFO holds 1152
    rig.stop();
    rig.stream(0);
    const auto start = std::chrono::steady_clock::now();
    const double frames = double(rig.read(1 << 20).size()) / 512;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(frames, std::floor(0.03 * 48000 / 84));
    EXPECT_LE(frames, took.count() * 48000 / 84 + 1);
    EXPECT_LT(took.count(), 0.2);
}

TEST(StreamTest, AWaitingReadLetsOthersInAndIsWokenByThem)
{
    const struct
    {
        const char *what;
        void (*act)(Rig &);
        FT_STATUS status;
        DWORD received;
    } rows[] = {
        {"a command", [](Rig &rig) { rig.tune(1e6), vr_add_credit(84); }, FT_OK, 512},
        {"close", [](Rig &rig) { FT_Close(rig.handle()); }, FT_INVALID_HANDLE, 0},
        {"plug out", [](Rig &) { vr_set_plugged(0); }, FT_IO_ERROR, 0},
    };
    for (const auto &row : rows) {
        Rig rig;
        FT_SetTimeouts(rig.handle(), 0, 0); // without a limit
        vr_set_pace(VR_PACE_CREDIT);
        rig.stream(0);
        std::thread hand([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            row.act(rig);
        });
        std::uint8_t buffer[512];
        DWORD received = 0;
        EXPECT_EQ(FT_Read(rig.handle(), buffer, sizeof buffer, &received), row.status) << row.what;
        EXPECT_EQ(received, row.received) << row.what;
        hand.join();
    }
}
} // namespace

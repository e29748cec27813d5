// SPDX-License-Identifier: GPL-3.0-or-later
// The whole road at every rate of the device: frames of the virtual receiver in, audio out.
#include "support/Road.h"
#include "support/Signals.h"

#include "virtual_receiver/virtual_receiver.h"

#include <QLoggingCategory>
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <ostream>

namespace
{
using DspCore::Modulation;

constexpr double kAudioRate = 48000.0;
constexpr double kToneHz = 1000.0;
constexpr double kLevel = 0.05; // of each tone: all together stay below full scale

// Mode fade, volume ramp, filter delay and the AGC's look-ahead are over by then.
constexpr std::size_t kSettle = 24000;
constexpr std::size_t kMeasured = 24000;

struct Case
{
    double rateHz;
    Modulation mode;
    double sign() const { return mode == Modulation::USB ? 1.0 : -1.0; }
};

std::ostream &operator<<(std::ostream &out, const Case &c)
{
    return out << c.rateHz << (c.mode == Modulation::USB ? " USB" : " LSB");
}

test::Road::Settings settingsOf(const Case &c)
{
    test::Road::Settings settings;
    settings.rateHz = c.rateHz;
    settings.mode = c.mode;
    settings.centerHz = 14.1e6;
    settings.tuneHz = 14.1e6 + 4000.0;
    settings.lowHz = c.mode == Modulation::USB ? 300.0 : -2700.0;
    settings.highHz = c.mode == Modulation::USB ? 2700.0 : -300.0;
    return settings;
}

// Tones at offsets from the tuned frequency, for one tenth of a second, which repeats without a
// seam.
void setScene(const test::Road::Settings &settings, const std::vector<double> &offsetsHz)
{
    const int length = static_cast<int>(settings.rateHz / 10.0);
    std::vector<COMPLEX> scene(static_cast<std::size_t>(length), COMPLEX{0.0, 0.0});
    for (std::size_t i = 0; i < offsetsHz.size(); ++i) {
        const double hz = settings.tuneHz - settings.centerHz + offsetsHz[i];
        test::add(scene, test::tone(length, hz / settings.rateHz, kLevel, 0.7 * double(i)));
    }
    ASSERT_EQ(
        vr_scene_samples(&scene[0].re, scene.size(), settings.rateHz, settings.centerHz, 1), 0)
        << vr_last_error();
}

std::vector<COMPLEX> listen(const Case &c, const std::vector<double> &offsetsHz)
{
    vr_reset();
    vr_set_pace(VR_PACE_CREDIT);
    const test::Road::Settings settings = settingsOf(c);
    setScene(settings, offsetsHz);
    test::Road road(settings, vr_add_credit);
    road.receive(kSettle);
    return road.receive(kMeasured);
}

// Frequency of a lone tone, from the phase that it gains from the first half to the second.
double frequencyOf(const std::vector<COMPLEX> &audio, double nearHz)
{
    const auto half = static_cast<std::ptrdiff_t>(audio.size() / 2);
    const double f = nearHz / kAudioRate;
    const COMPLEX first = test::component({audio.begin(), audio.begin() + half}, f);
    const COMPLEX second = test::component({audio.begin() + half, audio.end()}, f);
    const std::complex<double> turned =
        std::complex(second.re, second.im) / std::complex(first.re, first.im);
    const double gained = std::arg(turned);
    const double periods = f * static_cast<double>(half);
    const double more = std::remainder(gained / (2.0 * std::numbers::pi) - periods, 1.0);
    return nearHz + more / static_cast<double>(half) * kAudioRate;
}

// Strongest image of the 3/160 resampler within the band filter, against the wanted signal. Its 24
// coefficients are a bare sinc; an image of order k of a tone at f leaves through their response at
// f + k times the input rate, seen at three times that rate.
double imageRatioOf3To160(double toneHz, const std::vector<double> &unwantedHz)
{
    constexpr int kUp = 3;
    constexpr int kTaps = 8 * kUp;
    constexpr double kInHz = 2560000.0;
    const auto response = [](double hz) {
        std::complex<double> sum = 0.0;
        for (int i = 0; i < kTaps; ++i) {
            const double x = i - (kTaps - 1) * 0.5;
            const double tap = std::sin(2.0 * std::numbers::pi * 0.4 / kUp * x) / x;
            sum += std::polar(tap, -2.0 * std::numbers::pi * hz / (kUp * kInHz) * i);
        }
        return std::abs(sum);
    };
    double worst = 0.0;
    for (const double hz : unwantedHz) {
        for (int image = 1; image < kUp; ++image) {
            const double out = std::remainder(hz + image * kInHz, kAudioRate);
            if (std::abs(out) > 200.0 && std::abs(out) < 2800.0)
                worst = std::max(worst, response(hz + image * kInHz));
        }
    }
    return worst / response(toneHz);
}

class RoadTest : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override { QLoggingCategory::setFilterRules("*.debug=false"); }
};

TEST_P(RoadTest, WantedToneIsOnItsFrequencyAndAllOthersAreGone)
{
    const Case c = GetParam();
    const std::vector<COMPLEX> wanted = listen(c, {c.sign() * kToneHz});
    const double level = test::rms(wanted);
    ASSERT_GT(level, 0.01 * kLevel);

    constexpr double kFrequencyTolerance = 5e-4; // Hz: the tone reads 1000.000
    EXPECT_NEAR(frequencyOf(wanted, kToneHz), kToneHz, kFrequencyTolerance);

    // The other sideband, both sides of the filter's edges, far out, and what folds onto the
    // audio when the decimation to 48 kHz is weak. The last two meet the images of 3/160.
    std::vector<double> unwanted = {
        -1000.0, -300.0, -2700.0, 100.0, 3100.0, 5000.0, -9000.0, 15500.0, -15000.0, 17000.0};
    for (double &hz : unwanted)
        hz *= c.sign();
    for (const double hz : {-47000.0, 49000.0, 95000.0, -97000.0, 145000.0, 700000.0}) {
        if (std::abs(c.sign() * hz + 4000.0) < 0.49 * c.rateHz)
            unwanted.push_back(c.sign() * hz);
    }
    const double rest = test::decibels(test::rms(listen(c, unwanted)) / level);

    constexpr double kRejectionDb = -90.0;
    if (c.rateHz == 2560000.0) {
        // Several images may add up in phase.
        constexpr double kSeveralImagesDb = 6.1;
        std::vector<double> positions = unwanted;
        const double bound = test::decibels(imageRatioOf3To160(c.sign() * kToneHz, positions));
        EXPECT_LT(rest, bound + kSeveralImagesDb);
        EXPECT_GT(rest, bound - kSeveralImagesDb) << "better than the coefficients allow";
    } else {
        EXPECT_LT(rest, kRejectionDb);
    }
}

std::vector<Case> allCases()
{
    std::vector<Case> cases;
    for (const double rate : {48e3, 96e3, 192e3, 384e3, 768e3, 1536e3, 1920e3, 2560e3, 3072e3}) {
        cases.push_back({rate, Modulation::USB});
        cases.push_back({rate, Modulation::LSB});
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Rates, RoadTest, testing::ValuesIn(allCases()));

// A pure tone obeys x[n] = 2 cos(w) x[n-1] - x[n-2]; a sample lost or doubled anywhere breaks that
// by about amplitude times w.
TEST(RoadContinuityTest, NoSampleIsLostOrRepeatedInAMinute)
{
    QLoggingCategory::setFilterRules("*.debug=false");
    constexpr double kHz = 1230.0;
    constexpr std::size_t kMinute = 60 * 48000;
    constexpr double kTolerance = 1e-6; // single-precision audio and 24-bit samples
    vr_reset();
    vr_set_pace(VR_PACE_CREDIT);
    const test::Road::Settings settings = settingsOf({192000.0, Modulation::USB});
    setScene(settings, {kHz});
    test::Road road(settings, vr_add_credit);
    road.receive(kSettle);
    const std::vector<COMPLEX> audio = road.receive(kMinute);

    const double factor = 2.0 * std::cos(2.0 * std::numbers::pi * kHz / kAudioRate);
    std::size_t breaks = 0;
    for (std::size_t n = 2; n < audio.size(); ++n) {
        const double residual = audio[n].re - factor * audio[n - 1].re + audio[n - 2].re;
        breaks += std::abs(residual) > kTolerance;
    }
    EXPECT_EQ(breaks, 0u);
    EXPECT_GT(test::rms(audio), 0.01 * kLevel);
}
} // namespace

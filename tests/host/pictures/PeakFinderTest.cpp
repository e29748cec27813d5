// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/PeakFinder.h"

#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <vector>

namespace
{
constexpr host::PictureAxis kAxis{7.1e6, 192e3};
constexpr int kBins = 256;
constexpr double kBinHz = 750.0; // 192 kHz / 256
constexpr double kToneDb = -37.0;
constexpr double kLevelErrorDb = 0.1;
constexpr double kFrequencyError = 0.03; // of a bin

/// A tone under a Blackman-Nuttall window, transformed by the definition of the DFT.
std::vector<float> toneLine(double bin)
{
    constexpr double kTurn = 2.0 * std::numbers::pi;
    std::vector<float> line;
    for (int k = 0; k < kBins; ++k) {
        std::complex<double> sum = 0.0;
        double windowSum = 0.0;
        for (int n = 0; n < kBins; ++n) {
            const double x = kTurn * n / (kBins - 1);
            const double window = 0.3635819 - 0.4891775 * std::cos(x)
                + 0.1365995 * std::cos(2.0 * x) - 0.0106411 * std::cos(3.0 * x);
            sum += std::polar(window, kTurn * (bin - k) / kBins * n);
            windowSum += window;
        }
        line.push_back(float(kToneDb + 20.0 * std::log10(std::abs(sum) / windowSum)));
    }
    return line;
}

TEST(PeakFinderTest, ReadsAToneBetweenTheBins)
{
    for (const double bin : {40.0, 128.25, 128.5, 200.75, 99.9}) {
        const auto line = toneLine(bin);
        const double hertz = 7.1e6 + (bin - 128.0) * kBinHz;
        const auto peak = host::PeakFinder(kAxis, line).peakNear(hertz + 900.0, 2000.0);
        ASSERT_TRUE(peak) << bin;
        EXPECT_NEAR(peak->levelDb, kToneDb, kLevelErrorDb) << bin;
        EXPECT_NEAR(peak->frequencyHz, hertz, kFrequencyError * kBinHz) << bin;
    }
}

TEST(PeakFinderTest, LooksOnlyWhereItIsTold)
{
    std::vector<float> line(kBins, -120.0f);
    line[100] = -30.0f; // strong, elsewhere
    line[150] = -60.0f;
    const auto frequency = [](int bin) { return 7.1e6 + (bin - 128) * kBinHz; };
    const host::PeakFinder finder(kAxis, line);
    EXPECT_FLOAT_EQ(finder.peakNear(frequency(148), 3.0 * kBinHz)->levelDb, -60.0f);
    EXPECT_FLOAT_EQ(finder.peakNear(frequency(150), 0.0)->levelDb, -60.0f);
    EXPECT_FLOAT_EQ(finder.peakNear(frequency(148), 60.0 * kBinHz)->levelDb, -30.0f);
    // Beside a peak the level is that of the slope, not an extrapolation.
    EXPECT_FLOAT_EQ(finder.peakNear(frequency(149), 0.0)->levelDb, -120.0f);
    const std::vector<float> slope{-40.0f, -20.0f, -10.0f, -90.0f};
    EXPECT_EQ(host::PeakFinder({0.0, 4.0}, slope).peakNear(-1.0, 0.0)->levelDb, -20.0);
    EXPECT_FALSE(finder.peakNear(frequency(-2), 60.0 * kBinHz));
    EXPECT_FALSE(finder.peakNear(frequency(257), 60.0 * kBinHz));
    EXPECT_FALSE(host::PeakFinder(kAxis, {}).peakNear(7.1e6, 1e3));
}

TEST(PeakFinderTest, BearsLinesWithoutAParabola)
{
    constexpr float kNothing = -std::numeric_limits<float>::infinity();
    constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
    const struct
    {
        std::vector<float> line;
        double level;
    } cases[] = {
        {{-20.0f, -50.0f, -60.0f, -70.0f}, -20.0}, // at the end of the line
        {{-50.0f, -50.0f, -50.0f, -50.0f}, -50.0},
        {{kNothing, -40.0f, kNothing, kNothing}, -40.0},
        {{kNotANumber, -40.0f, kNotANumber, -60.0f}, -40.0},
    };
    for (const auto &[line, level] : cases) {
        const auto peak = host::PeakFinder({0.0, 4.0}, line).peakNear(0.0, 10.0);
        ASSERT_TRUE(peak);
        EXPECT_EQ(peak->levelDb, level);
    }
    const std::vector<float> none(4, kNotANumber);
    EXPECT_FALSE(host::PeakFinder({0.0, 4.0}, none).peakNear(0.0, 10.0));
}
} // namespace

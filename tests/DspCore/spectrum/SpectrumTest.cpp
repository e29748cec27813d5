// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpectrumRig.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <QObject>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using DspCore::Spectrum;
using test::frameOf;
using test::Lines;

namespace
{
constexpr double kToleranceDb = 2e-3; // FFT, window and logarithm in single precision
constexpr double kRoundOffDb = 1e-4;  // of values up to 200 in single precision
constexpr float kNoTone = -90.0f;     // dB, the window's side lobes

/// The cubic through the four points around `position`, by Lagrange's products; points outside the
/// line count as 0.
double lagrange(const std::vector<float> &line, double position)
{
    const int start = int(std::floor(position)) - 1;
    double sum = 0.0;
    for (int i = start; i < start + 4; ++i) {
        double weight = i >= 0 && i < int(line.size()) ? double(line[std::size_t(i)]) : 0.0;
        for (int j = start; j < start + 4; ++j) {
            if (j != i)
                weight *= (position - j) / (i - j);
        }
        sum += weight;
    }
    return sum;
}

/// A line stretched to `count` points. The first three of count + 3 equidistant outputs lie in the
/// silence before it, and the cubic comes two points late.
std::vector<double> stretched(const std::vector<float> &line, int count)
{
    std::vector<double> out;
    for (int j = 0; j < count; ++j)
        out.push_back(lagrange(line, (j + 3.0) * double(line.size()) / (count + 3.0) - 2.0));
    return out;
}

class SpectrumTest : public testing::Test
{
protected:
    void SetUp() override
    {
        spectrum.setUpdateInterval(40);
        spectrum.open();
    }

    test::HeldPool held;
    Spectrum spectrum{held.pool(), 3, nullptr};
};

int peak(const std::vector<float> &line)
{
    return int(std::max_element(line.begin(), line.end()) - line.begin());
}

// Mean of the window over a block: its cosines cancel over N - 1 samples, and the last sample is
// the small value that both ends have.
double toneDb(int size)
{
    const double sum = 0.3635819 * (size - 1) + 0.0003628;
    return 20.0 * std::log10(sum / size / 0.3630780547701013);
}

TEST_F(SpectrumTest, FullScaleToneReadsZeroAtItsPlaceInTheLine)
{
    for (const int size : {256, 65536}) {
        spectrum.setSize(size);
        for (const int bin : {0, 1, size / 8, -size / 2}) {
            const Lines lines = frameOf(spectrum, test::tone(size, double(bin) / size));
            ASSERT_EQ(lines.spectrum.size(), std::size_t(size));
            ASSERT_EQ(lines.waterfall.size(), std::size_t(size));
            const auto place = std::size_t(size / 2 + bin);
            EXPECT_EQ(peak(lines.spectrum), int(place));
            EXPECT_NEAR(lines.spectrum[place], toneDb(size) + 0.7, kToleranceDb) << size;
            EXPECT_NEAR(lines.waterfall[place], toneDb(size), kToleranceDb) << size;
            // The side lobes of the window, and no other tone: no image, no zero frequency.
            for (int n = 0; n < size; ++n) {
                const int distance = std::abs(n - int(place));
                if (std::min(distance, size - distance) <= 4)
                    continue;
                ASSERT_LT(lines.waterfall[std::size_t(n)], kNoTone) << size << ": " << n;
            }
        }
    }
}

TEST_F(SpectrumTest, SizeIsRoundedUpAndTheMiddleOfTheLineStretched)
{
    struct
    {
        int asked, size, visible;
        double edge; // of a rate of 48000, at each end
    } const rows[] = {{255, 512, 459, 2500}, {256, 256, 229, 2500}, {1025, 2048, 1835, 2500},
        {512, 512, 256, 12000}, {512, 512, 512, -1000}, {512, 512, 512, 30000}};
    for (const auto &row : rows) {
        if (row.edge != 2500)
            spectrum.removeEdges(row.edge, 48000.0);
        spectrum.setSize(row.asked);
        ASSERT_EQ(spectrum.size(), row.size);
        ASSERT_TRUE(spectrum.isOpen());
        spectrum.setRemoveSide(false);
        const Lines whole = frameOf(spectrum, test::noise(row.size, /*seed*/ 1));
        spectrum.setRemoveSide(true);
        spectrum.makeFrame();
        const Lines cut = test::read(spectrum);
        for (const auto line : {&Lines::spectrum, &Lines::waterfall}) {
            const auto first = (whole.*line).begin() + (row.size - row.visible) / 2;
            std::vector<double> expected((whole.*line).begin(), (whole.*line).end());
            // Edges wider than the band leave the line as it is.
            if (row.visible != row.size)
                expected = stretched({first, first + row.visible}, row.size);
            EXPECT_LT(
                test::maxError({(cut.*line).begin(), (cut.*line).end()}, expected), kRoundOffDb)
                << row.asked << " with edges " << row.edge;
        }
    }
}

TEST_F(SpectrumTest, SettingASizeStartsTheAveragersAnew)
{
    spectrum.setAveraging(30);
    spectrum.setWaterfallAveraging(true);
    for (const int asked : {1024, 1000, 300}) { // the second one comes to the size that is there
        frameOf(spectrum, test::tone(1024, 0.25));
        spectrum.setSize(asked);
        const Lines lines = frameOf(spectrum, std::vector<COMPLEX>(1024));
        EXPECT_NEAR(
            *std::max_element(lines.spectrum.begin(), lines.spectrum.end()), -169.3, kToleranceDb);
        EXPECT_NEAR(*std::max_element(lines.waterfall.begin(), lines.waterfall.end()), -174.6355,
            kToleranceDb);
    }
}

TEST_F(SpectrumTest, WindowHoldsTheNewestSamplesInOrderUntilItIsCleared)
{
    auto stream = test::tone(1100, 0.125);
    COMPLEX *at = stream.data();
    for (const int length : {1, 399, 300, 400}) { // wraps, and the first 588 samples leave
        spectrum.append(at, length);
        at += length;
    }
    spectrum.makeFrame(); // a seam in the tone would splatter
    Lines lines = test::read(spectrum);
    EXPECT_NEAR(lines.waterfall[320], toneDb(512), kToleranceDb);
    EXPECT_LT(lines.waterfall[300], kNoTone);

    spectrum.clear();                    // the window begins anew, no longer in its middle
    auto longer = test::tone(512, 0.25); // of a block beyond the size the first samples count
    const auto unseen = test::tone(512, -0.25);
    longer.insert(longer.end(), unseen.begin(), unseen.end());
    lines = frameOf(spectrum, longer);
    EXPECT_NEAR(lines.waterfall[384], toneDb(512), kToleranceDb);
    EXPECT_LT(lines.waterfall[128], kNoTone);
    EXPECT_LT(lines.waterfall[300], kNoTone);

    COMPLEX sample{1.0, 0.0};
    test::LogCapture log;
    spectrum.append(nullptr, 600);
    spectrum.append(&sample, -1);
    spectrum.append(nullptr, 0);
    const QString expected = QString("void DspCore::Spectrum::append(COMPLEX *, int) 175 %1 512")
                                 .arg(ippGetStatusString(ippStsNullPtrErr));
    ASSERT_EQ(log.warnings().size(), 2);
    EXPECT_EQ(log.warnings().first(), expected);
    spectrum.makeFrame();
    EXPECT_EQ(test::read(spectrum).spectrum, lines.spectrum) << "what is not there changes nothing";
}

TEST_F(SpectrumTest, ClosedTakesNothingAndOpeningStartsTheAverageAnew)
{
    constexpr double kAverageDb = 0.01;
    int signalled = 0;
    QObject::connect(
        &spectrum, QOverload<>::of(&Spectrum::spectrum), [&signalled] { ++signalled; });
    const std::vector<COMPLEX> silence(512);
    spectrum.setAveraging(2);
    const Lines before = frameOf(spectrum, test::tone(512, 0.25));
    spectrum.close();
    spectrum.append(test::tone(512, -0.25).data(), 512);
    for (const bool open : {false, true}) {
        if (open)
            spectrum.open();
        spectrum.run();
        EXPECT_EQ(signalled, open);
        EXPECT_EQ(test::read(spectrum).spectrum, before.spectrum);
    }
    spectrum.open(); // it is open already
    EXPECT_NEAR(frameOf(spectrum, silence).spectrum[384], toneDb(512) - 2.31, kAverageDb);
    spectrum.close();
    spectrum.open();
    EXPECT_NEAR(frameOf(spectrum, silence).spectrum[384], -169.3, kAverageDb);
}
} // namespace

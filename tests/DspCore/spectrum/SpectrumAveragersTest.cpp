// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumExpAverager.h"
#include "DspCore/spectrum/SpectrumLinearAverager.h"
#include "DspCore/spectrum/SpectrumRmsAverager.h"
#include "support/Signals.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

using namespace DspCore;

namespace
{
constexpr int kBins = 300;
constexpr double kToleranceDb = 1e-3; // sums of 30 in single precision, and its logarithm

using Line = std::vector<float>;

/// Power of one bin in the frames so far, newest first.
using History = std::vector<double>;

/// Bins of very different power, from frame to frame as well, and one that is always empty.
Line frame(int number)
{
    Line line;
    for (const COMPLEX &sample : test::noise(kBins, unsigned(number)))
        line.push_back(float(std::pow(10.0, -6.0 + 3.0 * sample.re)));
    line[7] = 0.0f;
    return line;
}

double db(double power)
{
    return 10.0 * std::log10(power + 1e-17);
}

/// Decibels of the mean of the newest lines, as a power mean of the given exponent.
template <int exponent>
double meanDb(const History &history, std::size_t size)
{
    const std::size_t rows = std::min(size, history.size());
    double sum = 0.0;
    for (std::size_t k = 0; k < rows; ++k)
        sum += std::pow(history[k], exponent);
    return db(std::pow(sum / double(rows), 1.0 / exponent)) + 0.7;
}

/// By averaging size 5 or 30: the weight of the newest line, of one line more with each line back,
/// and the offset that goes with it.
double expDb(const History &history, std::size_t size)
{
    const double weight = size == 30 ? 0.946896551 : 0.7744827585;
    double sum = 0.0;
    for (std::size_t k = 0; k < history.size(); ++k)
        sum += std::pow(weight, double(k + 1)) * history[k];
    return db(sum) + (size == 30 ? -11.263 : -4.6355);
}

struct Case
{
    const char *name;
    std::function<std::unique_ptr<SpectrumAveragerAbstract>()> make;
    double (*model)(const History &, std::size_t);
    double unreadDb; // of a bin before the first line
};

const Case kCases[] = {
    {"Linear", [] { return std::make_unique<SpectrumLinearAverager>(); }, meanDb<1>, -180.0},
    {"Rms", [] { return std::make_unique<SpectrumRmsAverager>(); }, meanDb<2>, -180.0},
    {"Exp", [] { return std::make_unique<SpectrumExpAverager>(); }, expDb, 0.0},
};

class SpectrumAveragersTest : public testing::TestWithParam<Case>
{
protected:
    std::unique_ptr<SpectrumAveragerAbstract> averager = GetParam().make();
    std::vector<History> histories = std::vector<History>(kBins);

    void SetUp() override { averager->setSpectrumSize(kBins); }

    void write(int number)
    {
        Line line = frame(number);
        averager->write(line.data(), line.size());
        for (std::size_t bin = 0; bin < kBins; ++bin)
            histories[bin].insert(histories[bin].begin(), line[bin]);
    }

    Line read(std::size_t size = kBins)
    {
        Line line(size, 1.0f);
        averager->read(line.data(), size);
        return line;
    }

    void expectModel(std::size_t size)
    {
        const Line line = read();
        for (std::size_t bin = 0; bin < kBins; ++bin)
            ASSERT_NEAR(line[bin], GetParam().model(histories[bin], size), kToleranceDb) << bin;
    }

    void expectEmpty()
    {
        EXPECT_EQ(read(), Line(kBins, float(GetParam().unreadDb)));
        histories.assign(kBins, {});
    }
};

TEST_P(SpectrumAveragersTest, FollowsTheModelUntilAnythingStartsItAnew)
{
    const std::function<void()> restarts[] = {
        [&] { averager->setAveragingSize(5); },
        [&] { averager->setAveragingSize(5); }, // the present one too
        [&] { averager->reset(); },
        [&] {
            averager->setSpectrumSize(kBins / 2);
            averager->setSpectrumSize(kBins);
        },
        [&] { averager->setAveragingSize(std::size_t(-1)); }, // becomes 30
    };
    for (const auto &restart : restarts) {
        restart();
        expectEmpty();
        for (int number = 0; number < 35; ++number) {
            averager->setSpectrumSize(kBins); // no change
            write(number);
            expectModel(averager->averagingSize());
        }
    }
    EXPECT_EQ(averager->averagingSize(), 30u);
}

INSTANTIATE_TEST_SUITE_P(All, SpectrumAveragersTest, testing::ValuesIn(kCases),
    [](const auto &info) { return info.param.name; });

} // namespace

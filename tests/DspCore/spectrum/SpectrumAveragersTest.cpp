// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumAverager.h"
#include "DspCore/spectrum/SpectrumExpAverager.h"
#include "DspCore/spectrum/SpectrumLinearAverager.h"
#include "DspCore/spectrum/SpectrumRmsAverager.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <ostream>

using namespace DspCore;

namespace
{
constexpr int kBins = 300;
constexpr int kFrames = 70;
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
double meanDb(const History &history, std::size_t size, double exponent)
{
    const std::size_t rows = std::min(size, history.size());
    double sum = 0.0;
    for (std::size_t k = 0; k < rows; ++k)
        sum += std::pow(history[k], exponent);
    return db(std::pow(sum / double(rows), 1.0 / exponent)) + 0.7;
}

double linearDb(const History &history, std::size_t size)
{
    return meanDb(history, size, 1.0);
}

double rmsDb(const History &history, std::size_t size)
{
    return meanDb(history, size, 2.0);
}

/// By averaging size: the weight of the newest line, of one line more with each line back, and the
/// offset that goes with it.
const std::map<std::size_t, std::pair<double, double>> kExpCases = {{1, {0.7468965517, -3.8303}},
    {5, {0.7744827585, -4.6355}}, {10, {0.808965517, -5.561}}, {30, {0.946896551, -11.263}}};

double expDb(const History &history, std::size_t size)
{
    const auto [weight, offsetDb] = kExpCases.at(size);
    double sum = 0.0;
    for (std::size_t k = 0; k < history.size(); ++k)
        sum += std::pow(weight, double(k + 1)) * history[k];
    return db(sum) + offsetDb;
}

struct Case
{
    const char *name;
    std::function<std::unique_ptr<SpectrumAveragerAbstract>()> make;
    std::function<double(const History &, std::size_t)> model;
    double unreadDb; // of a bin before the first line
    std::vector<std::size_t> sizes;
};

void PrintTo(const Case &row, std::ostream *out)
{
    *out << row.name;
}

const Case kCases[] = {
    {"Linear", [] { return std::make_unique<SpectrumLinearAverager>(); }, linearDb, -180.0,
        {3, 30}},
    {"Rms", [] { return std::make_unique<SpectrumRmsAverager>(); }, rmsDb, -180.0, {3, 30}},
    {"Exp", [] { return std::make_unique<SpectrumExpAverager>(); }, expDb, 0.0, {1, 30}},
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

    void expectModel(std::size_t size, const std::string &where)
    {
        const Line line = read();
        for (std::size_t bin = 0; bin < kBins; ++bin)
            ASSERT_NEAR(line[bin], GetParam().model(histories[bin], size), kToleranceDb)
                << where << ", bin " << bin;
    }

    void expectEmpty() { EXPECT_EQ(read(), Line(kBins, float(GetParam().unreadDb))); }
};

TEST_P(SpectrumAveragersTest, FollowsTheModelOverManyFrames)
{
    for (const std::size_t size : GetParam().sizes) {
        averager->setAveragingSize(size);
        histories.assign(kBins, {});
        expectEmpty(); // a change of the size, also to the present one, forgets what was
        for (int number = 0; number < kFrames; ++number) {
            write(number);
            expectModel(size, "size " + std::to_string(size) + ", frame " + std::to_string(number));
        }
    }
}

TEST_P(SpectrumAveragersTest, ResetAndAnotherSpectrumSizeStartAnewTheSameSizeDoesNot)
{
    for (const auto &[asked, got] : {std::pair(std::size_t(-1), 30u), {31, 30}, {0, 1}, {10, 10}}) {
        averager->setAveragingSize(asked);
        EXPECT_EQ(averager->averagingSize(), got);
    }
    write(1);
    averager->setSpectrumSize(kBins);
    write(2);
    expectModel(10, "same spectrum size");

    averager->reset();
    expectEmpty();
    histories.assign(kBins, {});
    write(3);
    expectModel(10, "after reset"); // not a tenth of it

    averager->setSpectrumSize(kBins / 2);
    averager->setSpectrumSize(kBins);
    expectEmpty();
    EXPECT_EQ(averager->averagingSize(), 10u);
    histories.assign(kBins, {});
    write(4);
    expectModel(10, "after another spectrum size");
}

TEST_P(SpectrumAveragersTest, LineOfAnotherSizeIsReportedAndChangesNothing)
{
    averager->setAveragingSize(10);
    write(1);
    test::LogCapture log;
    Line other(kBins + 1, 1.0f);
    averager->write(other.data(), other.size());
    const QString signature = QString("virtual void DspCore::Spectrum%1Averager::write(REAL32 *, "
                                      "std::size_t)")
                                  .arg(GetParam().name);
    ASSERT_EQ(log.lines().filter(signature).filter(" incorrect input buffer size!").size(), 1);
    EXPECT_TRUE(log.warnings().isEmpty());
    EXPECT_EQ(read(kBins + 1), Line(kBins + 1, -180.0f));
    write(2);
    expectModel(10, "the line after it");
}

INSTANTIATE_TEST_SUITE_P(All, SpectrumAveragersTest, testing::ValuesIn(kCases),
    [](const auto &info) { return info.param.name; });

TEST(SpectrumAveragerTest, LinesGoToTheSelectedOneAndSettingsToAll)
{
    SpectrumAverager averager;
    EXPECT_EQ(averager.type(), 0);
    averager.setSpectrumSize(kBins);
    averager.setAveragingSize(10);
    Line line = frame(1);
    averager.write(line.data(), line.size());

    const float expected[] = {float(linearDb({line[0]}, 10)), -180.0f, 0.0f};
    for (int type = 0; type < 3; ++type) {
        averager.setType(SpectrumAverager::Type(type));
        EXPECT_EQ(averager.averagingSize(), 10u);
        EXPECT_EQ(averager.spectrumSize(), std::size_t(kBins));
        Line out(kBins, 1.0f);
        averager.read(out.data(), out.size());
        EXPECT_NEAR(out[0], expected[type], kToleranceDb) << type;
    }
    averager.reset();
    for (const auto &[asked, got] : {std::pair{3, 2}, {-1, 0}}) {
        averager.setType(SpectrumAverager::Type(asked));
        EXPECT_EQ(averager.type(), got);
    }
    averager.read(line.data(), line.size());
    EXPECT_EQ(line[0], -180.0f);
}
} // namespace

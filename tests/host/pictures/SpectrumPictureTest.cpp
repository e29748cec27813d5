// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/SpectrumPicture.h"

#include "pictures/ColumnReduction.h"
#include "pictures/PictureStyle.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{
constexpr float kFloorDb = -120.0f;
constexpr float kCarrierDb = -40.0f;
constexpr host::PictureAxis kAxis{14.1e6, 96e3};

std::vector<float> carrierAt(std::size_t bin, std::size_t bins)
{
    std::vector<float> line(bins, kFloorDb);
    line[bin] = kCarrierDb;
    return line;
}

/// The highest row of a column in which the trace is drawn, counted from the top of the plot.
int traceTop(const QImage &image, const QRect &plot, int column)
{
    for (int row = 0; row < plot.height(); ++row) {
        const QRgb pixel = image.pixel(plot.x() + column, plot.y() + row);
        // Smoothed edges are darker than the trace, but no grid line is as blue as half of it.
        if (qBlue(pixel) > qBlue(host::style::kFirstTrace) / 2)
            return row;
    }
    return plot.height();
}

TEST(SpectrumPictureTest, OneBinShowsAtTheColumnOfItsFrequency)
{
    // Fewer bins than columns, about as many, far more; even and odd.
    for (const std::size_t bins : {256, 255, 1500, 4097, 65536}) {
        for (const double share : {0.01, 0.3333, 0.5, 0.77, 0.99}) {
            const auto bin = std::size_t(share * double(bins));
            host::SpectrumPicture picture(kAxis);
            picture.setLine(carrierAt(bin, bins));
            picture.setRange({-130.0, -30.0});
            const QImage image = picture.image();
            const QRect plot = picture.plotArea();
            const double frequency =
                kAxis.centerHz + (double(bin) - double(bins / 2)) * kAxis.spanHz / double(bins);
            const int column = int(std::floor(
                (frequency - (kAxis.centerHz - 48e3)) / kAxis.spanHz * plot.width() + 1e-6));
            // -40 dB of -130..-30 is a tenth down. With few bins the tip of the trace may fall
            // between two columns.
            const int top = std::min(
                traceTop(image, plot, column), traceTop(image, plot, std::max(0, column - 1)));
            EXPECT_NEAR(top, plot.height() / 10, bins < 1500 ? 40 : 15) << bins << ", bin " << bin;
            const int binWidth = int(double(plot.width()) / double(bins));
            for (const int away : {-3 - binWidth, 3 + binWidth})
                EXPECT_NEAR(traceTop(image, plot, column + away), plot.height() * 9 / 10, 3)
                    << bins << ", bin " << bin << ", " << away << " columns away";
        }
    }
}

TEST(SpectrumPictureTest, MarksAndBandsStandAtTheirFrequencies)
{
    host::SpectrumPicture picture(kAxis);
    picture.setLine(std::vector<float>(4096, kFloorDb));
    picture.setRange({-130.0, -30.0});
    picture.addBand({14.11e6, 14.12e6});
    picture.addMark({14.08e6, "station"});
    picture.addMark({14.2e6, "outside"});
    const QImage image = picture.image();
    const QRect plot = picture.plotArea();
    const auto columnOf = [&](double hertz) {
        return plot.x() + int((hertz - 14.052e6) / 96e3 * plot.width());
    };
    const auto isMarked = [&](int x) {
        for (int y = plot.y(); y < plot.y() + 40; ++y)
            if (image.pixel(x, y) == host::style::kStation)
                return true;
        return false;
    };
    EXPECT_TRUE(isMarked(columnOf(14.08e6)));
    EXPECT_FALSE(isMarked(columnOf(14.08e6) - 1));
    EXPECT_FALSE(isMarked(columnOf(14.08e6) + 1));

    // A row between two grid lines, above the trace.
    const int y = plot.y() + plot.height() / 4 + 5;
    EXPECT_NE(image.pixel(columnOf(14.111e6), y), host::style::kPlot);
    EXPECT_NE(image.pixel(columnOf(14.119e6), y), host::style::kPlot);
    EXPECT_EQ(image.pixel(columnOf(14.109e6), y), host::style::kPlot);
    EXPECT_EQ(image.pixel(columnOf(14.121e6), y), host::style::kPlot);
}

TEST(SpectrumPictureTest, RangeTakesInTheDataInTens)
{
    constexpr float kNothing = -std::numeric_limits<float>::infinity();
    constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
    const struct
    {
        std::vector<float> line;
        double low;
        double high;
    } cases[] = {
        {carrierAt(1000, 4096), -130.0, -30.0},
        {std::vector<float>(4096, -95.0f), -120.0, -90.0}, // 30 dB at least
        {std::vector<float>(4096, kNothing), -140.0, 0.0},
        {{kNotANumber, -50.0f, kNothing, -81.0f}, -90.0, -40.0},
        {{}, -140.0, 0.0},
    };
    for (const auto &[line, low, high] : cases) {
        host::SpectrumPicture picture(kAxis);
        picture.setLine(line);
        EXPECT_EQ(picture.range().lowDb, low);
        EXPECT_EQ(picture.range().highDb, high);
        EXPECT_FALSE(picture.image().isNull());
    }
}

TEST(ColumnReductionTest, TheCentreOfALineIsTheMiddleOfThePlot)
{
    EXPECT_EQ(host::columnOf(500, 1000, 1000), 500);
    EXPECT_EQ(host::columnOf(500, 1001, 1000), 500); // where half a bin decides
}

TEST(ColumnReductionTest, MeansAreOfPower)
{
    // Ten bins to a column, one of them 20 dB above the others: (100 + 9) / 10 = 10.37 dB.
    std::vector<float> line(1000, -100.0f);
    line[505] = -80.0f;
    const auto means = host::columnMeans(line, 100);
    ASSERT_EQ(means.size(), 100u);
    EXPECT_NEAR(means[50], -89.626f, 1e-3);
    EXPECT_NEAR(means[49], -100.0f, 1e-3);
    EXPECT_EQ(host::columnMaxima(line, 100)[50], -80.0f);
}
} // namespace

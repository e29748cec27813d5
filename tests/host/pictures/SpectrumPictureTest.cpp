// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/SpectrumPicture.h"

#include "pictures/ColumnReduction.h"
#include "pictures/PictureStyle.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

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
    for (const std::size_t bins : {255, 1500, 65536}) {
        for (const double share : {0.01, 0.3333, 0.99}) {
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

TEST(ColumnReductionTest, TheCentreOfALineIsTheMiddleOfThePlot)
{
    EXPECT_EQ(host::columnOf(500, 1000, 1000), 500);
    EXPECT_EQ(host::columnOf(500, 1001, 1000), 500); // where half a bin decides
}
} // namespace

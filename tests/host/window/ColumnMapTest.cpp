// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/ColumnMap.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace
{
constexpr std::size_t kBins = 4096;
constexpr host::PictureAxis kAxis{7.1e6, 192000.0};
constexpr float kEmpty = -200.0f;

/// Column of the largest value for a line with one carrier; -1 if none stands out.
int carrierColumn(double hertz, double lowHz, double highHz, int columns)
{
    std::vector<float> line(kBins, -120.0f);
    line[std::size_t(std::lround(kAxis.indexOf(hertz, kBins)))] = -20.0f;
    const host::ColumnMap map(kAxis, kBins, lowHz, highHz, columns);
    std::vector<float> out(std::size_t(columns), 0.0f);
    map.reduce(line.data(), out.data(), kEmpty);
    const auto largest = std::max_element(out.begin(), out.end());
    return *largest > -60.0f ? int(largest - out.begin()) : -1;
}
} // namespace

TEST(ColumnMapTest, ACarrierStandsWhereItsFrequencyIs)
{
    struct Case
    {
        double lowHz;
        double highHz;
        int columns;
    };
    // All of the band, zoomed in to fewer bins than columns, beyond the band's ends, one column.
    for (const Case &c : {Case{7.004e6, 7.196e6, 1600}, Case{7.004e6, 7.196e6, 300},
             Case{7.099e6, 7.101e6, 800}, Case{6.9e6, 7.3e6, 1000}, Case{7.004e6, 7.196e6, 4096}}) {
        for (const double hertz : {7.1e6, 7.1004e6, 7.0996e6}) {
            const double place = (hertz - c.lowHz) / (c.highHz - c.lowHz) * c.columns;
            EXPECT_NEAR(carrierColumn(hertz, c.lowHz, c.highHz, c.columns), place,
                1.0 + kAxis.binHz(kBins) * c.columns / (c.highHz - c.lowHz))
                << hertz << " in " << c.columns << " columns from " << c.lowHz;
        }
    }
    // However few columns there are, none is lost.
    for (double hertz = 7.005e6; hertz < 7.195e6; hertz += 1234.5)
        EXPECT_GE(carrierColumn(hertz, 7.004e6, 7.196e6, 64), 0) << hertz;
}

TEST(ColumnMapTest, OutsideTheLineThereIsNothing)
{
    const std::vector<float> line(kBins, -90.0f);
    const host::ColumnMap map(kAxis, kBins, 6.9e6, 7.3e6, 400); // a kilohertz a column
    std::vector<float> out(400);
    map.reduce(line.data(), out.data(), kEmpty);
    EXPECT_EQ(out[100], kEmpty);
    EXPECT_EQ(out[105], -90.0f);
    EXPECT_EQ(out[295], -90.0f);
    EXPECT_EQ(out[300], kEmpty);
}

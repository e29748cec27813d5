// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/WaterfallPicture.h"

#include "pictures/ColourMap.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace
{
constexpr float kFloorDb = -120.0f;

TEST(WaterfallRowsTest, MergingKeepsEveryMaximumAtItsTime)
{
    constexpr int kColumns = 64;
    constexpr int kRows = 8;
    for (const int lines : {1, 8, 9, 64, 65, 1000}) {
        host::WaterfallRows rows(kColumns, kRows);
        std::mt19937 random(7);
        std::vector<int> columns;
        for (int i = 0; i < lines; ++i) {
            std::vector<float> line(kColumns, kFloorDb);
            columns.push_back(int(random() % kColumns));
            line[std::size_t(columns.back())] = float(i);
            rows.add(i * 0.1, line);
        }
        ASSERT_LE(rows.count(), kRows);
        ASSERT_EQ(rows.lines(), std::size_t(lines));
        EXPECT_NEAR(rows.end(), lines == 1 ? 1.0 : lines * 0.1, 1e-9);
        // Old and new rows alike: none is longer than two even shares of the time.
        for (int row = 0; row + 1 < rows.count() && lines > kRows; ++row)
            EXPECT_LE(rows.startOf(row + 1) - rows.startOf(row), 2.0 * lines * 0.1 / kRows);
        // Every line's mark is in the row of its time, unless a later line of that row has the
        // same column.
        for (int i = 0; i < lines; ++i) {
            int row = rows.count() - 1;
            while (rows.startOf(row) > i * 0.1)
                --row;
            EXPECT_GE(rows.row(row)[std::size_t(columns[std::size_t(i)])], float(i)) << lines;
        }
    }
}

TEST(WaterfallPictureTest, ASignalShowsAtItsFrequencyAndTime)
{
    constexpr host::PictureAxis kAxis{7.1e6, 192e3};
    constexpr std::size_t kBins = 4096;
    constexpr std::size_t kBin = 1234;
    // Fewer lines than rows of pixels, and so many that rows are merged.
    for (const int lines : {100, 5000}) {
        host::WaterfallPicture picture(kAxis, {800, 500});
        picture.setRange({-120.0, -20.0});
        for (int i = 0; i < lines; ++i) {
            std::vector<float> line(kBins, kFloorDb);
            if (i == lines / 4)
                line[kBin] = -20.0f;
            picture.addLine(1000.0 + i, line);
        }
        const QImage image = picture.image();
        const QRect plot = picture.plotArea();
        const int x = plot.x() + int(double(kBin) / kBins * plot.width());
        const int y = plot.y() + plot.height() / 4;
        int brightColumns = 0;
        for (int column = plot.x(); column < plot.x() + plot.width(); ++column)
            brightColumns += image.pixel(column, y) == host::ColourMap::entry(127);
        EXPECT_EQ(image.pixel(x, y), host::ColourMap::entry(127)) << lines;
        EXPECT_EQ(brightColumns, 1) << lines;
        EXPECT_EQ(image.pixel(x, y - 10), host::ColourMap::entry(0)) << lines;
        EXPECT_EQ(image.pixel(x, y + 10), host::ColourMap::entry(0)) << lines;
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/TraceRaster.h"

#include <gtest/gtest.h>
#include <random>

namespace
{
constexpr QRgb kGround = 0xff000000;
constexpr QRgb kLine = 0xffffffff;
constexpr QRgb kArea = 0xff0000ff;
} // namespace

TEST(TraceRasterTest, LineAndAreaAreWhereTheLevelIs)
{
    struct Case
    {
        std::vector<float> rows;
        int x;
        int y;
        QRgb colour;
    };
    // A flat line one pixel wide in the middle of row 4; then a step, whose flank hangs together.
    const std::vector<float> flat(8, 4.5f);
    const std::vector<float> step{2.5f, 2.5f, 2.5f, 2.5f, 8.5f, 8.5f, 8.5f, 8.5f};
    for (const Case &c : {Case{flat, 3, 3, kGround}, Case{flat, 3, 4, kLine},
             Case{flat, 3, 5, kArea}, Case{flat, 0, 4, kLine}, Case{flat, 7, 9, kArea},
             Case{step, 3, 4, kLine}, Case{step, 4, 6, kLine}, Case{step, 5, 6, kGround},
             Case{step, 1, 4, kArea}, Case{std::vector<float>(8, -50.0f), 2, 0, kArea},
             Case{std::vector<float>(8, 50.0f), 2, 9, kGround}}) {
        QImage picture(8, 10, QImage::Format_RGB32);
        picture.fill(kGround);
        host::TraceRaster raster;
        raster.draw(picture, c.rows, {kLine, kArea, 1.0});
        EXPECT_EQ(picture.pixel(c.x, c.y) | 0xff000000u, c.colour)
            << c.rows[0] << " at " << c.x << ", " << c.y << std::hex << ' '
            << picture.pixel(c.x, c.y);
    }
}

TEST(TraceRasterTest, EdgesAreSmooth)
{
    QImage picture(4, 10, QImage::Format_RGB32);
    picture.fill(kGround);
    host::TraceRaster raster;
    raster.draw(picture, std::vector<float>(4, 4.75f), {kLine, 0, 1.0}); // from 4.25 to 5.25
    EXPECT_NEAR(qRed(picture.pixel(1, 4)), 0.75 * 255, 3);
    EXPECT_NEAR(qRed(picture.pixel(1, 5)), 0.25 * 255, 3);
    EXPECT_EQ(qRed(picture.pixel(1, 6)), 0);
}

TEST(TraceRasterTest, PlaceOfAColumnInThePictureDoesNotMatter)
{
    std::mt19937 random{1};
    std::normal_distribution<float> level{20.0f, 9.0f};
    std::vector<float> rows(100);
    for (float &row : rows)
        row = level(random);
    const auto draw = [](const std::vector<float> &levels, QRgb area) {
        QImage picture(int(levels.size()), 40, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y)
            std::fill_n(reinterpret_cast<QRgb *>(picture.scanLine(y)), picture.width(),
                0xff000000u | unsigned(y * 0x020301));
        host::TraceRaster().draw(picture, levels, {kLine, area, 1.3});
        return picture;
    };
    for (const QRgb area : {0u, 0x40ff8000u})
        for (const std::size_t shift : {1, 7, 50}) {
            auto shifted = rows;
            shifted.insert(shifted.begin(), shift, rows.front());
            EXPECT_EQ(draw(shifted, area).copy(int(shift), 0, 100, 40), draw(rows, area)) << shift;
        }
}

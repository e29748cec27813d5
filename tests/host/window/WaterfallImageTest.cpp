// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/panorama/WaterfallImage.h"

#include <QPainter>

#include <gtest/gtest.h>
#include <random>

namespace
{
using host::WaterfallHistory;
using host::WaterfallImage;

constexpr QSize kScreen{2560, 1440};

class WaterfallImageTest : public testing::Test
{
protected:
    void add(int lines)
    {
        std::uniform_real_distribution<float> level{-140.0f, -20.0f};
        std::vector<float> line(4096);
        for (int i = 0; i < lines; ++i) {
            for (float &bin : line)
                bin = level(m_random);
            m_history.add(line, {7.1e6, 192e3}, 0.0);
        }
    }

    /// Paints until nothing is left, with `between` before each further painting.
    template <typename Between>
    QImage painted(WaterfallImage &image, Between between)
    {
        QImage screen(kScreen, QImage::Format_RGB32);
        QPainter painter(&screen);
        while (!image.paint(painter, {}, 1.0))
            between();
        return screen;
    }

    QImage drawnAtOnce()
    {
        WaterfallImage image(m_history);
        image.setLook({-140.0, -20.0}, host::ColourMap::Palette::Inferno);
        image.setSize(kScreen);
        image.setBand(7.03e6, 7.17e6);
        return painted(image, [] {});
    }

    std::mt19937 m_random{1};
    WaterfallHistory m_history{2160};
};
} // namespace

TEST_F(WaterfallImageTest, ATallPictureIsWholeHoweverManyPaintingsItTakes)
{
    WaterfallImage image(m_history);
    image.setLook({-140.0, -20.0}, host::ColourMap::Palette::Inferno);
    image.setSize(kScreen);
    const auto hear = [&] {
        add(1);
        image.addNewest();
    };
    for (const int lines : {0, 700, 2160}) {
        add(lines);
        image.setBand(7.0e6, 7.2e6); // another zoom is on the screen
        painted(image, [] {});
        hear();
        image.setBand(7.03e6, 7.17e6);
        const QImage screen = painted(image, hear);
        EXPECT_EQ(screen, drawnAtOnce()) << lines;
    }
}

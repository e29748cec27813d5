// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Window64.h"

#include <cmath>
#include <gtest/gtest.h>

using DspCore::Window;
using DspCore::Window32;
using DspCore::Window64;

namespace
{
constexpr double kRoundOff = 1e-14;
constexpr double kSinglePrecision = 1e-6;

std::vector<double> table(Window type, int length)
{
    std::vector<double> out(std::size_t(length), 0.0);
    Window64::calc(out.data(), length, type);
    return out;
}

/// Values before the division, where the angles of 61 samples are 0, 60, 90 and 180 degrees.
struct Shape
{
    Window type;
    double divisor;
    double at0, at10, at15, at30;
};

const double kHalfRoot3 = std::sqrt(3.0) / 2.0;
const double kHalfRoot2 = std::sqrt(2.0) / 2.0;

const Shape kShapes[] = {
    {Window::Sine, 0.6360628048372603, 0.0, 0.5, kHalfRoot2, 1.0},
    {Window::Bartlett, 0.5011872336272722, 0.0, 1.0 / 3.0, 0.5, 1.0},
    {Window::Hann, 0.5011872336272722, 0.0, 0.25, 0.5, 1.0},
    {Window::Hamming, 0.5388898453732869, 0.08, 0.31, 0.54, 1.0},
    {Window::Blackman, 0.41975898399100753, 0.0, 0.13, 0.34, 1.0},
    {Window::BlackmanHarris, 0.35850894827655494, 0.00006, 0.055645, 0.21747, 1.0},
    {Window::Nuttall, 0.35481338923357547, -0.113436, 0.165994, 0.211536, 1.113436},
    {Window::BlackmanNuttall, 0.3630780547701013, 0.0003628, 0.0613345, 0.2269824, 1.0},
    {Window::FlatTop, 1.1220184543019633, 0.004, -0.238, -0.258, 4.64},
    // exp(-g^2 / 2) for g = -1, -2/3, -1/2 and 0, divided by the width.
    {Window::Gauss03, 0.19952623149688797, 0.003865920139472804, 0.08465798862252993,
        0.24935220877729616, 1.0},
    {Window::Gauss05, 0.3357376142429546, 0.1353352832366127, 0.41111229050718745,
        0.6065306597126334, 1.0},
    {Window::Gauss12, 0.5035006087879048, 0.7066482778577162, 0.8569968914352789,
        0.9168553557320289, 1.0},
    {static_cast<Window>(0), 1.0, 1.0, 1.0, 1.0, 1.0},
    {static_cast<Window>(14), 1.0, 1.0, 1.0, 1.0, 1.0},
};
} // namespace

TEST(Window64Test, ShapesPassThroughTheirKnownPoints)
{
    for (const Shape &shape : kShapes) {
        const auto window = table(shape.type, 61);
        std::vector<float> single(61);
        Window32::calc(single.data(), 61, shape.type);
        for (const auto &[n, value] : {std::pair{0, shape.at0}, {10, shape.at10}, {15, shape.at15},
                 {30, shape.at30}, {60, shape.at0}}) {
            const double expected = value / shape.divisor;
            EXPECT_NEAR(window[std::size_t(n)], expected, kRoundOff) << int(shape.type) << " " << n;
            EXPECT_NEAR(single[std::size_t(n)], expected, kSinglePrecision) << int(shape.type);
        }
    }
}

TEST(Window64Test, BothPartsAreWeightedAndTheSameLengthKeepsTheOldShape)
{
    const auto window = table(Window::Hamming, 61);
    std::vector<COMPLEX> buffer(61, COMPLEX{1.0, -2.0});
    std::vector<float> single(61, 1.0f);
    Window64 applied;
    applied.init(61, Window::Hamming);
    applied.init(61, Window::Hann);
    applied.process(buffer.data(), 61);
    Window32 applied32;
    applied32.init(61, Window::Hamming);
    applied32.process(single.data(), 61);
    for (std::size_t n = 0; n < buffer.size(); ++n) {
        EXPECT_EQ(buffer[n], (COMPLEX{window[n], -2.0 * window[n]}));
        EXPECT_NEAR(single[n], window[n], kSinglePrecision);
    }
}

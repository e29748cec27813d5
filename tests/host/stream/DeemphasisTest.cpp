// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/Deemphasis.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace
{
constexpr double kRateHz = 48000.0;

/// Gain in dB for a sine on the left side; the right one is silent and has to stay so.
double gainDb(host::Deemphasis deemphasis, double hz)
{
    constexpr std::size_t kSettled = 4800;
    std::vector<float> audio(2 * 9600);
    for (std::size_t n = 0; n < audio.size(); n += 2)
        audio[n] = float(std::sin(M_PI * hz / kRateHz * double(n)));
    deemphasis.process(audio.data(), kSettled);
    deemphasis.process(audio.data() + 2 * kSettled, audio.size() / 2 - kSettled);
    double power = 0.0;
    for (std::size_t n = 2 * kSettled; n < audio.size(); n += 2) {
        power += double(audio[n] * audio[n]);
        EXPECT_EQ(audio[n + 1], 0.0f);
    }
    return 10.0 * std::log10(2.0 * power / double(audio.size() / 2 - kSettled));
}

/// Of an RC low-pass.
double analogDb(double us, double hz)
{
    return -10.0 * std::log10(1.0 + std::pow(2e-6 * M_PI * us * hz, 2.0));
}

TEST(DeemphasisTest, TakesOutOneTimeConstantAndPutsInAnother)
{
    constexpr double kToleranceDb = 0.15; // the poles are those of the circuit up to some kilohertz
    const struct
    {
        double oldUs;
        double newUs;
    } cases[] = {{50, 75}, {50, 50}, {0, 750}};
    for (const auto &c : cases)
        for (const double hz : {100.0, 1000.0, 3000.0})
            EXPECT_NEAR(gainDb({c.oldUs, c.newUs, kRateHz}, hz),
                analogDb(c.newUs, hz) - analogDb(c.oldUs, hz), kToleranceDb)
                << c.oldUs << " to " << c.newUs << " at " << hz;
}
} // namespace

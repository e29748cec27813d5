// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorWFM.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
TEST(DemodulatorWFMTest, MonoIsThePhaseStepInBothEars)
{
    constexpr double kStep = 0.4;     // radians a sample
    constexpr double kFilters = 0.02; // what the arctangent and the filters take at 1 kHz
    for (const double rate : {48000.0, 192000.0}) {
        DspCore::DemodulatorWFM wfm;
        wfm.setSampleRate(rate);
        std::vector<COMPLEX> signal(std::size_t(rate / 2.0));
        double phase = 0.3;
        for (std::size_t n = 0; n < signal.size(); ++n) {
            phase += kStep * std::sin(2.0 * std::numbers::pi * 1000.0 / rate * double(n));
            signal[n] = {0.2 * std::cos(phase), 0.2 * std::sin(phase)};
        }
        test::run(wfm, signal, 1000);
        const auto left = test::ear(test::last(signal, int(rate / 4.0)), &COMPLEX::re);
        EXPECT_EQ(left, test::ear(test::last(signal, int(rate / 4.0)), &COMPLEX::im));
        const double level = 2.0 * test::magnitude(test::component(left, 1000.0 / rate));
        const double deemphasis = 1.0 / std::hypot(1.0, 2.0 * std::numbers::pi * 1000.0 * 50e-6);
        EXPECT_NEAR(level / (0.3 * rate / 192000.0) / deemphasis / kStep, 1.0, kFilters) << rate;
    }
}

} // namespace

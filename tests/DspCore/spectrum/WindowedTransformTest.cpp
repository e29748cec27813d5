// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/WindowedTransform.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace
{
using namespace DspCore;

/// Window, transform and power one after the other, in double precision.
std::vector<double> plainPower(std::vector<COMPLEX> line)
{
    const int size = int(line.size());
    Window64 window;
    window.init(size, Window::BlackmanNuttall);
    window.process(line.data(), size);
    FFT64 fft;
    fft.init(size);
    fft.direct(line.data());
    std::vector<double> power;
    for (int n = 0; n < size; ++n) {
        const COMPLEX bin = line[std::size_t((n + size / 2) % size)];
        power.push_back(bin.re * bin.re + bin.im * bin.im);
    }
    return power;
}

TEST(WindowedTransformTest, GivesWhatItsStepsGiveWhereverTheLineBeginsInItsRing)
{
    for (const int size : {256, 4096}) {
        const double rounding = 1e-5 / size; // a bin of the noise has 1.3 / size
        const auto line = test::noise(size, /*seed*/ 1);
        const auto expected = plainPower(line);
        WindowedTransform transform;
        transform.init(size, Window::BlackmanNuttall);
        for (const int oldest : {0, 1, size / 4 - 1, size / 4, size / 2 + 3, size - 1}) {
            AlignedVector<COMPLEX32> ring(line.size()), work(line.size()), bins(line.size());
            for (int n = 0; n < size; ++n)
                ring[std::size_t((oldest + n) % size)] = {
                    float(line[std::size_t(n)].re), float(line[std::size_t(n)].im)};
            std::vector<float> power(line.size());
            transform.take(ring.data(), oldest, work.data());
            transform.power(work.data(), bins.data(), power.data());
            EXPECT_LT(test::maxError({power.begin(), power.end()}, expected), rounding) << oldest;
        }
    }
}
} // namespace

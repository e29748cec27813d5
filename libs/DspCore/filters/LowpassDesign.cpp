// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/LowpassDesign.h"

#include "signal_primitives/ipps.h"

#include <cmath>
#include <numbers>

namespace DspCore
{
namespace
{
constexpr float kTransition = 0.03f; // in the unit of the rate, kept free below half of it

/// Samples the impulse response of an ideal low-pass, cut-off in cycles per sample, about the
/// centre.
std::vector<float> sinc(double cutoff, int length)
{
    constexpr double kPi = std::numbers::pi;
    const double centre = (length - 1) * 0.5;
    std::vector<float> taps(std::size_t(length), 0.0f);
    for (int i = 0; i < length; ++i) {
        const double t = i - centre;
        taps[std::size_t(i)] =
            float(t == 0.0 ? 2.0 * cutoff : std::sin(2.0 * kPi * cutoff * t) / (kPi * t));
    }
    return taps;
}

double absoluteSum(const std::vector<float> &taps)
{
    double sum = 0.0;
    for (const float tap : taps)
        sum += std::abs(tap);
    return sum;
}
} // namespace

FIR_REAL newFIR_Lowpass_REAL(float cutoff, float rate, int length, Window32 &window)
{
    FIR_REAL fir;
    if (cutoff < 0.0f || length < 1 || cutoff > (rate - kTransition) / 2.0f)
        return fir;
    fir.coefficients = sinc(double(cutoff) / double(rate), length);
    float *const taps = fir.coefficients.data();
    ippsMulC_32f_I(float(1.0 / absoluteSum(fir.coefficients)), taps, length);
    window.init(length, Window::BlackmanNuttall);
    window.process(taps, length);
    return fir;
}
} // namespace DspCore

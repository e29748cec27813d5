// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Leaky normalised complex LMS predictor: foretells each sample from older ones, a delay back.
///
/// What repeats (tones, voiced speech) can be foretold, noise cannot. Prediction
/// y = sum conj(w[j]) x[n - delay - j], then w[j] = leak w[j] + (rate / power) x[n - delay - j]
/// conj(x[n] - y), with the power of the samples under the weights (S. Haykin, "Adaptive Filter
/// Theory", normalised and leaky LMS). The line holds 1024 samples and fills downwards, so that the
/// weights run over rising addresses. Real and imaginary parts lie in arrays of their own, which is
/// what the processor's vector units want. Not thread-safe; the owner serialises.
class LmsPredictor
{
public:
    LmsPredictor(int taps, int delay, double rate, double leak);

    /// Samples between the newest sample and the first weight; forgets everything.
    void setDelay(int delay);

    /// Number of weights, at most 2048 take part; forgets everything.
    void setTaps(int taps);

    /// Step size, and loss of the weights in units of it. Both act from the next sample on.
    void setRate(double rate) { mRate = rate; }
    void setLeak(double leak) { mLeak = leak; }

    /// Zeroes line and weights; the write position stays.
    void clear();

    /// Square root of the sum (not the mean) of the squared magnitudes.
    static double calcRms(const COMPLEX *buffer, int length);

    /// Complex product.
    static COMPLEX Cmul(COMPLEX a, COMPLEX b);

    /// Passes each sample x and its prediction y through output(x, y), whose result replaces the
    /// sample, and adapts. Allocates nothing.
    template <typename Output>
    void process(COMPLEX *buffer, int length, Output output)
    {
        const double keep = 1.0 - mRate * mLeak;
        for (int n = 0; n < length; ++n) {
            const COMPLEX x = buffer[n];
            buffer[n] = output(x, step(x, keep));
        }
    }

private:
    static constexpr int kLineSize = 1024;
    static constexpr int kMask = kLineSize - 1;
    static constexpr int kMostTaps = 2 * kLineSize;

    void restart();
    COMPLEX step(COMPLEX x, double keep);

    int mTaps;
    int mDelay;
    double mRate;
    double mLeak;
    int mPosition = 0;
    std::vector<double> mLineRe = std::vector<double>(kLineSize);
    std::vector<double> mLineIm = std::vector<double>(kLineSize);
    std::vector<double> mWeightsRe = std::vector<double>(kMostTaps);
    std::vector<double> mWeightsIm = std::vector<double>(kMostTaps);
};
} // namespace DspCore

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
/// Theory", normalised and leaky LMS).
///
/// The line is a ring of 1024 samples that fills downwards and stands in memory three times, so
/// that up to 2048 weights meet it at rising addresses without a wrap. One pass over the weights
/// does what the last sample left to do and what the new one asks:
///
///     line     x[n-d] x[n-1-d] x[n-2-d] ..           d the delay
///               |   \   |   \                        |  to the sum of w[j] x[n-d-j]
///              w[0]     w[1]      ..                 \  first w[j] takes its step for sample n-1
///
/// Real and imaginary parts lie in arrays of their own, which is what the processor's vector units
/// want. Not thread-safe; the owner serialises.
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

    static constexpr int kCopies = 3;
    static constexpr int kSlack = 16; // read and not used, after the last weight

    void restart();
    COMPLEX step(COMPLEX x, double keep);

    int mTaps;
    int mDelay;
    double mRate;
    double mLeak;
    int mPosition = 0;
    double mKeep = 1.0; // of the step that is still to be taken
    COMPLEX mStep{0.0, 0.0};
    std::vector<double> mLineRe = std::vector<double>(kCopies * kLineSize + kSlack);
    std::vector<double> mLineIm = std::vector<double>(kCopies * kLineSize + kSlack);
    std::vector<double> mWeightsRe = std::vector<double>(kMostTaps + kSlack);
    std::vector<double> mWeightsIm = std::vector<double>(kMostTaps + kSlack);
};
} // namespace DspCore

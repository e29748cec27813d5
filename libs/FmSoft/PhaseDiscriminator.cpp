// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/PhaseDiscriminator.h"

#include "signal_primitives/FastArctangent.h"

#include <numbers>

PhaseDiscriminator::PhaseDiscriminator(double maxFreqDev)
    : mScale(1.0 / (2.0 * std::numbers::pi * maxFreqDev))
{ }

void PhaseDiscriminator::process(const IQSampleVector &in, SampleVector &out)
{
    out.resize(in.size());
    Velmora::complex<float> previous = mPrevious;
    for (std::size_t n = 0; n < in.size(); ++n) {
        const Velmora::complex<float> x = in[n];
        const float re = previous.re * x.re + previous.im * x.im;
        const float im = previous.re * x.im - previous.im * x.re;
        out[n] = Velmora::fastArctangent(im, re) * mScale;
        previous = x;
    }
    mPrevious = previous;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/PhaseDiscriminator.h"

#include "processor/Clones.h"
#include "signal_primitives/FastArctangent.h"

#include <numbers>

namespace
{
// Angles from each sample of `from` to that of `to`.
PROCESSOR_CLONES void phaseSteps(const Velmora::complex<float> *from,
    const Velmora::complex<float> *to, double scale, double *__restrict out, std::size_t length)
{
    for (std::size_t n = 0; n < length; ++n) {
        const float re = from[n].re * to[n].re + from[n].im * to[n].im;
        const float im = from[n].re * to[n].im - from[n].im * to[n].re;
        out[n] = Velmora::fastArctangentInLanes(im, re) * scale;
    }
}
} // namespace

PhaseDiscriminator::PhaseDiscriminator(double maxFreqDev)
    : mScale(1.0 / (2.0 * std::numbers::pi * maxFreqDev))
{ }

void PhaseDiscriminator::process(const IQSampleVector &in, SampleVector &out)
{
    out.resize(in.size());
    if (in.empty())
        return;
    phaseSteps(&mPrevious, in.data(), mScale, out.data(), 1);
    phaseSteps(in.data(), in.data() + 1, mScale, out.data() + 1, in.size() - 1);
    mPrevious = in.back();
}

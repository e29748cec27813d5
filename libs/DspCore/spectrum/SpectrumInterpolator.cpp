// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumInterpolator.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace DspCore
{
namespace
{
// The first outputs lie in the silence before the line: two points of delay of the cubic, and one
// more that the output step makes room for.
constexpr unsigned int kLead = 3;

// Spare outputs in the scratch, for the lead and the rounding of the steps.
constexpr unsigned int kSpare = 10;
} // namespace

SpectrumInterpolator::SpectrumInterpolator()
{
    mScratch.reserve(65536);
}

void SpectrumInterpolator::process(
    float *in, unsigned int inCount, float *out, unsigned int outCount)
{
    resample(in, inCount, out, outCount);
}

void SpectrumInterpolator::process(
    double *in, unsigned int inCount, double *out, unsigned int outCount)
{
    resample(in, inCount, out, outCount);
}

template <typename Real>
void SpectrumInterpolator::resample(
    const Real *in, unsigned int inCount, Real *out, unsigned int outCount)
{
    if (inCount == outCount) {
        if (inCount != 0 && in != out)
            std::memmove(out, in, inCount * sizeof(Real));
        return;
    }
    mPosition = 0.0;
    mScratch.resize(outCount + kSpare);
    mHistory = {};
    mInputCount = inCount;
    mInputStep = 1.0 / inCount;
    mOutputStep = 1.0 / (outCount + kLead);
    const unsigned int produced = fillScratch(in, inCount);
    assert(produced <= mScratch.size());
    if (produced >= outCount + kLead)
        std::copy_n(mScratch.begin() + kLead, outCount, out);
}

// The position is summed up step by step: its rounding decides between which inputs an output lies.
template <typename Real>
unsigned int SpectrumInterpolator::fillScratch(const Real *in, unsigned int inCount)
{
    // Locals stay in registers, while the scratch may be a member for all that the compiler knows.
    const double inputStep = mInputStep;
    const double outputStep = mOutputStep;
    const double inputCount = mInputCount;
    double position = mPosition;
    Cubic cubic = mCubic;
    std::array<float, 4> y = mHistory;
    float *next = mScratch.data();
    for (unsigned int i = 0; i < inCount; ++i) {
        y = {y[1], y[2], y[3], float(in[i])};
        cubic = Cubic::through(y[0], y[1], y[2], y[3]);
        while (inputStep > position) {
            *next++ = float(cubic.at(position * inputCount - 1.0));
            position += outputStep;
        }
        position -= inputStep;
    }
    mPosition = position;
    mCubic = cubic;
    mHistory = y;
    return unsigned(next - mScratch.data());
}
} // namespace DspCore

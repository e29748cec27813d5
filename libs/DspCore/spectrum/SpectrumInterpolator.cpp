// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumInterpolator.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace DspCore
{
namespace
{
// The first outputs lie in the silence before the line: two points of delay of the cubic, and one
// more that the output step makes room for.
constexpr unsigned int kLead = 3;

constexpr std::size_t kUsualMost = 65536; // points
} // namespace

SpectrumInterpolator::SpectrumInterpolator()
{
    mLine.reserve(kUsualMost + kLead + kCubicOverrun);
    for (auto *const weights : {&mWeight0, &mWeight1, &mWeight3})
        weights->reserve(kUsualMost);
    mIndex.reserve(kUsualMost);
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
    if (inCount == 0)
        return;
    place(inCount, outCount);
    if (mIndex.size() < outCount)
        return;
    // The line starts from silence and stands clear of the outputs.
    mLine.assign(inCount + kLead + kCubicOverrun, 0.0f);
    std::copy_n(in, inCount, mLine.begin() + kLead);
    const CubicPlaces places{mIndex.data(), mWeight0.data(), mWeight1.data(), mWeight3.data()};
    stretch(places, out, int(outCount));
}

/// The position is summed up step by step: its rounding decides between which inputs an output
/// lies.
void SpectrumInterpolator::place(unsigned int inCount, unsigned int outCount)
{
    if (inCount == mInCount && outCount == mOutCount)
        return;
    mInCount = inCount;
    mOutCount = outCount;
    mIndex.clear();
    mWeight0.clear();
    mWeight1.clear();
    mWeight3.clear();
    const double inputStep = 1.0 / inCount;
    const double outputStep = 1.0 / (outCount + kLead);
    double position = 0.0; // of the next output after the present input
    unsigned int produced = 0;
    for (unsigned int i = 0; i < inCount; ++i) {
        for (; inputStep > position; position += outputStep) {
            if (produced++ >= kLead && mIndex.size() < outCount)
                placeNext(int(i), position * inCount - 1.0);
        }
        position -= inputStep;
    }
}

/// The cubic is ((a t + b) t + c) t + y2 with, of the differences d from y2,
///     a = d1 / 2 + (d3 - d0) / 6,  b = (d3 + d1) / 2,  c = (d3 - d1) / 2 - a
void SpectrumInterpolator::placeNext(int index, double t)
{
    mIndex.push_back(index);
    mWeight0.push_back(float((t - t * t * t) / 6.0));
    mWeight1.push_back(float(((0.5 * t + 0.5) * t - 1.0) * t));
    mWeight3.push_back(float(((t / 6.0 + 0.5) * t + 1.0 / 3.0) * t));
}

void SpectrumInterpolator::stretch(const CubicPlaces &places, float *out, int count)
{
    cubics(mLine.data(), places, out, count);
}

void SpectrumInterpolator::stretch(const CubicPlaces &places, double *out, int count)
{
    mDoubles.resize(std::size_t(count));
    cubics(mLine.data(), places, mDoubles.data(), count);
    std::copy(mDoubles.begin(), mDoubles.end(), out);
}
} // namespace DspCore

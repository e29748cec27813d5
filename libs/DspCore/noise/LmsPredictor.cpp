// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/noise/LmsPredictor.h"

#include "processor/Clones.h"

#include <algorithm>
#include <cmath>

namespace DspCore
{
namespace
{
constexpr double kPowerFloor = 1e-10; // protects the normalisation from silence
constexpr int kLanes = 8;

struct Sums
{
    double re = 0.0;
    double im = 0.0;
    double power = 0.0;
};

/// Sums of the pass, in independent lanes as the order of plain summation would forbid vectors.
struct Lanes
{
    double re[kLanes] = {};
    double im[kLanes] = {};
    double power[kLanes] = {};

    /// Eight weights; from `count` on they are none and meet zeros.
    [[gnu::always_inline]] inline void add(const double *lineRe, const double *lineIm,
        double *__restrict weightsRe, double *__restrict weightsIm, double keep, COMPLEX step,
        int count)
    {
        for (int lane = 0; lane < kLanes; ++lane) {
            const bool counts = lane < count;
            const double oldRe = counts ? lineRe[lane + 1] : 0.0;
            const double oldIm = counts ? lineIm[lane + 1] : 0.0;
            const double wr = keep * weightsRe[lane] + (oldRe * step.re - oldIm * step.im);
            const double wi = keep * weightsIm[lane] + (oldRe * step.im + oldIm * step.re);
            weightsRe[lane] = wr;
            weightsIm[lane] = wi;
            const double xr = counts ? lineRe[lane] : 0.0;
            const double xi = counts ? lineIm[lane] : 0.0;
            re[lane] += wr * xr + wi * xi;
            im[lane] += wr * xi - wi * xr;
            power[lane] += xr * xr + xi * xi;
        }
    }
};

[[gnu::always_inline]] inline double total(const double (&x)[kLanes])
{
    return ((x[0] + x[4]) + (x[1] + x[5])) + ((x[2] + x[6]) + (x[3] + x[7]));
}

// w = keep w + older x step, and the sums of conj(w) with the newer x, which stand one earlier.
PROCESSOR_CLONES Sums pass(const double *lineRe, const double *lineIm, double *weightsRe,
    double *weightsIm, int length, double keep, COMPLEX step)
{
    Lanes lanes;
    int j = 0;
    for (; j + kLanes <= length; j += kLanes)
        lanes.add(lineRe + j, lineIm + j, weightsRe + j, weightsIm + j, keep, step, kLanes);
    if (j < length)
        lanes.add(lineRe + j, lineIm + j, weightsRe + j, weightsIm + j, keep, step, length - j);
    return {total(lanes.re), total(lanes.im), total(lanes.power)};
}

PROCESSOR_CLONES double sumOfSquares(const double *values, int count)
{
    double lanes[kLanes] = {};
    int i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane)
            lanes[lane] += values[i + lane] * values[i + lane];
    }
    double sum = total(lanes);
    for (; i < count; ++i)
        sum += values[i] * values[i];
    return sum;
}
} // namespace

LmsPredictor::LmsPredictor(int taps, int delay, double rate, double leak)
    : mTaps(taps), mDelay(delay), mRate(rate), mLeak(leak)
{ }

void LmsPredictor::setDelay(int delay)
{
    mDelay = delay;
    restart();
}

void LmsPredictor::setTaps(int taps)
{
    mTaps = taps;
    restart();
}

void LmsPredictor::restart()
{
    mPosition = 0;
    clear();
}

void LmsPredictor::clear()
{
    for (std::vector<double> *array : {&mLineRe, &mLineIm, &mWeightsRe, &mWeightsIm})
        std::fill(array->begin(), array->end(), 0.0);
    mStep = {0.0, 0.0};
}

double LmsPredictor::calcRms(const COMPLEX *buffer, int length)
{
    return std::sqrt(sumOfSquares(reinterpret_cast<const double *>(buffer), 2 * length));
}

COMPLEX LmsPredictor::Cmul(COMPLEX a, COMPLEX b)
{
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

COMPLEX LmsPredictor::step(COMPLEX x, double keep)
{
    const int taps = std::min(mTaps, kMostTaps);
    const int delay = int(unsigned(mDelay) & unsigned{kMask});
    const int first = (delay + mPosition) & kMask;
    const auto runPass = [&] {
        const Sums sums = pass(&mLineRe[std::size_t(first)], &mLineIm[std::size_t(first)],
            mWeightsRe.data(), mWeightsIm.data(), taps, mKeep, mStep);
        mKeep = 1.0;
        mStep = {0.0, 0.0};
        return sums;
    };

    // A long filter still has a weight on the sample that the new one takes the place of.
    if (delay + taps >= kLineSize)
        runPass();
    for (int copy = 0; copy < kCopies; ++copy) {
        mLineRe[std::size_t(mPosition + copy * kLineSize)] = x.re;
        mLineIm[std::size_t(mPosition + copy * kLineSize)] = x.im;
    }
    const Sums sums = runPass();

    const double mu = mRate / (sums.power + kPowerFloor);
    mKeep = keep;
    mStep = {mu * (x.re - sums.re), -mu * (x.im - sums.im)}; // mu conj(error)
    mPosition = (mPosition + kMask) & kMask;
    return {sums.re, sums.im};
}
} // namespace DspCore

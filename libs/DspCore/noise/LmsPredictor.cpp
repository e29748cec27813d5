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

// Sums over one stretch of the line that does not wrap.
struct Sums
{
    double re = 0.0;
    double im = 0.0;
    double power = 0.0;
};

// The sums run in independent lanes, as the order of plain summation would forbid vectors.
PROCESSOR_CLONES Sums predict(const double *lineRe, const double *lineIm, const double *weightsRe,
    const double *weightsIm, int length)
{
    double re[kLanes] = {};
    double im[kLanes] = {};
    double power[kLanes] = {};
    int j = 0;
    for (; j + kLanes <= length; j += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane) {
            const double xr = lineRe[j + lane];
            const double xi = lineIm[j + lane];
            const double wr = weightsRe[j + lane];
            const double wi = weightsIm[j + lane];
            re[lane] += wr * xr + wi * xi;
            im[lane] += wr * xi - wi * xr;
            power[lane] += xr * xr + xi * xi;
        }
    }
    Sums sums;
    for (; j < length; ++j) {
        const double xr = lineRe[j];
        const double xi = lineIm[j];
        sums.re += weightsRe[j] * xr + weightsIm[j] * xi;
        sums.im += weightsRe[j] * xi - weightsIm[j] * xr;
        sums.power += xr * xr + xi * xi;
    }
    for (int lane = 0; lane < kLanes; ++lane) {
        sums.re += re[lane];
        sums.im += im[lane];
        sums.power += power[lane];
    }
    return sums;
}

// w = keep w + x step, one stretch.
PROCESSOR_CLONES void adapt(const double *__restrict lineRe, const double *__restrict lineIm,
    double *__restrict weightsRe, double *__restrict weightsIm, int length, double keep,
    COMPLEX step)
{
    for (int j = 0; j < length; ++j) {
        weightsRe[j] = keep * weightsRe[j] + (lineRe[j] * step.re - lineIm[j] * step.im);
        weightsIm[j] = keep * weightsIm[j] + (lineRe[j] * step.im + lineIm[j] * step.re);
    }
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
}

double LmsPredictor::calcRms(const COMPLEX *buffer, int length)
{
    double sum = 0.0;
    for (int n = 0; n < length; ++n)
        sum += buffer[n].re * buffer[n].re + buffer[n].im * buffer[n].im;
    return std::sqrt(sum);
}

COMPLEX LmsPredictor::Cmul(COMPLEX a, COMPLEX b)
{
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

COMPLEX LmsPredictor::step(COMPLEX x, double keep)
{
    mLineRe[static_cast<std::size_t>(mPosition)] = x.re;
    mLineIm[static_cast<std::size_t>(mPosition)] = x.im;

    const int taps = std::min(mTaps, kMostTaps);
    const int first = static_cast<int>(
        (static_cast<unsigned>(mDelay) + static_cast<unsigned>(mPosition)) & unsigned{kMask});

    // The line is a ring: the weights meet it in stretches that end where it wraps.
    const auto overStretches = [&](auto &&work) {
        for (int j = 0, k = first; j < taps; k = 0) {
            const int length = std::min(taps - j, kLineSize - k);
            work(j, k, length);
            j += length;
        }
    };

    Sums sums;
    overStretches([&](int j, int k, int length) {
        const Sums part = predict(&mLineRe[static_cast<std::size_t>(k)],
            &mLineIm[static_cast<std::size_t>(k)], &mWeightsRe[static_cast<std::size_t>(j)],
            &mWeightsIm[static_cast<std::size_t>(j)], length);
        sums.re += part.re;
        sums.im += part.im;
        sums.power += part.power;
    });

    const double mu = mRate / (sums.power + kPowerFloor);
    const COMPLEX step{mu * (x.re - sums.re), -mu * (x.im - sums.im)}; // mu conj(error)
    overStretches([&](int j, int k, int length) {
        adapt(&mLineRe[static_cast<std::size_t>(k)], &mLineIm[static_cast<std::size_t>(k)],
            &mWeightsRe[static_cast<std::size_t>(j)], &mWeightsIm[static_cast<std::size_t>(j)],
            length, keep, step);
    });

    mPosition = (mPosition + kMask) & kMask;
    return {sums.re, sums.im};
}
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/FilterFM.h"

#include "processor/Clones.h"

#include "FmSoft/DotProduct.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <complex>
#include <numbers>

namespace
{
constexpr double kPi = std::numbers::pi;

double sinc(double x)
{
    return std::sin(kPi * x) / (kPi * x);
}

// Sinc under the main lobe of a wider sinc (Lanczos window), order + 1 coefficients of sum 1.
SampleVector designLowPass(unsigned int order, double cutoff)
{
    SampleVector coefficients(order + 1);
    double sum = 0.0;
    for (unsigned int i = 0; i <= order; ++i) {
        const double t = 2.0 * i - order;
        coefficients[i] = t == 0.0 ? 1.0 : sinc(t * cutoff) * sinc(t / (order + 2.0));
        sum += coefficients[i];
    }
    for (double &coefficient : coefficients)
        coefficient /= sum;
    return coefficients;
}

// Work areas hold the history ahead of the block. Afterwards the newest samples become history:
// the last of history and block together, whichever of the two is the longer.
template <typename T>
void append(std::vector<T> &work, std::size_t history, const std::vector<T> &block)
{
    work.resize(history + block.size());
    std::copy(block.begin(), block.end(), work.begin() + static_cast<std::ptrdiff_t>(history));
}

template <typename T>
void keepHistory(std::vector<T> &work, std::size_t history)
{
    std::copy(work.end() - static_cast<std::ptrdiff_t>(history), work.end(), work.begin());
}

// out += gain * in over n numbers.
PROCESSOR_CLONES void accumulate(
    float *__restrict out, const float *__restrict in, float gain, std::size_t n)
{
    for (std::size_t i = 0; i < n; ++i)
        out[i] += gain * in[i];
}
} // namespace

FineTuner::FineTuner(unsigned int tableSize, int shift) : mTable(tableSize)
{
    for (unsigned int i = 0; i < tableSize; ++i) {
        const auto turns = (static_cast<long long>(i) * shift) % static_cast<long long>(tableSize);
        const double angle = static_cast<double>(turns) * 2.0 * kPi / tableSize;
        mTable[i] = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    }
}

void FineTuner::process(const IQSampleVector &in, IQSampleVector &out)
{
    out.resize(in.size());
    const std::size_t tableSize = mTable.size();
    std::size_t index = mIndex;
    for (std::size_t n = 0; n < in.size(); ++n) {
        const Velmora::complex<float> x = in[n];
        const Velmora::complex<float> phasor = mTable[index];
        out[n] = {x.re * phasor.re - x.im * phasor.im, x.re * phasor.im + x.im * phasor.re};
        if (++index == tableSize)
            index = 0;
    }
    mIndex = static_cast<unsigned int>(index);
}

LowPassFilterFirIQ::LowPassFilterFirIQ(unsigned int order, double cutoff)
    : mWork(order, Velmora::complex<float>{0.0f, 0.0f})
{
    for (const double coefficient : designLowPass(order, cutoff))
        mCoefficients.push_back(static_cast<float>(coefficient));
}

void LowPassFilterFirIQ::process(const IQSampleVector &in, IQSampleVector &out)
{
    out.assign(in.size(), Velmora::complex<float>{0.0f, 0.0f});
    if (in.empty())
        return;
    const std::size_t order = mCoefficients.size() - 1;
    append(mWork, order, in);
    for (std::size_t j = 0; j <= order; ++j)
        accumulate(&out[0].re, &mWork[order - j].re, mCoefficients[j], 2 * in.size());
    keepHistory(mWork, order);
}

DownsampleFilter::DownsampleFilter(
    unsigned int filterOrder, double cutoff, double downsample, bool integerFactor)
    : mDownsample(downsample),
      mDownsampleInteger(integerFactor ? static_cast<unsigned int>(std::lrint(downsample)) : 0),
      mOrder(filterOrder), mWork(filterOrder, 0.0)
{
    assert(downsample >= 1);
    const unsigned int filter_order = filterOrder;
    assert(filter_order > 1);

    mReversed = designLowPass(filterOrder - 1, cutoff); // symmetric: reversing it changes nothing
    mReversed.insert(mReversed.begin(), 0.0);
    mReversed.push_back(0.0);
}

void DownsampleFilter::process(const SampleVector &in, SampleVector &out)
{
    append(mWork, mOrder, in);
    if (mDownsampleInteger != 0)
        processInteger(in.size(), out);
    else
        processFractional(in.size(), out);
    keepHistory(mWork, mOrder);
}

void DownsampleFilter::processInteger(std::size_t length, SampleVector &samples_out)
{
    const std::size_t step = mDownsampleInteger;
    samples_out.resize((length + step - mPositionInteger - 1) / step);

    // Coefficients 1..order meet the samples before the position.
    FmSoft::dotProducts(&mReversed[1], mOrder, mWork.data() + mPositionInteger, step,
        samples_out.data(), samples_out.size());
    mPositionInteger += static_cast<unsigned int>(samples_out.size() * step - length);
}

void DownsampleFilter::processFractional(std::size_t length, SampleVector &out)
{
    const double end = static_cast<double>(length);
    if (mPosition == std::trunc(mPosition) && mDownsample == std::trunc(mDownsample))
        return processOnSamples(length, out);
    const std::size_t n_out = static_cast<unsigned int>(end / mDownsample + 2.0);
    out.resize(n_out);

    // y = sum over j of ((1 - frac) c[j] + frac c[j + 1]) x[whole - j], as two products; reversed,
    // c[order]..c[0] meet x[whole - order]..x[whole], and c[order + 1]..c[1] stand one earlier. A
    // position on a sample needs the first product alone.
    std::size_t i = 0;
    double position = mPosition;
    for (;; ++i) {
        position = static_cast<double>(i) * mDownsample + mPosition;
        const auto whole = static_cast<std::size_t>(position);
        if (whole >= length)
            break;
        const double frac = position - static_cast<double>(whole);
        const double *x = &mWork[whole];
        double y = FmSoft::dotProduct(&mReversed[1], x, mOrder + 1);
        if (frac != 0.0)
            y = (1.0 - frac) * y + frac * FmSoft::dotProduct(&mReversed[0], x, mOrder + 1);
        out[i] = y;
    }
    assert(i <= n_out && i + 2 >= n_out);
    out.resize(i);
    mPosition = std::max(position - end, 0.0);
}

// Every position stands on a sample, as from 192 to 48 kHz: the first of the two products is all.
void DownsampleFilter::processOnSamples(std::size_t length, SampleVector &out)
{
    const auto step = static_cast<std::size_t>(mDownsample);
    const auto position = static_cast<std::size_t>(mPosition);
    out.resize(position < length ? (length - position + step - 1) / step : 0);
    FmSoft::dotProducts(
        &mReversed[1], mOrder + 1, mWork.data() + position, step, out.data(), out.size());
    mPosition = static_cast<double>(position + out.size() * step - length);
}

void LowPassFilterRC::process(const SampleVector &in, SampleVector &out)
{
    out.assign(in.begin(), in.end());
    process_inplace(out);
}

void LowPassFilterRC::process_inplace(SampleVector &samples)
{
    const double pole = std::exp(-1.0 / mTimeConstant);
    const double gain = 1.0 - pole;
    double y = mLast;
    for (double &sample : samples) {
        y = pole * y + gain * sample;
        sample = y;
    }
    mLast = y;
}

HighPassFilterIir::HighPassFilterIir(double cutoff)
{
    const std::complex<double> analogPole = std::polar(1.0, 2.356194490192345); // 3 pi / 4
    const std::complex<double> pole = std::exp(2.0 * kPi * cutoff / analogPole);
    mA1 = -2.0 * pole.real();
    mA2 = std::norm(pole);
    const double gain = (mB0 - mB1 + mB2) / (1.0 - mA1 + mA2);
    mB0 /= gain;
    mB1 /= gain;
    mB2 /= gain;
}

void HighPassFilterIir::process(const SampleVector &in, SampleVector &out)
{
    out.assign(in.begin(), in.end());
    process_inplace(out);
}

void HighPassFilterIir::process_inplace(SampleVector &samples)
{
    // Locals: what is stored could be a member, for all the compiler knows.
    const HighPassFilterIir c = *this;
    double x1 = mX1;
    double x2 = mX2;
    double y1 = mY1;
    double y2 = mY2;
    for (double &sample : samples) {
        const double x = sample;
        const double y = (c.mB0 * x + c.mB1 * x1 + c.mB2 * x2 - c.mA2 * y2) - c.mA1 * y1;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        sample = y;
    }
    mX1 = x1;
    mX2 = x2;
    mY1 = y1;
    mY2 = y2;
}

LowPassFilterIir::LowPassFilterIir(double cutoff)
{
    const double w = 2.0 * kPi * cutoff;
    const std::complex<double> z0 = std::exp(w * std::polar(1.0, 1.9634954084936207)); // 5 pi / 8
    const std::complex<double> z1 = std::exp(w * std::polar(1.0, 2.748893571891069));  // 7 pi / 8
    const double r0 = 2.0 * z0.real();
    const double r1 = 2.0 * z1.real();
    const double m0 = std::norm(z0);
    const double m1 = std::norm(z1);
    mA1 = -(r0 + r1);
    mA2 = r0 * r1 + m0 + m1;
    mA3 = -(r0 * m1 + r1 * m0);
    mA4 = m0 * m1;
    mB0 = 1.0 + mA1 + mA2 + mA3 + mA4;
}

void LowPassFilterIir::process(const SampleVector &in, SampleVector &out)
{
    out.resize(in.size());
    for (std::size_t n = 0; n < in.size(); ++n) {
        const double y = mB0 * in[n] - mA1 * mY1 - mA2 * mY2 - mA3 * mY3 - mA4 * mY4;
        mY4 = mY3;
        mY3 = mY2;
        mY2 = mY1;
        mY1 = y;
        out[n] = y;
    }
}

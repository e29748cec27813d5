// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "signal_primitives/complex.h"

#include <cstddef>
#include <vector>

/// Filters of the wide-FM decoder. All keep their history from block to block, take blocks of any
/// length and write into a vector that is resized to the length of the output; it allocates only
/// while it grows. Frequencies are in cycles per sample. None is thread-safe.

using SampleVector = std::vector<double>;
using IQSampleVector = std::vector<Velmora::complex<float>>;

/// Shifts a complex signal by a multiple of its rate / table size, by a table of phasors.
class FineTuner
{
public:
    /// Shifts upward by shift / tableSize cycles per sample.
    FineTuner(unsigned int tableSize, int shift);

    void process(const IQSampleVector &in, IQSampleVector &out);

private:
    unsigned int mIndex = 0;
    IQSampleVector mTable;
};

/// Low-pass FIR for complex signals in single precision, windowed sinc with a DC gain of 1.
class LowPassFilterFirIQ
{
public:
    /// order + 1 coefficients.
    LowPassFilterFirIQ(unsigned int order, double cutoff);

    void process(const IQSampleVector &in, IQSampleVector &out);

private:
    std::vector<float> mCoefficients;
    IQSampleVector mWork; // history of `order` samples, then the block
};

/// Low-pass and decimation in one, by a whole or by a fractional factor.
///
/// Fractional factors take the filter between two of its taps by linear interpolation, for which a
/// zero stands at either end of the coefficients.
class DownsampleFilter
{
public:
    /// downsample at least 1, filterOrder above 1; a whole factor is rounded.
    DownsampleFilter(
        unsigned int filterOrder, double cutoff, double downsample, bool integerFactor);

    void process(const SampleVector &in, SampleVector &out);

private:
    void processInteger(std::size_t length, SampleVector &out);
    void processFractional(std::size_t length, SampleVector &out);
    void processOnSamples(std::size_t length, SampleVector &out);

    double mDownsample;
    unsigned int mDownsampleInteger; // 0 while the factor is fractional
    unsigned int mPositionInteger = 0;
    double mPosition = 0.0;
    std::size_t mOrder;
    SampleVector mReversed; // coefficients, last one first, so that they meet rising samples
    SampleVector mWork;     // history of mOrder samples, then the block
};

/// First-order low-pass: the de-emphasis.
class LowPassFilterRC
{
public:
    /// Time constant in samples.
    explicit LowPassFilterRC(double timeConstant) : mTimeConstant(timeConstant) { }

    void clear() { mLast = 0.0; }

    /// In samples; what is in the filter stays.
    void setTimeConstant(double timeConstant) { mTimeConstant = timeConstant; }

    void process(const SampleVector &in, SampleVector &out);
    void process_inplace(SampleVector &samples);

private:
    double mTimeConstant;
    double mLast = 0.0;
};

/// Second-order Butterworth high-pass by matched poles, unit gain at the Nyquist frequency.
class HighPassFilterIir
{
public:
    explicit HighPassFilterIir(double cutoff);

    void clear() { mX1 = mX2 = mY1 = mY2 = 0.0; }

    void process(const SampleVector &in, SampleVector &out);
    void process_inplace(SampleVector &samples);

private:
    double mB0 = 1.0;
    double mB1 = -2.0;
    double mB2 = 1.0;
    double mA1;
    double mA2;
    double mX1 = 0.0;
    double mX2 = 0.0;
    double mY1 = 0.0;
    double mY2 = 0.0;
};

/// Fourth-order Butterworth low-pass by matched poles, unit gain at DC.
class LowPassFilterIir
{
public:
    explicit LowPassFilterIir(double cutoff);

    void process(const SampleVector &in, SampleVector &out);

private:
    double mB0;
    double mA1;
    double mA2;
    double mA3;
    double mA4;
    double mY1 = 0.0;
    double mY2 = 0.0;
    double mY3 = 0.0;
    double mY4 = 0.0;
};

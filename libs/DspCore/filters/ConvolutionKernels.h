// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

// The inner loops of PartitionedConvolver and DecimatingFir, for every width of vector registers.
// The loader takes the widest form that the processor has.

namespace DspCore
{
/// Complex numbers with their parts in arrays of their own, so that consecutive ones fill vector
/// registers.
template <typename Real>
struct Parts
{
    const Real *re;
    const Real *im;
};

/// Samples that directFir() may read after the last one that it was asked for.
constexpr int kDirectOverrun = 32;

/// Adds a FIR filter's response to what stands in `out`, for each i below n:
///
///   out[i] += taps[0] x[i] + taps[1] x[i - 1] + ... + taps[count - 1] x[i - count + 1]
///
/// Values of x after x[n - 1] are read (kDirectOverrun at most) but have no influence.
void directFir(Parts<double> x, int n, Parts<double> taps, int count, COMPLEX *out);
void directFir(Parts<float> x, int n, Parts<float> taps, int count, COMPLEX32 *out);

/// Bins of a spectrum whose real parts stand together, followed by their imaginary parts: as many
/// as fill the widest register.
template <typename Real>
constexpr int kGroupBins = 64 / int(sizeof(Real));

/// Spectra of equal length, group by group of bins: first that group of all spectra, then the next
/// group of all, so that a sum over the spectra runs straight through memory.
template <typename Real>
struct Spectra
{
    const Real *values; // on a cache line
    int count;          // spectra
};

/// For each of `bins` bins: the sum of history[(newest + k) mod count] * filter[first + k], for
/// first + k from first to count - 1. Both sets have the same count.
void sumProducts(
    Spectra<double> history, int newest, Spectra<double> filter, int first, int bins, COMPLEX *out);
void sumProducts(
    Spectra<float> history, int newest, Spectra<float> filter, int first, int bins, COMPLEX32 *out);

/// Windows at a distance of a whole number of cache lines, whose length is a multiple of eight such
/// distances, are summed quickest, eight at a time.
constexpr int kWindowsInRows = 8;
constexpr bool inRows(int step, int count)
{
    return step % 4 == 0 && count % (kWindowsInRows * step) == 0;
}

/// Weighted sums over windows of a stream, the next window `step` samples on: for each n below
/// `outputs`, out[n * outStep] is the sum of taps[2 i] oldest[n * step + i] for i below `count`.
/// Each tap stands twice in `taps`; the count is a multiple of 4.
void sumWindows(const COMPLEX *oldest, int step, const double *taps, int count, COMPLEX *out,
    int outStep, int outputs);

/// Product of two spectra of `bins` bins, folded to `folded` bins: each is the sum of the products
/// at its own place and at every `folded` places from there on.
void foldProducts(const COMPLEX *a, const COMPLEX *b, int bins, COMPLEX *out, int folded);

/// Folds a spectrum of `bins` bins in place to its first `folded` ones: each is the sum of those at
/// its own place and at every `folded` places from there on.
void foldBins(COMPLEX *spectrum, int bins, int folded);

/// Lays out a spectrum of `bins` bins as number `index` of `count` spectra.
void storeSpectrum(const COMPLEX *spectrum, int bins, double *values, int index, int count);
void storeSpectrum(const COMPLEX32 *spectrum, int bins, float *values, int index, int count);
} // namespace DspCore

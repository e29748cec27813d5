// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

// The inner loops of the spectrum line, one pass each, for every width of vector registers.

namespace DspCore
{
/// What the first step of a transform of 4 `quarter` points takes; see WindowedTransform.
struct FirstStep
{
    int quarter;
    const REAL32 *window; // 4 quarter
    const REAL32 *turnRe; // exp(-j 2 pi n / (4 quarter)), quarter
    const REAL32 *turnIm;
};

/// Samples n = first..first + count - 1 of each quarter: weighs them, adds them up to the samples
/// of the four transforms that remain, one after the other in `out`, and turns those. Sample
/// `first` of quarter q is in[q][0].
void firstStep(
    const FirstStep &step, const COMPLEX32 *const in[4], COMPLEX32 *out, int first, int count);

/// Power times `scale` of the bins 4 k + r that transform r of `quarter` points has given, in
/// order. The halves of the line change places, so that negative frequencies come first.
void powerLine(const COMPLEX32 *bins, REAL32 scale, REAL32 *line, int quarter);

/// Linear power, which is not negative, times `scale` to dB, and an offset on it; both may be the
/// same line.
void powerToDb(
    const REAL32 *power, REAL32 *db, int size, REAL32 offset = 0.0f, REAL32 scale = 1.0f);

/// Copies a line into its row, which may be the line, adds it to a running sum, and gives what that
/// and another sum are together.
void addLine(
    const REAL32 *line, REAL32 *row, REAL32 *newer, const REAL32 *older, REAL32 *sum, int size);

/// Where the outputs of a stretched line lie between its inputs. Output n is a cubic through the
/// inputs y0..y3 from index[n] on: y2, and what their differences from y2 weigh.
struct CubicPlaces
{
    const int *index; // rising; quickest in steps of 0 and 1
    const REAL32 *weight0;
    const REAL32 *weight1;
    const REAL32 *weight3;
};

/// Inputs that cubics() may read after those that its last output lies between.
constexpr int kCubicOverrun = 16;

/// Makes `count` outputs of a line that does not overlap them.
void cubics(const REAL32 *in, const CubicPlaces &places, REAL32 *out, int count);
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

// The inner loops of the spectrum line, one pass each, for every width of vector registers.

namespace DspCore
{
/// Power of each of `size` bins times `scale`. The halves of the transform change places, so that
/// negative frequencies come first.
void powerLine(const COMPLEX32 *bins, REAL32 scale, REAL32 *line, int size);

/// Linear power, which is not negative, times `scale` to dB, and an offset on it; both may be the
/// same line.
void powerToDb(
    const REAL32 *power, REAL32 *db, int size, REAL32 offset = 0.0f, REAL32 scale = 1.0f);

/// Adds a line to a running sum, and gives what that and another sum are together.
void addLine(const REAL32 *line, REAL32 *newer, const REAL32 *older, REAL32 *sum, int size);

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

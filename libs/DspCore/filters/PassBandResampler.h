// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/FoldingConvolver.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// Passes a band that may lie anywhere, and brings it to another rate: FastFir followed by
/// Resampler, as one decimating filter wherever that gives the same.
///
///     room() ─┬─ (whole frames, nothing of an earlier filter left) folding convolver ─┬─> output
///             └─ band filter ─ resampler ─────────────────────────────────────────────┘
///
/// The folding convolver has the convolution of both impulse responses, and no rounding to single
/// precision between the two. It stands aside for blocks that are no frame, ratios that leave a
/// frame at another place, filters whose answer depends on the transform (see BlockConvolver), and
/// while an earlier filter rings out. The line of the last inputs serves both: a change of ways
/// makes the other one catch up on it, so that the output shows nothing of it. Not thread-safe.
class PassBandResampler
{
public:
    /// Edges in cycles per input sample, and taps of FastFir. The response to what came before
    /// rings out. Allocates.
    void setBand(double low, double high, int taps);

    /// Changes the rate by up / down from here on, and starts with an empty history at phase 0.
    /// Allocates.
    void setRatio(int up, int down);

    /// Where a block of up to SIGNAL_MAX_SIZE samples is to be put for process().
    COMPLEX *room(int length);

    /// Converts the block that stands in room(length). Length and timing of the output are
    /// Resampler's. Allocates nothing.
    void process(int length, COMPLEX *out, int &outLength);

    /// Empties the history; the place in the stream stays.
    void clear();

private:
    static constexpr int kFrame = FoldingConvolver::kFrame;

    void setUpFolding();
    void clearLine();
    void beginFolding();
    void endFolding();
    void processPlain(COMPLEX *block, int length, COMPLEX *out, int &outLength);

    int mUp = 1;
    int mDown = 1;
    FastFir mFilter;
    Resampler mResampler;
    bool mCanFold = false;   // band and ratio permit
    bool mIsSettled = false; // nothing of an earlier filter has come out, or into the resampler
    bool mFolds = false;     // the last block took that way; filter and resampler are out of date
    FoldingConvolver mFolding;
    int mHistory = 0;             // samples kept in front of a block, whole frames
    AlignedVector<COMPLEX> mLine; // inputs, the oldest first
    int mEnd = 0;                 // of the inputs
    std::vector<COMPLEX> mBlock = std::vector<COMPLEX>(SIGNAL_MAX_SIZE); // of the plain way
};
} // namespace DspCore

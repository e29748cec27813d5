// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/receiver/ReceiverChannel.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// The road of wide FM: the tuned block of channel A, still at the input rate, is band-filtered and
/// brought to the decoder's rate.
///
///     input ──> band filter ──> resampler ──> 192 kHz or less ──> output
///
/// Nothing decodes the signal here: the output is silence that lasts as long as the block, so that
/// fades and outlets keep their time.
class WideFm
{
public:
    static constexpr double kMaxRate = 192000.0; // Hz, of the signal behind the resampler

    /// Edges in cycles per input sample.
    void setBand(double low, double high, int taps) { mBandFilter.init(low, high, taps); }

    /// Resamples from the input rate to 192 kHz; an input at or below that keeps its rate.
    void setRates(double inputRate, double outputRate);

    /// The same with the ratio given as integers, for input rates above 192 kHz.
    void setRatio(int up, int down, double outputRate);

    /// Takes `count` samples of the channel's input and leaves audio in its output.
    void process(ReceiverChannel &channel, int count);

    void clear();

private:
    int audioLength(int count);

    FastFir mBandFilter;
    Resampler mResampler;
    std::vector<COMPLEX> mWide = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    double mStep = kMaxRate / 48000.0; // samples behind the resampler per audio sample
    double mPosition = 0.0;            // of the next audio sample in the coming block
};
} // namespace DspCore

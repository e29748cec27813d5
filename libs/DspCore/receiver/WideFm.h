// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/demodulators/DemodulatorWFM.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/receiver/ReceiverChannel.h"
#include "DspCore/types.h"
#include "FmSoft/FmDecode.h"

#include <memory>
#include <vector>

namespace DspCore
{
/// The road of wide FM: the tuned block of channel A, still at the input rate, becomes stereo
/// audio.
///
///     input ─ band filter ─ resampler ─┬─ 192 kHz or less, single precision ─ decoder ─> output
///                                      └─ channel meter
///
/// The decoder is built anew with every rate: neither its history nor its stereo switch outlive a
/// change. Below the rate of the audio there is nothing to decode, and the output stays empty. Not
/// thread-safe; the owner serialises.
class WideFm
{
public:
    static constexpr double kMaxRate = 192000.0; // Hz, of the signal behind the resampler

    WideFm();

    /// Edges in cycles per input sample.
    void setBand(double low, double high, int taps) { mBandFilter.init(low, high, taps); }

    /// Resamples from the input rate to 192 kHz; an input at or below that keeps its rate. Stereo
    /// is enabled afterwards.
    void setRates(double inputRate, double outputRate);

    /// The same with the ratio given as integers, for input rates above 192 kHz.
    void setRatio(int up, int down, double outputRate);

    /// Mono for both ears while off. Lasts until the next change of a rate.
    void setStereo(bool stereo);

    /// Region of the DemodulatorWFM, which is set up along with the rest and never given a sample:
    /// the decoder keeps its 50 us in all regions.
    void setUsaRegion(bool usa) { mDemodulator.setUsaRegion(usa); }

    /// Whether the pilot was locked at the end of the last block and stereo is enabled.
    bool isStereo() const;

    /// Takes `count` samples of the channel's input and leaves audio in its output; measures the
    /// channel ahead of the decoder. Allocates nothing but what the decoder's first blocks need.
    void process(ReceiverChannel &channel, int count);

    /// Empties the filters. The decoder runs on.
    void clear();

private:
    void setUpDecoder(double rate, double outputRate);
    void layOut(ReceiverChannel &channel) const;

    FastFir mBandFilter;
    Resampler mResampler;
    std::vector<COMPLEX> mWide = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    IQSampleVector mDecoderInput;
    SampleVector mDecoded;
    std::unique_ptr<FmDecoder> mDecoder; // none if the signal is slower than the audio
    DemodulatorWFM mDemodulator;
};
} // namespace DspCore

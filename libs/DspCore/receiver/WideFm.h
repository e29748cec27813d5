// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/audio/RxMeter.h"
#include "DspCore/filters/PassBandResampler.h"
#include "DspCore/types.h"
#include "FmSoft/FmDecode.h"

#include <memory>
#include <vector>

namespace DspCore
{
/// The road of wide FM: a tuned block at the input rate becomes stereo audio.
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
    static constexpr double kMaxRate = 192000.0; // Hz, of the resampled signal

    WideFm();

    /// Edges in cycles per input sample.
    void setBand(double low, double high, int taps) { mInput.setBand(low, high, taps); }

    /// Resamples from the input rate to 192 kHz; an input at or below that keeps its rate. Stereo
    /// is enabled afterwards.
    void setRates(double inputRate, double outputRate);

    /// The same, with the ratio of a rate that has one of its own.
    void setInputRate(double inputRate, double outputRate);

    /// The region rules the de-emphasis, and mono outlasts a change of a rate. Off at first.
    void setRegional(bool regional);

    /// Mono for both ears while off. Lasts until the next change of a rate, or if regional for
    /// good.
    void setStereo(bool stereo);

    /// If regional, 75 us of de-emphasis instead of 50.
    void setUsa(bool usa);

    /// Whether the pilot was locked at the end of the last block and stereo is enabled.
    bool isStereo() const;

    /// Where a block of up to SIGNAL_MAX_SIZE samples is to be put for process().
    COMPLEX *room(int count) { return mInput.room(count); }

    /// Takes the block that stands in room(count), measures the channel ahead of the decoder and
    /// leaves audio in `output`; its length is the result. Allocates nothing but what the decoder's
    /// first blocks need.
    int process(int count, RxMeter &meter, COMPLEX *output);

    /// Empties the filters. The decoder runs on.
    void clear();

    /// Empties the filters and has the decoder begin anew.
    void restart();

private:
    void followRegion();
    void setUpDecoder(double rate, double outputRate);
    int layOut(COMPLEX *output) const;

    bool mRegional = false;
    bool mStereo = true;
    bool mUsa = false;
    double mRate = kMaxRate; // Hz, of the resampled signal
    PassBandResampler mInput;
    std::vector<COMPLEX> mWide = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    IQSampleVector mDecoderInput;
    SampleVector mDecoded;
    std::unique_ptr<FmDecoder> mDecoder; // none if the signal is slower than the audio
};
} // namespace DspCore

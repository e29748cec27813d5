// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/audio/RxMeter.h"
#include "DspCore/audio/Vm_Clipper.h"
#include "DspCore/receiver/AgcParam.h"
#include "DspCore/receiver/GainRamp.h"
#include "DspCore/receiver/ModulationSwitcher.h"
#include "DspCore/receiver/ReceiverChannel.h"
#include "DspCore/receiver/WideFm.h"
#include "DspCore/types.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <QObject>
#include <QVector>

#include <gsl/span>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <utility>

namespace DspCore
{
/// Turns blocks of IQ samples into audio for two tuned frequencies, channels A and B.
///
///     block ─┬─ input meter
///            ├─ A: its road, see ReceiverChannel ─┬─> vac(), see there
///            │                                    └──────────────┐
///            └─ B: the same, but for wide FM and DRM's shift ────┤
///      ┌─────────────────────────────────────────────────────────┘
///      └─ mode fade ─┬─> lineout()
///                    └─ fixed gain ─ main volume ─ A + B ─ clipper ─┬─> sound-card hook
///                                                                   └─> buffer()
///
/// In wide FM the input of A goes through WideFm. Channel B always runs; it joins the sum, and the
/// gains of the channels act, while setEnableVfob() is on. The main volume starts at silence, so
/// that a new receiver fades in.
///
/// Frequencies, edges and offsets are in Hz, levels and volumes in dB, times in ms. `channel` is 0
/// for A and 1 for B; any other number is ignored by every setter that looks at it.
///
/// Not thread-safe: the owner holds one lock around process() and around each setter. The three
/// outlets have locks of their own, and another thread may read each of them at any time.
class Receiver : public QObject
{
    Q_OBJECT

public:
    using AgcParam = DspCore::AgcParam;
    using ModulationSwitcher = DspCore::ModulationSwitcher;
    using SoundCardCallback = std::function<void(gsl::span<COMPLEX>)>;

    /// Stereo pairs that an outlet holds: a third of a second at 48 kHz.
    static constexpr unsigned kOutletSize = 16384;

    explicit Receiver(QObject *parent = nullptr);

    /// None at first. Ahead of the first block.
    void setRepairs(const ReceiverRepairs &repairs);

    /// Runs one block at the input rate, len up to SIGNAL_MAX_SIZE; a longer one is a programming
    /// error and stops the program. A null buffer or a length below 1 does nothing. The buffer is
    /// only read. An outlet without room for the whole block misses it. Allocates nothing.
    void process(COMPLEX *buffer, int len);

    /// Empties the history of all filters, makes the mode asked for current and ends any fade. The
    /// outlets, oscillators, gains and tone squelches stay.
    void clear();

    /// A rate fuzzily equal to the present one does nothing. Both clear(). The input rate also
    /// drops the tuning of both oscillators, keeps A's RIT, empties buffer() and fades the main
    /// volume in again.
    void setInputSampleRate(double rate);
    void setOutputSampleRate(double rate);
    double inputSampleRate() const { return mInputRate; }

    /// Moves the station at `frequency` to 0 Hz until the next change of the input rate.
    void setDownConverter(unsigned int channel, double frequency)
    {
        one(channel, &ReceiverChannel::setTuning, frequency);
    }

    /// Always 0.0: the tuning lives with the caller, and this is the offset on top of it.
    double downConverter(unsigned int) const { return 0.0; }

    /// Fine tuning on top of setDownConverter(); channel A only.
    void setRit(unsigned int channel, double frequency);

    /// Both channels and wide FM get the same pass band, whatever the channel. Costly: three filter
    /// designs.
    void setBandFilterIf(unsigned int channel, double low, double high);

    /// Taps of the band filters. Wide FM takes them over with the next setBandFilterIf().
    void setFilterTaps(int taps);

    /// Takes effect after a fade; the mode asked for already is left alone. With the repair `fade`,
    /// from one mode that has gain control to another, at once: the fade comes with the joint, when
    /// what waits in the look-ahead has been heard.
    void setModulation(Modulation modulation);

    /// Takes effect at the bottom of a fade, also with unchanged values; with the repair `agc` at
    /// once if no block has been processed since clear(). Attack, decay and hang in ms, hang
    /// truncated.
    void setAgcParam(bool on, double attack, double decay, double hang);

    /// Highest gain of the gain control and its gain while off, of both channels whatever the
    /// channel: -19..120 and -60..120 dB.
    void setAgcGain(unsigned int, int gain) { both(&ReceiverChannel::setAgcGain, gain); }

    /// Pitch of a CW station in tune; the CW peak filter and the DSE sit there as well.
    void setCwTone(int tone) { both(&ReceiverChannel::setCwTone, tone); }

    void setDiglOffset(int offset) { both(&ReceiverChannel::setDiglOffset, offset); }
    void setDiguOffset(int offset) { both(&ReceiverChannel::setDiguOffset, offset); }

    /// Limited to -60..0; -60 is silence.
    void setMainVolume(double db);
    void setVolume(unsigned int channel, double db)
    {
        one(channel, &ReceiverChannel::gain, &ChannelGain::setVolume, db);
    }

    /// See ChannelGain::setBalance().
    void setBalance(unsigned int channel, double db)
    {
        one(channel, &ReceiverChannel::gain, &ChannelGain::setBalance, db);
    }
    void setMainMute(bool mute) { mMainMute = mute; }
    void setMute(unsigned int channel, bool mute)
    {
        one(channel, &ReceiverChannel::gain, &ChannelGain::setMute, mute);
    }

    /// Whether channel B is heard.
    void setEnableVfob(bool enable) { mChannelBInUse = enable; }

    /// Complex signal or delayed ear instead of mono, see above.
    void setBin(bool enable) { both(&ReceiverChannel::setBin, enable); }

    /// Peak filters of SSB and of CW. Quality at least 0.1; every change empties the filter.
    void setApf(bool enable) { both(&ReceiverChannel::setApf, enable); }
    void setSsbApfGain(int gainDb) { both(&ReceiverChannel::setSsbApfGain, gainDb); }
    void setSsbApfQuality(double quality) { both(&ReceiverChannel::setSsbApfQuality, quality); }
    void setSsbApfFreq(int frequency) { both(&ReceiverChannel::setSsbApfFreq, frequency); }
    void setCwApfGain(int gainDb) { both(&ReceiverChannel::setCwApfGain, gainDb); }
    void setCwApfQuality(int quality) { both(&ReceiverChannel::setCwApfQuality, quality); }

    /// Noise reduction and auto notch, see LmsPredictor. Switch, taps and delay start them anew.
    void setNr(bool enable) { both(&ReceiverChannel::nr, &NoiseReduction::setEnable, enable); }
    void setNrTaps(int taps) { both(&ReceiverChannel::nr, &NoiseReduction::setTaps, taps); }
    void setNrDelay(int samples) { both(&ReceiverChannel::nr, &NoiseReduction::setDelay, samples); }
    void setNrRate(double rate) { both(&ReceiverChannel::nr, &NoiseReduction::setRate, rate); }
    void setNrLeak(double leak) { both(&ReceiverChannel::nr, &NoiseReduction::setLeak, leak); }
    void setAnf(bool enable) { both(&ReceiverChannel::anf, &AutoNotchFilter::setEnable, enable); }
    void setAnfTaps(int taps) { both(&ReceiverChannel::anf, &AutoNotchFilter::setTaps, taps); }
    void setAnfDelay(int samples)
    {
        both(&ReceiverChannel::anf, &AutoNotchFilter::setDelay, samples);
    }
    void setAnfRate(double rate) { both(&ReceiverChannel::anf, &AutoNotchFilter::setRate, rate); }
    void setAnfLeak(double leak) { both(&ReceiverChannel::anf, &AutoNotchFilter::setLeak, leak); }

    /// Spreads CW between the ears while binaural is off; its quality is the length in taps.
    void setDse(bool enable) { both(&ReceiverChannel::dse, &Dse::setEnable, enable); }
    void setDseQuality(int taps) { both(&ReceiverChannel::dse, &Dse::setTaps, taps); }
    void setDseSwap(bool swap) { both(&ReceiverChannel::dse, &Dse::setSwap, swap); }

    /// Gains in dB, lowest band first; any other number of them than 18 is ignored.
    void setEqualizerEnable(bool enable)
    {
        both(&ReceiverChannel::equalizer, &Equalizer18::setEnable, enable);
    }
    void setEqualizerGains(const QVector<int> &gains)
    {
        both(&ReceiverChannel::equalizer, &Equalizer18::init, gains);
    }

    /// Squelch by level, threshold in dBm, of one channel; in NFM by tone as well, of both. A tone
    /// index below 0 counts as 0.
    void setSqlEnable(unsigned int channel, bool enable)
    {
        one(channel, &ReceiverChannel::setSqlEnable, enable);
    }
    void setSqlValue(unsigned int channel, int threshold)
    {
        one(channel, &ReceiverChannel::setSqlValue, threshold);
    }
    void setEnableCTCSS(bool enable)
    {
        both(&ReceiverChannel::sqlCtcss, &SqlCtcss::setEnable, enable);
    }
    void setToneCTCSS(int index)
    {
        both(&ReceiverChannel::sqlCtcss, &SqlCtcss::setTone, std::max(index, 0));
    }

    /// Wide FM in stereo where a pilot is; a change of a rate switches it on again. The region
    /// changes nothing: the decoder keeps its 50 us in all of them. Not so with the repair `wfm`.
    void setWfmStereo(bool stereo) { mWideFm.setStereo(stereo); }
    void setWfmUsa(bool usa) { mWideFm.setUsa(usa); }

    /// Called inside process() with the block that goes to buffer(), whether or not it fits there.
    void setSoundCardCallback(SoundCardCallback callback)
    {
        mSoundCardCallback = std::move(callback);
    }

    /// Final audio.
    CircularBuffer<COMPLEX> &buffer() { return mBuffer; }

    /// Channel A before the swap of sidebands and the copy to both ears; nothing in wide FM. With
    /// the repair `cable` after the gain control, and wide FM as well.
    CircularBuffer<COMPLEX> &vac() { return mVac; }

    /// Channel A before fixed gain and volume.
    CircularBuffer<COMPLEX> &lineout() { return mLineOut; }

    /// Always -120.0; getDbm() has the levels.
    double signalLevel(Channel) const { return kNoLevel; }

    /// Levels of the last block, whatever the channel: dB of the two parts of the input, dBm of A
    /// and B.
    void getAdc(unsigned int channel, double &re, double &im) const;
    void getDbm(unsigned int channel, double &a, double &b) const;

    /// Whether the last block was heard in stereo.
    bool wfmIsStereo() const { return mWfmStereoSeen; }

private:
    static constexpr double kNoLevel = -120.0; // dB or dBm, floor of the level displays

    ReceiverChannel &a() { return mChannels[0]; }
    ReceiverChannel &b() { return mChannels[1]; }

    /// Calls a setter of both channels, or of one of their blocks.
    template <typename... Arguments, typename... Values>
    void both(void (ReceiverChannel::*setter)(Arguments...), const Values &...values)
    {
        for (ReceiverChannel &channel : mChannels)
            (channel.*setter)(values...);
    }
    template <typename Block, typename Setter, typename... Values>
    void both(Block ReceiverChannel::*block, Setter Block::*setter, const Values &...values)
    {
        for (ReceiverChannel &channel : mChannels)
            ((channel.*block).*setter)(values...);
    }

    /// The same for one channel, if there is one of this number.
    template <typename... Arguments, typename... Values>
    void one(unsigned int channel, void (ReceiverChannel::*setter)(Arguments...),
        const Values &...values)
    {
        if (channel < mChannels.size())
            (mChannels[channel].*setter)(values...);
    }
    template <typename Block, typename Setter, typename... Values>
    void one(unsigned int channel, Block ReceiverChannel::*block, Setter Block::*setter,
        const Values &...values)
    {
        if (channel < mChannels.size())
            ((mChannels[channel].*block).*setter)(values...);
    }

    // The steps of process(), in its order.
    void clearInFade();
    bool canPass(Modulation modulation) const;
    void applyNewestAgc();
    void runTail();
    void applyFixedGain();
    void applyMainVolume();
    void addChannelB();
    void readMeters();

    void setUpVolumeRamp();
    void setUpWideBand();
    void designWideBand();

    /// Wide FM's filter: edges in cycles per input sample.
    struct WideBand
    {
        double low;
        double high;
        int taps;
    };

    double mInputRate = 192000.0; // Hz
    double mOutputRate = 48000.0; // Hz
    double mBandLow = 0.0;        // Hz
    double mBandHigh = 3000.0;    // Hz
    int mFilterTaps = 1000;
    std::optional<WideBand> mWideBand; // asked for, and not designed while nobody hears wide FM
    bool mChannelBInUse = false;
    bool mMainMute = false;
    bool mHoldsAgc = false; // the repair `agc`
    bool mIsShort = false;  // the repair `fade`
    bool mHeard = false;    // a block since clear()

    AgcParam mAgcParam;             // as asked for
    std::deque<AgcParam> mAgcQueue; // waiting for the bottom of a fade, newest at the back

    double mAdcRe = kNoLevel; // dB
    double mAdcIm = kNoLevel; // dB
    bool mWfmStereoSeen = false;

    CircularBuffer<COMPLEX> mBuffer{kOutletSize};
    CircularBuffer<COMPLEX> mVac{kOutletSize};
    CircularBuffer<COMPLEX> mLineOut{kOutletSize};

    RxMeter mInputMeter;
    std::array<ReceiverChannel, 2> mChannels{
        ReceiverChannel(Channel::A, &mVac), ReceiverChannel(Channel::B, nullptr)};
    WideFm mWideFm;
    ModulationSwitcher mSwitcher;
    GainRamp mMainVolume{0.0f, 1.0f, 0.0f}; // the pole comes with the output rate
    Velmora::CppDsp::Vm_Clipper<REAL> mClipper;
    SoundCardCallback mSoundCardCallback;
};
} // namespace DspCore

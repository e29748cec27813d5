// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/DownConverter.h"
#include "DspCore/receiver/AgcParam.h"
#include "DspCore/receiver/GainRamp.h"
#include "DspCore/receiver/ModulationSwitcher.h"
#include "DspCore/receiver/ReceiverChannel.h"
#include "DspCore/receiver/WideFm.h"
#include "DspCore/types.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <QObject>

#include <gsl/span>

#include <array>
#include <deque>
#include <functional>

namespace DspCore
{
/// Turns blocks of IQ samples into audio for two tuned frequencies, channels A and B.
///
///     block ─┬─ A: oscillator ─┬─ pre-filter ─ decimator ─ DIGL/DIGU mixer ─ band filter ─┐
///            │                 └─ (wide FM) band filter ─ resampler ─────> tail            │
///            └─ B: the same without wide FM                                                │
///         ┌────────────────────────────────────────────────────────────────────────────────┘
///         └─ DRM mixer (A) ─┬─ swap of the parts (LSB) ─ both ears ─> tail
///                           └─> vac()
///     tail ─ mode fade ─┬─ fixed gain ─ main volume ─ A + B ─ sound-card hook ─> buffer()
///                       └─> lineout()
///
/// The blocks up to the decimator run at the input rate, all others at the output rate. Channel B
/// always runs; it joins the sum, and the gains of the channels act, while setEnableVfob() is on.
/// The main volume starts at silence, so that a new receiver fades in.
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

    explicit Receiver(QObject *parent = nullptr);

    /// Runs one block at the input rate, len up to SIGNAL_MAX_SIZE; a longer one is a programming
    /// error and stops the program. A null buffer or a length below 1 does nothing. The buffer is
    /// only read. An outlet without room for the whole block misses it. Allocates nothing.
    void process(COMPLEX *buffer, int len);

    /// Empties the history of all filters, makes the mode asked for current and ends any fade. The
    /// outlets, oscillators and gains stay.
    void clear();

    /// A rate fuzzily equal to the present one does nothing. Both clear(). The input rate also
    /// drops the tuning of both oscillators, keeps A's RIT, empties buffer() and fades the main
    /// volume in again.
    void setInputSampleRate(double rate);
    void setOutputSampleRate(double rate);

    /// Moves the station at `frequency` to 0 Hz until the next change of the input rate.
    void setDownConverter(unsigned int channel, double frequency);

    /// Always 0.0: the tuning lives with the caller, and this is the offset on top of it.
    double downConverter(unsigned int channel) const;

    /// Fine tuning on top of setDownConverter(); channel A only.
    void setRit(unsigned int channel, double frequency);

    /// Both channels and wide FM get the same pass band, whatever the channel. Costly: three filter
    /// designs.
    void setBandFilterIf(unsigned int channel, double low, double high);

    /// Taps of the band filters. Wide FM takes them over with the next setBandFilterIf().
    void setFilterTaps(int taps);

    /// Takes effect behind a fade; the mode asked for already is left alone.
    void setModulation(Modulation modulation);

    /// Takes effect at the bottom of a fade, also with unchanged values. Attack, decay and hang in
    /// ms, hang truncated.
    void setAgcParam(bool on, double attack, double decay, double hang);

    /// The parameters in force, limited to their ranges: the newest that a fade has reached. A new
    /// output rate takes over the times at once.
    const AgcParam &agcParam() const { return mAgcApplied; }

    void setDiglOffset(int offset);
    void setDiguOffset(int offset);

    /// Limited to -60..0; -60 is silence.
    void setMainVolume(double db);
    void setVolume(unsigned int channel, double db);

    /// See ChannelGain::setBalance().
    void setBalance(unsigned int channel, double db);
    void setMainMute(bool mute);
    void setMute(unsigned int channel, bool mute);

    /// Whether channel B is heard.
    void setEnableVfob(bool enable);

    /// Called inside process() with the block that goes to buffer(), whether or not it fits there.
    void setSoundCardCallback(SoundCardCallback callback);

    /// Final audio.
    CircularBuffer<COMPLEX> &buffer() { return mBuffer; }

    /// Channel A before the swap of sidebands and the copy to both ears; nothing in wide FM.
    CircularBuffer<COMPLEX> &vac() { return mVac; }

    /// Channel A before fixed gain and volume.
    CircularBuffer<COMPLEX> &lineout() { return mLineOut; }

    /// Always -120.0; getDbm() has the levels.
    double signalLevel(Channel channel) const;

    /// Levels of the last block, whatever the channel: dB of the two parts of the input, dBm of A
    /// and B.
    void getAdc(unsigned int channel, double &re, double &im) const;
    void getDbm(unsigned int channel, double &a, double &b) const;

    /// Whether the last block was heard in stereo.
    bool wfmIsStereo() const { return mWfmStereoSeen; }

private:
    ReceiverChannel &a() { return mChannels[0]; }
    ReceiverChannel &b() { return mChannels[1]; }
    bool exists(unsigned int channel) const { return channel < mChannels.size(); }

    template <typename Step>
    void forEachWithSamples(Step step);

    // The steps of process(), in its order.
    void takeInput(const COMPLEX *buffer, int len);
    void clearInFade();
    void applyAgcParams();
    void tune(int len);
    int longestInput() const;
    void runNarrow(Modulation modulation, int len);
    void shiftDigital(Modulation modulation);
    void filterBand();
    void shiftDrm();
    void swapParts();
    void finish(Modulation modulation);
    void runTail();
    void applyFixedGain();
    void applyMainVolume();
    void addChannelB();

    void clearFilters();
    void setUpVolumeRamp();
    void setUpRates();
    void setUpPreFilters();
    void setUpBandFilters();
    void setUpWideBandFilter();
    void setUpMixers();

    double mInputRate = 192000.0; // Hz
    double mOutputRate = 48000.0; // Hz
    int mFilterTaps = 1000;
    double mBandLow = 0.0;       // Hz
    double mBandHigh = 3000.0;   // Hz
    double mDiglOffset = 2200.0; // Hz
    double mDiguOffset = 1500.0; // Hz
    double mRit = 0.0;           // Hz, channel A
    bool mChannelBInUse = false;
    bool mMainMute = false;

    AgcParam mAgcParam;             // as asked for
    AgcParam mAgcApplied;           // in force
    std::deque<AgcParam> mAgcQueue; // waiting for the bottom of a fade, newest at the back

    double mAdcRe = -120.0;  // dB
    double mAdcIm = -120.0;  // dB
    double mLevelA = -120.0; // dBm
    double mLevelB = -120.0; // dBm
    bool mWfmStereoSeen = false;

    std::array<ReceiverChannel, 2> mChannels;
    DownConverter mDrmMixer; // channel A
    WideFm mWideFm;
    ModulationSwitcher mSwitcher;
    GainRamp mMainVolume{0.0f, 1.0f, 0.0f}; // the pole comes with the output rate

    SoundCardCallback mSoundCardCallback;
    CircularBuffer<COMPLEX> mBuffer;
    CircularBuffer<COMPLEX> mVac;
    CircularBuffer<COMPLEX> mLineOut;
};
} // namespace DspCore

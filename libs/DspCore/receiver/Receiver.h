// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/agc/Vm_Clipper.h"
#include "DspCore/audio/RxMeter.h"
#include "DspCore/filters/DownConverter.h"
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

#include <array>
#include <deque>
#include <functional>

namespace DspCore
{
/// Turns blocks of IQ samples into audio for two tuned frequencies, channels A and B.
///
///     block ─┬─ input meter
///            ├─ A: oscillator ─┬─ (wide FM) band filter ─ meter ─ decoder ─ equalizer ─> tail
///            │                 └─ pre-filter ─ decimator ─ DIGL/DIGU mixer ─ band filter ─┐
///            └─ B: the same without wide FM                                              │
///      ┌─────────────────────────────────────────────────────────────────────────────────┘
///      └─ meter ─┬─ demodulator ─ peak filter (SSB, CW) ─ tone squelch (NFM) ─┐
///                │   ┌────────────────────────────────────────────────────────┘
///                │   └─ auto notch ─ noise reduction ─ equalizer ─┐
///                └─ (digital modes) DRM mixer on A ───────────────┴─┬─> vac()
///      ┌────────────────────────────────────────────────────────────┘
///      └─ swap of the parts (LSB) ─ AGC ─ squelch (neither in NFM) ─ both ears ─> tail
///     tail ─ mode fade ─┬─> lineout()
///                       └─ fixed gain ─ main volume ─ A + B ─ clipper ─┬─> sound-card hook
///                                                                      └─> buffer()
///
/// "Both ears": mono, or the two halves of the spectrum around the CW tone (DSE), or in binaural
/// the complex signal (SSB, CW) and mono with one ear late (AM, SAM, DSB, NFM). Digital modes hand
/// out the complex signal.
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

    /// Stereo pairs that an outlet holds: a third of a second at 48 kHz.
    static constexpr unsigned kOutletSize = 16384;

    explicit Receiver(QObject *parent = nullptr);

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

    /// Highest gain of the gain control and its gain while off, of both channels whatever the
    /// channel: -19..120 and -60..120 dB.
    void setAgcGain(unsigned int channel, int gain);

    /// Pitch of a CW station in tune; the CW peak filter and the DSE sit there as well.
    void setCwTone(int tone);

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

    /// Complex signal or delayed ear instead of mono, see above.
    void setBin(bool enable);

    /// Peak filters of SSB and of CW. Quality at least 0.1; every change empties the filter.
    void setApf(bool enable);
    void setSsbApfGain(int gainDb);
    void setSsbApfQuality(double quality);
    void setSsbApfFreq(int frequency);
    void setCwApfGain(int gainDb);
    void setCwApfQuality(int quality);

    /// Noise reduction and auto notch, see LmsPredictor. Switch, taps and delay start them anew.
    void setNr(bool enable);
    void setNrTaps(int taps);
    void setNrDelay(int samples);
    void setNrRate(double rate);
    void setNrLeak(double leak);
    void setAnf(bool enable);
    void setAnfTaps(int taps);
    void setAnfDelay(int samples);
    void setAnfRate(double rate);
    void setAnfLeak(double leak);

    /// Spreads CW between the ears while binaural is off; its quality is the length in taps.
    void setDse(bool enable);
    void setDseQuality(int taps);
    void setDseSwap(bool swap);

    /// Gains in dB, lowest band first; any other number of them than 18 is ignored.
    void setEqualizerEnable(bool enable);
    void setEqualizerGains(const QVector<int> &gains);

    /// Squelch by level, threshold in dBm, of one channel; in NFM by tone as well, of both. A tone
    /// index below 0 counts as 0.
    void setSqlEnable(unsigned int channel, bool enable);
    void setSqlValue(unsigned int channel, int threshold);
    void setEnableCTCSS(bool enable);
    void setToneCTCSS(int index);

    /// Wide FM in stereo where a pilot is; a change of a rate switches it on again. The region
    /// changes nothing that is heard.
    void setWfmStereo(bool stereo);
    void setWfmUsa(bool usa);

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

    /// Of a peak filter.
    struct ApfSetting
    {
        double frequency; // Hz
        double quality;
        double gainDb;
    };

    template <typename Step>
    void forEachWithSamples(Step step);

    // The steps of process(), in its order.
    void takeInput(const COMPLEX *buffer, int len);
    void clearInFade();
    void applyAgcParams();
    void tune(int len);
    void runWide(int len);
    void runNarrow(Modulation modulation, int len);
    void shiftDigital(Modulation modulation);
    void filterBand();
    void demodulate(Modulation modulation);
    void cleanUp();
    void swapParts();
    void controlLevel();
    void finish(Modulation modulation);
    void finishCw();
    void copyToBothEars();
    void runTail();
    void applyFixedGain();
    void applyMainVolume();
    void addChannelB();
    void readMeters();

    void clearFilters();
    void clearAgc();
    void setUpVolumeRamp();
    void setUpRates();
    void setUpPreFilters();
    void setUpBandFilters();
    void setUpWideBandFilter();
    void setUpMixers();
    void setUpTools();
    void setUpSsbApf();
    void setUpCwApf();
    void setToolRates();
    void setAgcTimes(const AgcParam &param);

    double mInputRate = 192000.0;        // Hz
    double mOutputRate = 48000.0;        // Hz
    int mLongestInput = SIGNAL_MAX_SIZE; // samples of a block whose output fits the arrays
    int mFilterTaps = 1000;
    double mBandLow = 0.0;       // Hz
    double mBandHigh = 3000.0;   // Hz
    double mDiglOffset = 2200.0; // Hz
    double mDiguOffset = 1500.0; // Hz
    double mRit = 0.0;           // Hz, channel A
    bool mChannelBInUse = false;
    bool mMainMute = false;

    bool mBin = false;
    ApfSetting mSsbApf{500.0, 1.0, 20.0};
    ApfSetting mCwApf{700.0, 6.0, 30.0}; // the frequency is the CW tone

    AgcParam mAgcParam;             // as asked for
    std::deque<AgcParam> mAgcQueue; // waiting for the bottom of a fade, newest at the back

    double mAdcRe = -120.0; // dB
    double mAdcIm = -120.0; // dB
    bool mWfmStereoSeen = false;

    RxMeter mInputMeter;
    std::array<ReceiverChannel, 2> mChannels;
    DownConverter mDrmMixer; // channel A
    WideFm mWideFm;
    ModulationSwitcher mSwitcher;
    GainRamp mMainVolume{0.0f, 1.0f, 0.0f}; // the pole comes with the output rate
    Velmora::CppDsp::Vm_Clipper<REAL> mClipper;

    SoundCardCallback mSoundCardCallback;
    CircularBuffer<COMPLEX> mBuffer;
    CircularBuffer<COMPLEX> mVac;
    CircularBuffer<COMPLEX> mLineOut;
};
} // namespace DspCore

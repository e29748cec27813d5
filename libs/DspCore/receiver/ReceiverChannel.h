// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/agc/Vm_Agc.h"
#include "DspCore/audio/Apf.h"
#include "DspCore/audio/Dse.h"
#include "DspCore/audio/Equalizer18.h"
#include "DspCore/audio/RxMeter.h"
#include "DspCore/audio/Sql.h"
#include "DspCore/audio/SqlCtcss.h"
#include "DspCore/audio/Vm_Binaural.h"
#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorCW.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "DspCore/demodulators/DemodulatorSAM.h"
#include "DspCore/filters/BandDecimator.h"
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/noise/AutoNotchFilter.h"
#include "DspCore/noise/NoiseReduction.h"
#include "DspCore/receiver/AgcParam.h"
#include "DspCore/receiver/ChannelGain.h"
#include "DspCore/receiver/ReceiverRepairs.h"
#include "DspCore/types.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <vector>

namespace DspCore
{
class WideFm;

/// The road of one tuned frequency, from a block of IQ samples to a block of audio.
///
///     block ─ oscillator ─┬─ (wide FM) decoder ─ equalizer ─> audio()
///                         └─ pre-filter ─ decimator ─ DIGL/DIGU mixer ─ band filter ─┐
///      ┌──────────────────────────────────────────────────────────────────────────────┘
///      └─ meter ─┬─ demodulator ─ peak filter (SSB, CW) ─ tone squelch (NFM) ─┐
///                │   ┌────────────────────────────────────────────────────────┘
///                │   └─ auto notch ─ noise reduction ─ equalizer ─┐
///                └─ (digital modes) DRM mixer of channel A ───────┴─┬─> VAC outlet of channel A,
///                                                                   │   or repaired: after the AGC
///      ┌────────────────────────────────────────────────────────────┘
///      └─ swap of the parts (LSB) ─ AGC ─ squelch (neither in NFM) ─ both ears ─> audio()
///
/// "Both ears": mono, or the two halves of the spectrum around the CW tone (DSE), or in binaural
/// the complex signal (SSB, CW) and mono with one ear late (AM, SAM, DSB, NFM). Digital modes hand
/// out the complex signal.
///
/// The blocks up to the decimator run at the input rate, all others at the output rate. Rates,
/// frequencies, edges and offsets are in Hz. Not thread-safe; the owner serialises.
class ReceiverChannel
{
public:
    /// `vac` is the outlet of channel A; null for a channel that has none. At 192 kHz in, 48 kHz
    /// out.
    ReceiverChannel(Channel name, CircularBuffer<COMPLEX> *vac);

    /// Those that concern one channel. Off at first.
    void setRepairs(const ReceiverRepairs &repairs);

    /// Makes audio of a block of 1..SIGNAL_MAX_SIZE samples in any mode but wide FM. If the rate
    /// goes up, the end of a block whose audio would be longer than SIGNAL_MAX_SIZE is left out.
    /// Allocates nothing.
    void process(const COMPLEX *block, int length, Modulation modulation);

    /// The same in wide FM.
    void process(const COMPLEX *block, int length, WideFm &wide);

    /// Makes no audio of a block; the oscillator alone runs on.
    void skip(int length);

    /// The audio of the present block, length() stereo pairs of SIGNAL_MAX_SIZE. What stands there
    /// from block to block stays until it is overwritten.
    COMPLEX *audio() { return mOutput.data(); }
    int length() const { return mLength; }

    /// Level in the band at the last readLevel(), in dBm. The squelches go by it.
    double level() const { return mLevel; }
    void readLevel() { mLevel = mMeter.dbm(); }

    /// Empties the history of all filters. Oscillators, levels and tone squelch stay.
    void clear();

    /// The same, but what waits in the gain control's look-ahead is still heard.
    void clearToLookAhead();

    /// Binaural: one ear may be late.
    bool bin() const { return mBin; }

    /// Each rate sets up all that counts in its samples. The input rate also drops the tuning, and
    /// keeps the RIT.
    void setInputRate(double rate);
    void setOutputRate(double rate);

    void setTuning(double frequency) { mOscillator.setOsc(frequency / mInputRate); }
    void setRit(double frequency);

    /// Pass band, and taps of its filter.
    void setBand(double low, double high);
    void setFilterTaps(int taps);

    /// Times alone; the switch is AGC's own.
    void setAgcTimes(const AgcParam &param);
    void setAgcGain(int gainDb);

    void setCwTone(double tone);
    void setDiglOffset(double offset);
    void setDiguOffset(double offset);

    /// Complex signal or delayed ear instead of mono.
    void setBin(bool enable);

    void setApf(bool enable);
    void setSsbApfFreq(double frequency);
    void setSsbApfQuality(double quality);
    void setSsbApfGain(double gainDb);
    void setCwApfQuality(double quality);
    void setCwApfGain(double gainDb);

    void setSqlEnable(bool enable);
    void setSqlValue(double thresholdDbm);

    // Tools with settings of their own, which are the owner's to make.
    AutoNotchFilter anf;
    NoiseReduction nr;
    Equalizer18 equalizer;
    Dse dse;
    SqlCtcss sqlCtcss;
    Velmora::CppDsp::Vm_Agc<REAL> agc;
    ChannelGain gain; // applied by the owner, where channels are added

private:
    /// Of a peak filter.
    struct ApfSetting
    {
        double frequency; // Hz
        double quality;
        double gainDb;
    };

    void restart();

    // The steps of process(), in its order.
    void shiftDigital(Modulation modulation);
    void demodulate(Modulation modulation);
    void cleanUp();
    void swapParts();
    void feedCable();
    void controlLevel();
    void finish(Modulation modulation);
    void copyToBothEars();

    void setUpDecimator();
    void setUpDecimator(int up, int down);
    void setUpBandFilter();
    void setUpMixers();
    void setUpSsbApf();
    void setUpCwApf();
    void setToolRates();

    const Channel mName;
    CircularBuffer<COMPLEX> *const mVac; // not owned

    double mInputRate = 192000.0;
    double mOutputRate = 48000.0;
    int mLongestInput = SIGNAL_MAX_SIZE; // samples of a block whose audio fits mOutput
    double mRit = 0.0;
    double mBandLow = 0.0;
    double mBandHigh = 3000.0;
    int mFilterTaps = 1000;
    double mDiglOffset = 2200.0;
    double mDiguOffset = 1500.0;
    ApfSetting mSsbApfSetting{500.0, 1.0, 20.0};
    ApfSetting mCwApfSetting{700.0, 6.0, 30.0}; // the frequency is the CW tone
    bool mBin = false;
    bool mKeepsFinite = false; // the repair `numbers`
    bool mLevelsCable = false; // the repair `cable`
    double mLevel = -120.0;    // dBm

    // Input rate.
    DownConverter mOscillator;
    BandDecimator mDecimator;

    // Output rate.
    std::vector<COMPLEX> mOutput = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    int mLength = 0; // samples in mOutput that belong to the present block
    DownConverter mDiglMixer;
    DownConverter mDiguMixer;
    DownConverter mDrmMixer;
    FastFir mBandFilter;
    RxMeter mMeter;
    DemodulatorAM mAm;
    DemodulatorSAM mSam;
    DemodulatorCW mCw;
    DemodulatorNFM mNfm;
    Apf mSsbApf;
    Apf mCwApf;
    Sql mSql;
    Velmora::CppDsp::Vm_Binaural<REAL> mBinaural;
};
} // namespace DspCore

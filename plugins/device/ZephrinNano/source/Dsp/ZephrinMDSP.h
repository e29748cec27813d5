// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp/AgcTable.h"
#include "Dsp/AudioTap.h"
#include "Dsp/FilterTaps.h"
#include "Dsp/IQNotchFilter.h"
#include "Dsp/InputFade.h"
#include "Dsp/StereoPull.h"
#include "DspCore/noise/NoiseBlanker.h"
#include "DspCore/receiver/Receiver.h"
#include "DspCore/spectrum/Spectrum.h"
#include "DspCore/types.h"
#include "host_interfaces/AudioServerAbstract.h"
#include "host_interfaces/BridgeAbstract.h"
#include "host_interfaces/BridgeAudioServerAbstract.h"
#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/IqServerAbstract.h"
#include "host_interfaces/Repairs.h"
#include "host_interfaces/SensorsAbstract.h"
#include "thread_pool/ThreadPool.h"
#include "vm_library/source/containers/CircularBuffer.h"
#include "vm_library/source/containers/ring_buffer.h"
#include "vm_library/source/file/IQFile.h"
#include "vm_library/source/thread/jthread.h"
#include "vm_library/source/thread/spinlock.h"
#include "vm_library/source/thread/vm_thread_safe_ptr.h"

#include <QObject>
#include <QVector>
#include <gsl/span>

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class ZephrinMFunctions;

/// The engine: turns the stream of IQ blocks into audio, panorama, recording, taps and meter
/// values.
///
///     USB reader -> input ring -> engine thread, one read block after the other:
///
///     input fade -> noise blanker -> IQ notch -> IQ tap ring -> IQ server -+
///                                                                          |
///         +----------------------------------------------------------------+
///         +-> recorder -> spectrum -> receiver -+
///                                               |
///         +-------------------------------------+
///         +-> sound card ring -> soundCardIO()
///         +-> line out tap -> lineOutIO()
///         +-> audio server, VAC tap -> vacIO()
///         +-> meters
///
/// Every hand-over between threads is a ring that takes a block whole or drops it silently; nobody
/// waits for anybody. There is one receiver; the receiver index of the host's calls is ignored
/// unless stated otherwise. open() starts the engine thread after before(), close() ends it and
/// calls after(). A stopped engine takes settings and drops samples.
///
/// The panorama's lines are computed in the host's thread pool. A pool that refuses the job ends
/// the engine thread: the stream stands still until close() and open().
///
/// Threads:
/// 1. Reader: processIQ(). Touches the input ring and the stop flag only.
/// 2. Engine: run(). Holds the engine mutex for one read block at a time.
/// 3. GUI: open(), close(), before(), after() and every setter. A setter waits for at most one read
///    block and never acts in the middle of one. The panorama, the notches and the recorder have
///    locks of their own; where only these are concerned nobody waits for a block. A mutex that
///    fails to lock throws std::system_error to the caller.
/// 4. Host audio: soundCardIO(), vacIO(), lineOutIO(), each on a thread of its own with its own
///    ring and scratch. They take no lock but the ring's.
/// 5. Thread pool: the panorama's jobs, inside m_spectrum. spectrum() reaches receivers on the GUI
///    thread through their event loop.
class ZephrinMDSP : public QObject, public vm::thread::jthread
{
    Q_OBJECT

public:
    // Signals and slots are matched by the text of their parameters, which the options widget
    // spells without the namespace.
    using AgcMode = DspCore::AgcMode;

    using AgcParam = AgcTable::Param;

    /// `pool` and `bridge` belong to the host and outlive the engine.
    ZephrinMDSP(tp::ThreadPool &pool, BridgeAbstract &bridge,
        std::shared_ptr<ZephrinMFunctions> functions, QObject *parent = nullptr);
    ~ZephrinMDSP() override;

    /// Those that concern the signal. Ahead of the first open().
    void setRepairs(const Repairs &repairs);

    /// Takes samples just decoded, I and Q with full scale 1.0. Dropped whole if the engine is
    /// stopped or the input ring has no room for all of them. Reader thread.
    void processIQ(gsl::span<COMPLEX> block);

    /// The same for `count` samples that decode(COMPLEX *) puts where they are wanted, once and
    /// before this returns; to null if they are dropped. Reader thread.
    template <typename Decode>
    void processIQ(std::size_t count, Decode decode);

    /// The IQ stream after the IQ notch, for the host to read. Any thread.
    CircularBuffer<COMPLEX> *iqBuffer() { return &m_iqTap; }

    /// The last lines of panorama and waterfall in dB, lowest frequency first. Both vectors take
    /// the size of the transform. Left alone for a receiver other than 0 and while the engine is
    /// stopped. Any thread.
    void readSpectrum(
        unsigned int receiver, std::vector<float> &spectrum, std::vector<float> &waterfall);

    /// Callbacks of the host's audio devices: fill `out` with out.size() / channels interleaved
    /// stereo pairs. `channels` must not be 0; the first and third argument are unused. While the
    /// engine is stopped or has too little, the sound card and the VAC get silence and a true, the
    /// line out gets a false and `out` as it was. What waits in the ring stays there.
    bool soundCardIO(
        std::vector<float> &in, std::vector<float> &out, unsigned long, unsigned long channels);
    bool vacIO(
        std::vector<float> &in, std::vector<float> &out, unsigned long, unsigned long channels);
    bool lineOutIO(
        std::vector<float> &in, std::vector<float> &out, unsigned long, unsigned long channels);

    /// Clears fade, noise blanker, receiver, resamplers and rings and sizes the read block. Called
    /// by open(), on its thread.
    void before() override;
    /// Called on the closing thread.
    void after() override;
    /// Processes the whole read blocks that wait. Engine thread.
    void run() override;

    /// Sinks of the host, null for none. Not owned.
    void setIqServer(IqServerAbstract *server) { m_iqServer = server; }
    void setAudioServer(AudioServerAbstract *server) { m_audioServer = server; }
    void setSensors(SensorsAbstract *sensors);

    /// Rate of the IQ stream in hertz, for the receiver, the notches and the next recording. The
    /// tuning and the band edges stay in force.
    void setSampleRate(double rate);

    /// Rate of the receiver's audio in hertz. The line out follows at once, the VAC at its next
    /// setVacSampleRate(), the read block at the next start.
    void setSampleRateSC(double rate);

    /// Centre frequency to which the device is tuned, in hertz; the notches stay where they are on
    /// the band. Throws std::out_of_range for a receiver other than 0.
    void setDds(unsigned int receiver, double hz);

    /// Index of the amateur band in which the receiver is tuned; the number of bands if in none.
    /// Throws std::out_of_range for a receiver other than 0.
    int currentBand(unsigned long receiver) const;

    /// The panorama: size of the transform (256 up, a power of two), averaging as at
    /// DspCore::SpectrumAverager, time between frames in milliseconds, and whether the ends of the
    /// band, where the device's filter falls off, are left out.
    void setSpectrumSize(unsigned int size) { m_spectrum.setSize(int(size)); }
    void setSpectrumAveraging(unsigned int count) { m_spectrum.setAveraging(int(count)); }
    void setSpectrumAveragingType(unsigned int type) { m_spectrum.setAveragingType(int(type)); }
    void setSpectrumUpdateTime(unsigned int ms) { m_spectrum.setUpdateInterval(int(ms)); }
    void setHideSpectrumSlopes(bool hide) { m_spectrum.setRemoveSide(hide); }

    /// Records the stream after the IQ notch into a file. False, with a warning, if a recording
    /// runs or the file cannot be written.
    bool iqRecorderStart(const QString &path);

    /// Returns when the file is complete; the engine stands still until then.
    void iqRecorderStop();

    /// Layout of the next recording; not to be set while one runs.
    void setIQFormat(vm::file::IQFile::Format format);

    /// Any thread. They wait for a recorder that is being stopped and for nothing else.
    bool isIqRecording() const { return m_iqFile->isOpen(); }
    vm::memory::safe_ptr<vm::file::IQFile> iqRecorder() const { return m_iqFile; }

    /// Mode of the receiver, with the filter length of that mode's class.
    void setModulation(unsigned int receiver, DspCore::Modulation modulation);

    /// Frequencies in hertz from the tuned centre; edges in hertz from the channel's frequency.
    void setDownConverter(unsigned int channel, double hz);
    void setBandFilterIf(unsigned int channel, double low, double high);
    void setRit(unsigned int, unsigned int channel, double hz)
    {
        receiver(&DspCore::Receiver::setRit, channel, hz);
    }

    /// Switches channel B into the sum, whatever channel is named.
    void setChannelEnable(unsigned int, unsigned int, bool state)
    {
        receiver(&DspCore::Receiver::setEnableVfob, state);
    }

    /// Levels in decibels, balance in decibels of the quieter side (above 0: right quieter).
    void setMainVolume(double level) { receiver(&DspCore::Receiver::setMainVolume, level); }
    void setVolume(unsigned int, unsigned int channel, double level)
    {
        receiver(&DspCore::Receiver::setVolume, channel, level);
    }
    void setBalance(unsigned int, unsigned int channel, double balance)
    {
        receiver(&DspCore::Receiver::setBalance, channel, balance);
    }
    void setMainMute(bool state) { receiver(&DspCore::Receiver::setMainMute, state); }
    void setMute(unsigned int, unsigned int channel, bool state)
    {
        receiver(&DspCore::Receiver::setMute, channel, state);
    }

    /// Mode of the gain control. A number above User stores User and switches the control off.
    void setAgcMode(AgcMode mode);

    /// Highest gain of the control, and its gain while off, in decibels, whatever the channel.
    void setAgcGain(unsigned int channel, int gain)
    {
        receiver(&DspCore::Receiver::setAgcGain, channel, gain);
    }

    /// Pitch of a CW station in tune, hertz.
    void setCwTone(int tone) { receiver(&DspCore::Receiver::setCwTone, tone); }

    /// Switches of what cleans up the signal: the blankers on the IQ stream, the others on the
    /// audio of both channels.
    void setNb1(unsigned int, bool state) { blanker(&DspCore::NoiseBlanker::setEnableNb1, state); }
    void setNb2(unsigned int, bool state) { blanker(&DspCore::NoiseBlanker::setEnableNb2, state); }
    void setNr(unsigned int, bool state) { receiver(&DspCore::Receiver::setNr, state); }
    void setAnf(unsigned int, bool state) { receiver(&DspCore::Receiver::setAnf, state); }
    void setBin(unsigned int, bool state) { receiver(&DspCore::Receiver::setBin, state); }

    /// Gains in decibels, lowest band first; anything but 18 of them is ignored.
    void setEqualizerEnable(unsigned int, bool state)
    {
        receiver(&DspCore::Receiver::setEqualizerEnable, state);
    }
    void setEqualizerGains(unsigned int, const QVector<int> &gains)
    {
        receiver(&DspCore::Receiver::setEqualizerGains, gains);
    }

    /// Level squelch of one channel, threshold in dBm; tone squelch of narrow FM, of both channels.
    void setSqlEnable(unsigned int, unsigned int channel, bool state)
    {
        receiver(&DspCore::Receiver::setSqlEnable, channel, state);
    }
    void setSqlValue(unsigned int, unsigned int channel, int threshold)
    {
        receiver(&DspCore::Receiver::setSqlValue, channel, threshold);
    }
    void setEnableCTCSS(int, bool state) { receiver(&DspCore::Receiver::setEnableCTCSS, state); }
    void setToneCTCSS(int, int index) { receiver(&DspCore::Receiver::setToneCTCSS, index); }

    /// Stereo of wide FM, until the next change of a rate, which switches it on.
    void setWfmStereo(unsigned int, bool state)
    {
        receiver(&DspCore::Receiver::setWfmStereo, state);
    }

    /// The line out starts with an empty ring.
    void setLineOutEnable(bool on);
    void setLineOutSampleRate(double rate);
    void setVacSampleRate(double rate);

public slots:
    /// One notch of the host's list for a band: absolute frequency and whole width in hertz. A band
    /// other than the current one is ignored; an index from 8 on throws std::out_of_range.
    void onRnfParam(
        unsigned long band, unsigned long index, bool enable, double frequency, double width);

    /// Switch of all notches. A band other than the current one is ignored.
    void onRnfEnabled(unsigned long band, bool enabled);

    /// Smooths the waterfall.
    void setWaterfallFilter(bool state) { m_spectrum.setWaterfallAveraging(state); }

    /// Filter lengths of the mode classes, limited to 200..8000 taps. The length of the current
    /// mode's class acts at once, and so does that of AM in any mode.
    void setSsbFilterTaps(int taps) { setFilterTaps(FilterTaps::Ssb, taps); }
    void setAmFilterTaps(int taps) { setFilterTaps(FilterTaps::Am, taps); }
    void setDigFilterTaps(int taps) { setFilterTaps(FilterTaps::Dig, taps); }
    void setCwFilterTaps(int taps) { setFilterTaps(FilterTaps::Cw, taps); }

    /// Offsets in hertz.
    void setDiglOffset(int offset) { receiver(&DspCore::Receiver::setDiglOffset, offset); }
    void setDiguOffset(int offset) { receiver(&DspCore::Receiver::setDiguOffset, offset); }

    /// Times of one gain control mode in milliseconds; those of the current mode act at once. A
    /// mode beyond the table throws std::out_of_range.
    void setAgcAttack(AgcMode mode, REAL ms) { setAgcTime(mode, &AgcParam::attack, ms); }
    void setAgcDecay(AgcMode mode, REAL ms) { setAgcTime(mode, &AgcParam::decay, ms); }
    void setAgcHangTime(AgcMode mode, REAL ms) { setAgcTime(mode, &AgcParam::hangTime, ms); }

    /// Peak filters of SSB and CW, and the CW spread between the ears.
    void setApf(quint32, bool state) { receiver(&DspCore::Receiver::setApf, state); }
    void setDse(quint32, bool state) { receiver(&DspCore::Receiver::setDse, state); }

    /// Settings of the tools, on both channels; units as at DspCore::Receiver, the thresholds as at
    /// DspCore::NoiseBlanker.
    void setNrTaps(int taps) { receiver(&DspCore::Receiver::setNrTaps, taps); }
    void setNrDelay(int samples) { receiver(&DspCore::Receiver::setNrDelay, samples); }
    void setNrRate(double rate) { receiver(&DspCore::Receiver::setNrRate, rate); }
    void setNrLeak(double leak) { receiver(&DspCore::Receiver::setNrLeak, leak); }
    void setAnfTaps(int taps) { receiver(&DspCore::Receiver::setAnfTaps, taps); }
    void setAnfDelay(int samples) { receiver(&DspCore::Receiver::setAnfDelay, samples); }
    void setAnfRate(double rate) { receiver(&DspCore::Receiver::setAnfRate, rate); }
    void setAnfLeak(double leak) { receiver(&DspCore::Receiver::setAnfLeak, leak); }
    void setCwApfGain(int gain) { receiver(&DspCore::Receiver::setCwApfGain, gain); }
    void setCwApfQuality(int quality) { receiver(&DspCore::Receiver::setCwApfQuality, quality); }
    void setSsbApfGain(int gain) { receiver(&DspCore::Receiver::setSsbApfGain, gain); }
    void setSsbApfQuality(double quality)
    {
        receiver(&DspCore::Receiver::setSsbApfQuality, quality);
    }
    void setSsbApfFreq(int frequency) { receiver(&DspCore::Receiver::setSsbApfFreq, frequency); }
    void setNb1Threshold(double threshold)
    {
        blanker(&DspCore::NoiseBlanker::setThresholdNb1, threshold);
    }
    void setNb2Threshold(double threshold)
    {
        blanker(&DspCore::NoiseBlanker::setThresholdNb2, threshold);
    }
    void setDseQuality(int taps) { receiver(&DspCore::Receiver::setDseQuality, taps); }
    void setDseSwap(bool swap) { receiver(&DspCore::Receiver::setDseSwap, swap); }
    void setWfmUsa(bool usa) { receiver(&DspCore::Receiver::setWfmUsa, usa); }

    void lineoutOpen() { setLineOutEnable(true); }
    void lineoutClose() { setLineOutEnable(false); }
    void vacOpen();
    void vacClose();

signals:
    /// New lines for readSpectrum().
    void spectrum(quint32 receiver);

private:
    using Lock = std::lock_guard<std::recursive_mutex>;

    // The steps of one read block, in order; engine thread, under the engine mutex.
    void dspProcess(gsl::span<COMPLEX> block);
    void feedIqTap(gsl::span<COMPLEX> block);
    void feedIqServer(gsl::span<COMPLEX> block);
    void feedRecorder(gsl::span<COMPLEX> block);
    void feedSoundCard(gsl::span<COMPLEX> audio); // called inside the receiver
    void feedLineOut();
    void feedVac();
    void feedSensors();
    bool takeChunk(CircularBuffer<COMPLEX> &ring);

    /// Wakes the engine if enough samples wait. Reader thread.
    void wakeForInput();

    /// Calls a setter under the engine mutex.
    template <typename... Arguments, typename... Values>
    void receiver(void (DspCore::Receiver::*setter)(Arguments...), const Values &...values)
    {
        const Lock lock(m_mutex);
        (m_receiver.*setter)(values...);
    }
    template <typename Value>
    void blanker(void (DspCore::NoiseBlanker::*setter)(Value), Value value)
    {
        const Lock lock(m_mutex);
        (m_noiseBlanker.*setter)(value);
    }

    void tuneReceiver();
    bool isCurrentBand(unsigned long band) const;
    void setFilterTaps(FilterTaps::Class modes, int taps);
    void setAgcTime(AgcMode mode, double AgcParam::*field, double ms);
    void applyAgc(const AgcTable::Setting &setting);

    /// Hertz from the channel's frequency.
    struct BandEdges
    {
        double low;
        double high;
    };

    // What reader and engine handle in the input ring at a time: a read window at most.
    static constexpr std::size_t kLongestRun =
        EngineLimits::readWindow(int(EngineLimits::kRatesHz.size()) - 1) / EngineLimits::kFrameBytes
        * EngineLimits::kFrameSamples;
    static_assert(kLongestRun >= SIGNAL_MAX_SIZE);

    static constexpr unsigned kIqTapCapacity = 65536;
    static constexpr unsigned long kNotches = 8; // as many as the host keeps for a band

    BridgeAbstract &m_bridge;
    std::shared_ptr<ZephrinMFunctions> m_functions;

    // GUI thread.
    std::vector<double> m_dds; // hertz, by receiver

    // Any thread; has locks of its own.
    DspCore::Spectrum m_spectrum;

    // Held for one read block, and by each setter but those of what has a lock of its own.
    std::recursive_mutex m_mutex;

    // Guarded by m_mutex.
    InputFade m_inputFade;
    double m_sampleRate = 48000.0;           // hertz
    std::array<double, 2> m_downConverter{}; // hertz from the centre, channels A and B
    std::optional<BandEdges> m_bandEdges;    // of both channels; none before the host's first
    double m_soundCardRate = 48000.0;        // hertz
    FilterTaps m_filterTaps;
    AgcTable m_agc;
    DspCore::Receiver m_receiver;
    DspCore::NoiseBlanker m_noiseBlanker;
    SensorsAbstract *m_sensors = nullptr;
    std::vector<COMPLEX> m_chunk; // the part of a receiver ring that a tap takes

    // Written by the GUI thread, read by the engine without a lock.
    std::atomic<IqServerAbstract *> m_iqServer{nullptr};
    std::atomic<AudioServerAbstract *> m_audioServer{nullptr};

    // GUI and engine thread; each access takes the pointer's mutex, inside m_mutex or alone.
    vm::memory::safe_ptr<vm::file::IQFile> m_iqFile;
    std::vector<vm::memory::safe_ptr<IQNotchFilter>> m_notches; // by receiver

    // Between engine and host audio threads; the rings inside have locks of their own.
    AudioTap m_lineOut;
    AudioTap m_vac;
    CircularBuffer<COMPLEX> m_iqTap{kIqTapCapacity};
    StereoPull m_soundCard; // sound card thread

    // Between reader and engine; has a lock of its own.
    vm::containers::ring_buffer<COMPLEX, vm::thread::spinlock> m_input;

    // Engine thread.
    std::size_t m_readBlock = EngineLimits::kBlock; // samples; set while there is no engine thread
    std::vector<COMPLEX> m_recorded;                // the block as the recorder takes it
    std::vector<COMPLEX32> m_audio;
};

template <typename Decode>
void ZephrinMDSP::processIQ(std::size_t count, Decode decode)
{
    if (count > kLongestRun) { // no window of the stream's
        std::vector<COMPLEX> iq(count);
        decode(iq.data());
        return processIQ(gsl::span<COMPLEX>(iq));
    }
    COMPLEX *const room = stopping() ? nullptr : m_input.room(count);
    decode(room);
    if (room != nullptr)
        m_input.commit();
    wakeForInput();
}

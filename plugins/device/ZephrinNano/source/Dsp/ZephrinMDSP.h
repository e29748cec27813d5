// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp/AgcTable.h"
#include "Dsp/AudioTap.h"
#include "Dsp/InputFade.h"
#include "Dsp/StereoPull.h"
#include "DspCore/noise/NoiseBlanker.h"
#include "DspCore/receiver/Receiver.h"
#include "DspCore/types.h"
#include "host_interfaces/AudioServerAbstract.h"
#include "host_interfaces/BridgeAbstract.h"
#include "host_interfaces/BridgeAudioServerAbstract.h"
#include "host_interfaces/IqServerAbstract.h"
#include "host_interfaces/SensorsAbstract.h"
#include "thread_pool/ThreadPool.h"
#include "vm_library/source/containers/CircularBuffer.h"
#include "vm_library/source/containers/ring_buffer.h"
#include "vm_library/source/thread/jthread.h"
#include "vm_library/source/thread/spinlock.h"

#include <QObject>
#include <QVector>
#include <gsl/span>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

class ZephrinMFunctions;

/// The engine: turns the stream of IQ blocks into audio, taps and meter values.
///
///     USB reader -> input ring -> engine thread, one read block after the other:
///
///     input fade -> noise blanker -> IQ tap ring -> IQ server -> receiver -+
///                                                                          |
///         +----------------------------------------------------------------+
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
/// Threads:
/// 1. Reader: processIQ(). Touches the input ring and the stop flag only.
/// 2. Engine: run(). Holds the engine mutex for one read block at a time.
/// 3. GUI: open(), close(), before(), after() and every setter. A setter waits for at most one read
///    block and never acts in the middle of one. A mutex that fails to lock throws
///    std::system_error to the caller.
/// 4. Host audio: soundCardIO(), vacIO(), lineOutIO(), each on a thread of its own with its own
///    ring and scratch. They take no lock but the ring's.
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

    /// Takes samples just decoded, I and Q with full scale 1.0. Dropped whole if the engine is
    /// stopped or the input ring has no room for all of them. Reader thread.
    void processIQ(gsl::span<COMPLEX> block);

    /// The IQ stream behind the noise blanker, for the host to read. Any thread.
    CircularBuffer<COMPLEX> *iqBuffer() { return &m_iqTap; }

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

    /// Rate of the IQ stream in hertz.
    void setSampleRate(double rate);

    /// Rate of the receiver's audio in hertz. The line out follows at once, the VAC at its next
    /// setVacSampleRate(), the read block at the next start.
    void setSampleRateSC(double rate);

    /// Centre frequency to which the device is tuned, in hertz. Throws std::out_of_range for a
    /// receiver other than 0.
    void setDds(unsigned int receiver, double hz);

    /// Index of the amateur band in which the receiver is tuned; the number of bands if in none.
    /// Throws std::out_of_range for a receiver other than 0.
    int currentBand(unsigned long receiver) const;

    /// Mode of the receiver, with the filter length of that mode's class.
    void setModulation(unsigned int receiver, DspCore::Modulation modulation);

    /// Frequencies in hertz from the tuned centre; edges in hertz from the channel's frequency.
    void setDownConverter(unsigned int channel, double hz);
    void setBandFilterIf(unsigned int channel, double low, double high);
    void setRit(unsigned int receiver, unsigned int channel, double hz);

    /// Switches channel B into the sum, whatever channel is named.
    void setChannelEnable(unsigned int receiver, unsigned int channel, bool state);

    /// Levels in decibels, balance in decibels of the quieter side (above 0: right quieter).
    void setMainVolume(double level);
    void setVolume(unsigned int receiver, unsigned int channel, double level);
    void setBalance(unsigned int receiver, unsigned int channel, double balance);
    void setMainMute(bool state);
    void setMute(unsigned int receiver, unsigned int channel, bool state);

    /// Mode of the gain control. A number above User stores User and switches the control off.
    void setAgcMode(AgcMode mode);

    /// Highest gain of the control, and its gain while off, in decibels, whatever the channel.
    void setAgcGain(unsigned int channel, int gain);

    /// Pitch of a CW station in tune, hertz.
    void setCwTone(int tone);

    /// Switches of what cleans up the signal: the blankers on the IQ stream, the others on the
    /// audio of both channels.
    void setNb1(unsigned int receiver, bool state);
    void setNb2(unsigned int receiver, bool state);
    void setNr(unsigned int receiver, bool state);
    void setAnf(unsigned int receiver, bool state);
    void setBin(unsigned int receiver, bool state);

    /// Gains in decibels, lowest band first; anything but 18 of them is ignored.
    void setEqualizerEnable(unsigned int receiver, bool state);
    void setEqualizerGains(unsigned int receiver, const QVector<int> &gains);

    /// Level squelch of one channel, threshold in dBm; tone squelch of narrow FM, of both channels.
    void setSqlEnable(unsigned int receiver, unsigned int channel, bool state);
    void setSqlValue(unsigned int receiver, unsigned int channel, int threshold);
    void setEnableCTCSS(int receiver, bool state);
    void setToneCTCSS(int receiver, int index);

    /// Stereo of wide FM, until the next change of a rate, which switches it on.
    void setWfmStereo(unsigned int receiver, bool state);

    /// The line out starts with an empty ring.
    void setLineOutEnable(bool on);
    void setLineOutSampleRate(double rate);
    void setVacSampleRate(double rate);

public slots:
    /// Filter lengths of the mode classes, limited to 200..8000 taps. The length of the current
    /// mode's class acts at once, and so does that of AM in any mode.
    void setSsbFilterTaps(int taps);
    void setAmFilterTaps(int taps);
    void setDigFilterTaps(int taps);
    void setCwFilterTaps(int taps);

    /// Offsets in hertz.
    void setDiglOffset(int offset);
    void setDiguOffset(int offset);

    /// Times of one gain control mode in milliseconds; those of the current mode act at once. A
    /// mode beyond the table throws std::out_of_range.
    void setAgcAttack(AgcMode mode, REAL ms);
    void setAgcDecay(AgcMode mode, REAL ms);
    void setAgcHangTime(AgcMode mode, REAL ms);

    /// Peak filters of SSB and CW, and the CW spread between the ears.
    void setApf(quint32 receiver, bool state);
    void setDse(quint32 receiver, bool state);

    /// Settings of the tools, on both channels; units as at DspCore::Receiver, the thresholds as at
    /// DspCore::NoiseBlanker.
    void setNrTaps(int taps);
    void setNrDelay(int samples);
    void setNrRate(double rate);
    void setNrLeak(double leak);
    void setAnfTaps(int taps);
    void setAnfDelay(int samples);
    void setAnfRate(double rate);
    void setAnfLeak(double leak);
    void setCwApfGain(int gain);
    void setCwApfQuality(int quality);
    void setSsbApfGain(int gain);
    void setSsbApfQuality(double quality);
    void setSsbApfFreq(int frequency);
    void setNb1Threshold(double threshold);
    void setNb2Threshold(double threshold);
    void setDseQuality(int taps);
    void setDseSwap(bool swap);
    void setWfmUsa(bool usa);

    void lineoutOpen();
    void lineoutClose();
    void vacOpen();
    void vacClose();

private:
    using Lock = std::lock_guard<std::recursive_mutex>;

    // The steps of one read block, in order; engine thread, under the engine mutex.
    void dspProcess(std::vector<COMPLEX> &block);
    void feedIqTap(std::vector<COMPLEX> &block);
    void feedIqServer(std::vector<COMPLEX> &block);
    void feedLineOut();
    void feedVac();
    void feedSensors();
    void feedSoundCard(gsl::span<COMPLEX> audio);

    bool takeChunk(CircularBuffer<COMPLEX> &ring);
    void setFilterTaps(std::size_t tapsClass, int taps, bool apply);
    void setAgcTime(AgcMode mode, double AgcParam::*field, double ms);
    void applyAgc(const AgcTable::Setting &setting);

    static constexpr unsigned kIqTapCapacity = 65536;
    static constexpr std::size_t kInputCapacity = 131072;

    BridgeAbstract &m_bridge;
    std::shared_ptr<ZephrinMFunctions> m_functions;

    // GUI thread.
    std::vector<double> m_dds; // hertz, by receiver

    // Held for one read block, and by each setter.
    std::recursive_mutex m_mutex;

    // Guarded by m_mutex.
    InputFade m_inputFade;
    DspCore::NoiseBlanker m_noiseBlanker;
    double m_soundCardRate = 48000.0; // hertz
    bool m_lineOutEnabled = false;
    double m_lineOutRate = 48000.0; // hertz
    bool m_vacEnabled = false;
    double m_vacRate = 48000.0; // hertz
    DspCore::Modulation m_modulation = DspCore::Modulation::AM;
    std::vector<int> m_filterTaps;
    AgcTable m_agc;
    DspCore::Receiver m_receiver;
    SensorsAbstract *m_sensors = nullptr;
    std::vector<COMPLEX> m_chunk; // the part of a receiver ring that a tap takes

    // Written by the GUI thread, read by the engine without a lock.
    std::atomic<IqServerAbstract *> m_iqServer{nullptr};
    std::atomic<AudioServerAbstract *> m_audioServer{nullptr};

    // Between engine and host audio threads; the rings inside have locks of their own.
    AudioTap m_lineOut;
    AudioTap m_vac;
    CircularBuffer<COMPLEX> m_iqTap{kIqTapCapacity};
    StereoPull m_soundCard; // sound card thread

    // Between reader and engine; has a lock of its own.
    vm::containers::ring_buffer<COMPLEX, vm::thread::spinlock> m_input;

    // Engine thread.
    std::vector<COMPLEX> m_readBlock; // sized while there is no engine thread
    std::vector<COMPLEX32> m_audio;
};

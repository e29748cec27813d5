// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "d2xx/ftd2xx.h"
#include "host_interfaces/EngineLimits.h"

#include <QThread>
#include <QTimer>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class Repairs;
class ZephrinMDSP;

/// The receiver on its USB FIFO: opens it, sends its commands, reads its stream.
///
///   closed -- open() --> opened -- startStream() --> streaming
///          <- close() --        <- stopStream() ---
///
/// Commands are packets of 11 bytes on the way out; the way in is one byte stream of frames (see
/// FrameParser), read in windows of fixed size and handed to the engine as blocks of samples. The
/// device keeps what it was told; frequency and attenuator are the caller's to send after each
/// open().
///
/// Threads:
/// 1. GUI: this object and its timer live there; every operation but those of 2.
/// 2. Reader: run() and what it calls, between startStream() and stopStream(). The window buffer
///    and the header list are its own.
/// FT_Write by 1 goes on while 2 is in FT_Read, without a lock: the FIFO library takes that.
/// forceStop() may be raised by any thread; the stop itself is queued to 1, since no thread can
/// join itself.
///
/// Failures are logged as warnings and give false; nothing is thrown. One goes unnoticed on
/// purpose: a device that is there but silent gives good reads without data, and the stream stays.
class HardwareZephrinNANO : public QThread
{
    Q_OBJECT

public:
    /// Row of the rate table; the device knows its rates by this number.
    enum SampleRate : int {
        Rate48000 = 0,
        Rate96000 = 1,
        Rate192000 = 2,
        Rate384000 = 3,
        Rate768000 = 4,
        Rate1536000 = 5,
        Rate1920000 = 6,
        Rate2560000 = 7,
        Rate3072000 = 8,
    };

#pragma pack(push, 1)
    /// The calibration page as it lies at the start of the EEPROM user area, little-endian.
    struct Calibrations
    {
        double userPreampCoeff = 0.0;  // dB
        double userFreqCoeff = 1.0;    // factor on the tuned frequency
        double adminPreampCoeff = 0.0; // dB
        double adminFreqCoeff = 1.0;   // factor on the tuned frequency
        std::uint32_t checksum = 0;    // crc32() of the 32 bytes before
    };
#pragma pack(pop)
    static_assert(sizeof(Calibrations) == 36);

    /// dsp takes the samples and must not be null.
    explicit HardwareZephrinNANO(std::shared_ptr<ZephrinMDSP> dsp, QObject *parent = nullptr);

    /// Closes the device.
    ~HardwareZephrinNANO() override;

    /// Opens device number index of the FIFO library's list and starts its ADC. False: already
    /// open, or the device failed; after such a failure the handle is not given back, so another
    /// try finds the device busy. Failures that leave a usable device are logged only.
    bool open(int index);

    /// Stops the stream if there is one.
    void close();

    /// ADC reset and register set-up, about 15 ms; called by open(). False at the first write that
    /// fails.
    bool init();

    /// Of these the driver knows `stream` and `numbers`. Ahead of the first startStream().
    void setRepairs(const Repairs &repairs);

    bool isOpen() const
    {
        return m_opened;
    }
    bool isStartStream() const
    {
        return m_started;
    }

    /// Starts stream, engine, reader, AutoPreamp and watchdog. A code outside 0..8 is taken as the
    /// nearest. False: already started, or the device refused; nothing runs then.
    bool startStream(SampleRate code);

    /// Ends all that again; returns when engine and reader are gone. False if the device did not
    /// take the last command. Does nothing, and gives true, without a stream.
    bool stopStream();

    /// Tunes to f hertz, and takes the low-pass filter out above 55 MHz.
    bool setFrequency(double f);

    /// Gain before the ADC in dB, steps of 0.5: -31.5..0 attenuator, 0.5..6 ADC gain. Limited.
    bool setPreamp(float p);

    void setLpf(bool on);

    /// Level correction in dB, multiplied into every sample from the next window on. With the
    /// repair `numbers` one whose factor is not finite is refused with a warning.
    void setPreampCoeff(double dB);

    /// Sends the state word.
    bool writeState();

    /// Sends an ADC register word, number in the high byte, data in the low byte, within a pair of
    /// state commands that announce it. A failure may leave it announced.
    bool writeAdcRegistr(unsigned short word);

    /// Sends bytes as they are.
    bool write(const std::vector<uint8_t> &bytes);

    /// The calibration page. False, with a warning, if the user area is too short for it or larger
    /// than any EEPROM; nothing is read or written then. The checksum is the caller's.
    bool read(Calibrations &page);
    bool write(Calibrations &page);

    /// Thread 2: reads windows until the stream is stopped.
    void run() override;

    /// Offsets of all markers of a window.
    std::vector<std::size_t> findHeaders(const std::vector<int8_t> &block) const;

    /// Hands the samples between the markers, corrected in level, to the engine, and the ADC peak
    /// to AutoPreamp. Returns the number of tail bytes now at the front of the block. A window
    /// without a marker hands over an empty block and has no tail: a whole new one is read.
    std::size_t extractIQ(std::vector<int8_t> &block, const std::vector<std::size_t> &headers);

signals:
    /// The stream is to be stopped, on the GUI thread.
    void forceStop();

private slots:
    void onWatchdog();

private:
    enum class Command : std::uint8_t {
        Frequency = 1,
        State = 2,
        AdcRegister = 3,
        Attenuator = 4,
    };

    bool send(Command command, std::uint32_t value);
    std::uint32_t stateWord() const;
    bool succeeded(FT_STATUS status);

    /// A buffer as large as the EEPROM user area, zeroed; nothing, with a warning, if the device
    /// does not tell its size or one that makes no sense.
    std::optional<std::vector<UCHAR>> userArea(const char *signature);

    FT_HANDLE m_handle = nullptr;
    std::atomic<FT_STATUS> m_status = FT_OK; // last call of either thread, for a debugger's eye
    std::atomic<bool> m_opened = false;
    std::atomic<bool> m_started = false; // written by 1, ends the loop of 2
    bool m_mendsStream = false;          // fixed while 2 runs
    bool m_finiteOnly = false;
    bool m_lpf = true; // low-pass filter in use
    bool m_adcReset = false;
    int m_sampleRateCode = 0;
    unsigned m_adcRegisterMode = 0;          // 1 while a register word is on its way
    std::atomic<double> m_preampCoeff = 1.0; // linear; written by 1, read by 2
    std::size_t m_sampleFormat = 0;          // 0: 3 bytes a component, else 2; fixed while 2 runs
    std::shared_ptr<ZephrinMDSP> m_dsp;
    QTimer m_watchdog;
    std::atomic<bool> m_dataSeen = false; // a read succeeded; set by 2, cleared by 1
    std::size_t m_readWindow = EngineLimits::readWindow(0); // bytes; fixed while 2 runs
};

using ZephrinSR = HardwareZephrinNANO::SampleRate;

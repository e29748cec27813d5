// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/HardwareZephrinNANO.h"

#include "Control/AutoPreamp.h"
#include "Control/driver/FailedReads.h"
#include "Control/driver/FrameParser.h"
#include "Dsp/ZephrinMDSP.h"
#include "host_interfaces/Repairs.h"
#include "vm_library/source/log/Log.h"

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cmath>
#include <ctime>
#include <gsl/span>

namespace
{
using vm::log::debug;
using vm::log::warning;

// The synthesiser adds the frequency word to a 32-bit phase on every tick of the ADC clock.
constexpr double kAdcClockHz = 122880000.0;
constexpr double kWordsPerHz = 34.952533333333335; // 2^32 / clock
static_assert(kWordsPerHz == 4294967296.0 / kAdcClockHz);

constexpr double kLpfLimitHz = 55000000.0;
constexpr double kOpenFrequencyHz = 1900000.0;

constexpr UCHAR kAllPinsOut = 0xff;
constexpr UCHAR kLatencyMs = 36;
constexpr ULONG kTimeoutMs =
    200; // of one read or write; bounds how long the reader outlives a stop
constexpr int kWatchdogMs = 1000;
constexpr long kAdcPauseNs = 5000000; // 5 ms for the ADC to take a reset edge

// No chip has an EEPROM with a user area above this; a library that tells of one is broken.
constexpr DWORD kLargestUserArea = 65536; // bytes

constexpr int kHighestRateCode = int(EngineLimits::kRatesHz.size()) - 1;

constexpr std::uint32_t kStateAdcReset = 1u << 31;
constexpr unsigned kStateAdcWriteBit = 30;
constexpr std::uint32_t kStateStream = 1u << 19;
constexpr std::uint32_t kStateSamples16 = 1u << 17;
constexpr std::uint32_t kStateLpfOff = 1u << 16;

constexpr unsigned short kAdcGain = 0x2500; // gain register; data 0xN0 is N times 0.5 dB
constexpr unsigned short kAdcSetup[] = {
    0x0003, 0x0100, 0x0301, kAdcGain, 0x3DA0, 0x41C0, 0x4208, 0x4300, 0x4A01};

constexpr double kStepsPerDb = 2.0;
constexpr double kHighestGain = 12.0; // steps of 0.5 dB
constexpr double kLowestGain = -63.0;

void pauseForAdc()
{
    timespec left{0, kAdcPauseNs};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) { }
}

// The low 32 bits of the truncated product; 0 for what no 64-bit integer holds.
std::uint32_t frequencyWord(double f)
{
    constexpr double kTooLarge = 9223372036854775808.0; // 2^63
    const double word = f * kWordsPerHz;
    return std::abs(word) < kTooLarge ? std::uint32_t(std::int64_t(word)) : 0;
}
} // namespace

HardwareZephrinNANO::HardwareZephrinNANO(std::shared_ptr<ZephrinMDSP> dsp, QObject *parent)
    : QThread(parent), m_dsp(std::move(dsp))
{
    assert(m_dsp && "dsp");
    AutoPreamp::instance(); // made here, its timer lives on the GUI thread and not on the reader's

    connect(this, &HardwareZephrinNANO::forceStop, this, &HardwareZephrinNANO::stopStream,
        Qt::QueuedConnection);
    connect(&m_watchdog, &QTimer::timeout, this, &HardwareZephrinNANO::onWatchdog);
}

HardwareZephrinNANO::~HardwareZephrinNANO()
{
    close();
}

void HardwareZephrinNANO::setRepairs(const Repairs &repairs)
{
    m_mendsStream = repairs.has(Repair::Stream);
    m_finiteOnly = repairs.has(Repair::Numbers);
}

bool HardwareZephrinNANO::open(int index)
{
    constexpr auto kSignature = "bool HardwareZephrinNANO::open(int)";
    if (m_opened) {
        debug(kSignature, "(", index, "): already opened");
        return false;
    }

    // Only what the stream cannot do without ends the attempt.
    const auto tried = [&](FT_STATUS status, int line, const char *text) {
        if (!succeeded(status))
            warning(kSignature, line, text, status);
        return status == FT_OK;
    };
    if (!tried(FT_Open(index, &m_handle), __LINE__, " failed to open, "))
        return false;
    tried(FT_ResetDevice(m_handle), __LINE__, " failed to reset device, ");
    tried(FT_SetBitMode(m_handle, kAllPinsOut, FT_BITMODE_RESET), __LINE__,
        " failed to reset bit mode, ");
    if (!tried(FT_SetBitMode(m_handle, kAllPinsOut, FT_BITMODE_SYNC_FIFO), __LINE__,
            " failed to set sync FIFO bit mode, "))
        return false;
    tried(FT_SetLatencyTimer(m_handle, kLatencyMs), __LINE__, " failed to set latency timer, ");
    tried(FT_SetUSBParameters(m_handle, ULONG(m_readWindow), ULONG(m_readWindow)), __LINE__,
        " failed to set USB parameters, ");
    tried(FT_SetFlowControl(m_handle, FT_FLOW_RTS_CTS, 0, 0), __LINE__,
        " failed to set Flow Control, ");
    tried(FT_SetTimeouts(m_handle, kTimeoutMs, kTimeoutMs), __LINE__, " failed to set timeouts, ");
    if (!init()) {
        warning(kSignature, __LINE__, " failed to init ZephrinNANO");
        return false;
    }

    // Refused while the device does not count as open: tuning is left to the owner, which sends its
    // own frequency and gain next.
    setFrequency(kOpenFrequencyHz);
    setPreamp(0);

    m_opened = true;
    return true;
}

void HardwareZephrinNANO::close()
{
    if (!m_opened)
        return;
    if (m_started)
        stopStream();
    m_opened = false;
    if (const FT_STATUS status = FT_Close(m_handle); !succeeded(status))
        warning(
            "void HardwareZephrinNANO::close()", __LINE__, " failed to correct close, ", status);
    m_handle = nullptr;
}

bool HardwareZephrinNANO::init()
{
    for (const bool reset : {false, true, false}) {
        m_adcReset = reset;
        if (!writeState())
            return false;
        pauseForAdc();
    }
    return std::all_of(std::begin(kAdcSetup), std::end(kAdcSetup),
        [this](unsigned short word) { return writeAdcRegistr(word); });
}

bool HardwareZephrinNANO::startStream(SampleRate code)
{
    if (m_started) {
        debug(Q_FUNC_INFO, "already opened");
        return false;
    }
    // A stop that is still on its way was meant for the stream before.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_dataSeen = false;
    if (const FT_STATUS status = FT_Purge(m_handle, FT_PURGE_RX | FT_PURGE_TX);
        !succeeded(status)) {
        warning(Q_FUNC_INFO, " failed to purge, ", status);
        return false;
    }

    m_sampleRateCode = std::clamp(int(code), 0, kHighestRateCode);
    m_readWindow = EngineLimits::readWindow(m_sampleRateCode);
    m_sampleFormat = 0;
    if (const FT_STATUS status =
            FT_SetUSBParameters(m_handle, ULONG(m_readWindow), ULONG(m_readWindow));
        !succeeded(status)) {
        warning(Q_FUNC_INFO, " failed to set USB parameters, ", status);
        return false;
    }
    if (const FT_STATUS status = FT_SetTimeouts(m_handle, kTimeoutMs, kTimeoutMs);
        !succeeded(status))
        warning(Q_FUNC_INFO, " failed to set timeouts, ", status);

    m_started = true;
    if (!writeState()) {
        m_started = false;
        return false;
    }

    // The engine first: it must be there when the first block arrives.
    m_dsp->open(vm::thread::jthread::Priority::Highest);
    QThread::start(QThread::InheritPriority);
    AutoPreamp::instance()->start();
    m_watchdog.start(kWatchdogMs);
    return true;
}

bool HardwareZephrinNANO::stopStream()
{
    if (!m_started)
        return true;
    m_watchdog.stop();
    m_started = false;
    AutoPreamp::instance()->stop();

    // The engine goes before the reader. A reader caught in processIQ() is not held up: with the
    // engine's stop flag set a late block is dropped at once. A thread object still joinable when
    // it is deleted would end the process, so close() joins first.
    m_dsp->close();
    QThread::quit();
    QThread::wait();

    // Only now, with nobody reading, the device is told.
    return writeState();
}

void HardwareZephrinNANO::onWatchdog()
{
    if (!m_dataSeen.exchange(false))
        emit forceStop();
}

bool HardwareZephrinNANO::setFrequency(double f)
{
    if (!m_opened)
        return false;
    const bool sent = send(Command::Frequency, frequencyWord(f));
    if (sent)
        setLpf(!(f > kLpfLimitHz));
    return sent;
}

void HardwareZephrinNANO::setLpf(bool on)
{
    if (m_lpf == on)
        return;
    m_lpf = on;
    writeState();
}

bool HardwareZephrinNANO::setPreamp(float p)
{
    if (!m_opened)
        return false;
    m_adcRegisterMode = 0;
    if (!writeState())
        return false;

    // In this order of arguments a p that is no number ends at the most attenuation.
    const int steps = int(std::max(kLowestGain, std::min(kStepsPerDb * double(p), kHighestGain)));
    const int attenuation = steps > 0 ? 0 : -steps;
    const int gain = steps > 0 ? steps : 0;
    return send(Command::Attenuator, std::uint32_t(attenuation))
        && writeAdcRegistr(static_cast<unsigned short>(kAdcGain | gain << 4));
}

void HardwareZephrinNANO::setPreampCoeff(double dB)
{
    const double factor = std::pow(10.0, dB * 0.05);
    if (m_finiteOnly && !std::isfinite(factor))
        return warning(Q_FUNC_INFO, " refused ", dB);
    m_preampCoeff.exchange(factor);
}

bool HardwareZephrinNANO::writeState()
{
    return send(Command::State, stateWord());
}

std::uint32_t HardwareZephrinNANO::stateWord() const
{
    return (m_adcReset ? kStateAdcReset : 0) | m_adcRegisterMode << kStateAdcWriteBit
        | (m_started ? kStateStream : 0) | (m_sampleFormat == 1 ? kStateSamples16 : 0)
        | (m_lpf ? 0 : kStateLpfOff) | std::uint32_t(m_sampleRateCode);
}

bool HardwareZephrinNANO::writeAdcRegistr(unsigned short word)
{
    m_adcRegisterMode = 1;
    if (!writeState() || !send(Command::AdcRegister, word))
        return false;
    m_adcRegisterMode = 0;
    return writeState();
}

bool HardwareZephrinNANO::send(Command command, std::uint32_t value)
{
    return write(std::vector<uint8_t>{0x55, 0x55, 0x55, 0x55, 0x55, 0x01, std::uint8_t(command),
        std::uint8_t(value), std::uint8_t(value >> 8), std::uint8_t(value >> 16),
        std::uint8_t(value >> 24)});
}

bool HardwareZephrinNANO::write(const std::vector<uint8_t> &bytes)
{
    DWORD written = 0;
    // The library's argument is not const, but it only reads.
    auto *data = const_cast<uint8_t *>(bytes.data());
    if (succeeded(FT_Write(m_handle, data, DWORD(bytes.size()), &written)))
        return true;
    warning("bool HardwareZephrinNANO::write(const std::vector<uint8_t> &)",
        " failed to write data, writed: ", written);
    return false;
}

bool HardwareZephrinNANO::succeeded(FT_STATUS status)
{
    m_status = status;
    return status == FT_OK;
}

std::optional<std::vector<UCHAR>> HardwareZephrinNANO::userArea(const char *signature)
{
    DWORD size = 0;
    if (!succeeded(FT_EE_UASize(m_handle, &size))) {
        warning(signature, " Failed read page size!");
        return std::nullopt;
    }
    if (size < sizeof(Calibrations) || size > kLargestUserArea) {
        warning(signature, " Incorrect page size: ", size);
        return std::nullopt;
    }
    return std::vector<UCHAR>(size);
}

bool HardwareZephrinNANO::read(Calibrations &page)
{
    constexpr auto kSignature =
        "bool HardwareZephrinNANO::read(HardwareZephrinNANO::Calibrations &)";
    if (!m_opened)
        return false;
    auto area = userArea(kSignature);
    if (!area)
        return false;
    DWORD received = 0;
    if (!succeeded(FT_EE_UARead(m_handle, area->data(), DWORD(area->size()), &received))) {
        warning(kSignature, " Failed read calibrations!");
        return false;
    }
    std::copy_n(area->data(), sizeof(page), reinterpret_cast<UCHAR *>(&page));
    return true;
}

bool HardwareZephrinNANO::write(Calibrations &page)
{
    constexpr auto kSignature =
        "bool HardwareZephrinNANO::write(HardwareZephrinNANO::Calibrations &)";
    if (!m_opened)
        return false;
    auto area = userArea(kSignature);
    if (!area)
        return false;
    std::copy_n(reinterpret_cast<const UCHAR *>(&page), sizeof(page), area->data());
    if (succeeded(FT_EE_UAWrite(m_handle, area->data(), DWORD(area->size()))))
        return true;
    warning(kSignature, " Failed read calibrations!");
    return false;
}

void HardwareZephrinNANO::run()
{
    const std::size_t window = m_readWindow;
    std::vector<int8_t> buffer(window);
    std::size_t remaining = window;
    FailedReads failed;
    while (m_started) {
        DWORD received = 0;
        const FT_STATUS status =
            FT_Read(m_handle, buffer.data() + window - remaining, DWORD(remaining), &received);
        if (!succeeded(status)) {
            if (!m_mendsStream || failed.isTold())
                warning(
                    "virtual void HardwareZephrinNANO::run()", " failed to read IQ, error", status);
            if (m_mendsStream)
                FailedReads::pause();
            continue;
        }
        m_dataSeen.exchange(true);
        if (received != remaining)
            continue; // a torn read: its bytes are given up, the markers find the way back
        remaining = window - extractIQ(buffer, findHeaders(buffer));
        // A marker that a whole window follows without another is none: with nothing left to read
        // the loop would read nothing for ever.
        if (remaining == 0 && m_mendsStream)
            remaining = window;
    }
}

std::vector<std::size_t> HardwareZephrinNANO::findHeaders(const std::vector<int8_t> &block) const
{
    return FrameParser::findHeaders(block);
}

std::size_t HardwareZephrinNANO::extractIQ(
    std::vector<int8_t> &block, const std::vector<std::size_t> &headers)
{
    const auto logSkipped = [](std::size_t distance) {
        debug("std::size_t HardwareZephrinNANO::extractIQ(std::vector<int8_t> &, "
              "const std::vector<std::size_t> &)",
            __LINE__, ", failed to read block, size:", distance);
    };
    const double gain = m_preampCoeff; // one for the block
    std::uint16_t peak = 0;
    // Right into the engine's ring: a copy of the samples would cost as much as their decoding.
    m_dsp->processIQ(FrameParser::samplesIn(headers, m_sampleFormat), [&](COMPLEX *iq) {
        peak = FrameParser::decode(block, headers, m_sampleFormat, iq, logSkipped, gain);
    });

    const std::size_t tail = FrameParser::keepTail(block, headers);
    if (peak != 0)
        AutoPreamp::instance()->setAdcValue(peak);
    return tail;
}

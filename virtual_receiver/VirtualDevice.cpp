// SPDX-License-Identifier: GPL-3.0-or-later
#include "VirtualDevice.h"

#include "scenes/band/BuiltinScene.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <thread>
#include <type_traits>

namespace vr
{
namespace
{
using Clock = std::chrono::steady_clock;
using CallFault = Faults::CallFault;

constexpr const char *kSerial = "ZN000001";
constexpr const char *kProduct = "ZephrinNano";
constexpr const char *kForeignSerial = "FT000000";
constexpr const char *kForeignProduct = "USB Serial Converter";
constexpr std::size_t kTextSize = 64; // what FT_ListDevices may fill

// Limits of the USB chip as its maker publishes them.
constexpr UCHAR kMinLatencyMs = 2;
constexpr ULONG kTransferUnit = 64;
constexpr ULONG kMaxTransfer = 65536;

// The chip's own FIFO and what the USB driver of a host buffers: 30 ms at the highest rate.
constexpr std::uint64_t kFifoFrames = (64 * 1024 + 512 * 1024) / FramePacker::kFrameSize;

// Command packets kept for vr_get_commands(): a day of continuous tuning.
constexpr std::size_t kMaxCommands = 1u << 20;

constexpr std::uint64_t framesFor(std::size_t bytes)
{
    return (bytes + FramePacker::kFrameSize - 1) / FramePacker::kFrameSize;
}
} // namespace

VirtualDevice &VirtualDevice::instance()
{
    static VirtualDevice device;
    return device;
}

VirtualDevice::VirtualDevice() : m_scene(makeBuiltinScene()) { }

// The FT_ functions.

// The fault of a call, whose waiting is over. Nobody else waits for it.
Faults::CallFault VirtualDevice::takeCallFault(const char *function, Lock &lock)
{
    runPlugFaults();
    const Faults::CallFault fault = m_faults.onCall(function);
    if (fault.hangSeconds > 0.0) {
        lock.unlock();
        std::this_thread::sleep_for(std::chrono::duration<double>(fault.hangSeconds));
        lock.lock();
        runPlugFaults();
    }
    return fault;
}

// A call: it is logged, faults by time happen, and unless a fault asked for this very call gives
// its status, what it does is done. Bodies that give something take the fault, to give it wrong.
template <typename Body>
FT_STATUS VirtualDevice::call(const char *function, CallLog::Numbers numbers, Body body)
{
    Lock lock(m_mutex);
    m_calls.add(function, numbers);
    const Faults::CallFault fault = takeCallFault(function, lock);
    if (fault.status)
        return fault.status;
    if constexpr (std::is_invocable_v<Body, const Faults::CallFault &>)
        return FT_STATUS(body(fault));
    else
        return FT_STATUS(body());
}

// A call that needs an open handle.
template <typename Body>
FT_STATUS VirtualDevice::call(
    const char *function, CallLog::Numbers numbers, FT_HANDLE handle, Body body)
{
    return call(function, numbers, [&](const Faults::CallFault &fault) {
        const FT_STATUS bad = check(handle);
        if (bad)
            return bad;
        if constexpr (std::is_invocable_v<Body, const Faults::CallFault &>)
            return FT_STATUS(body(fault));
        else
            return FT_STATUS(body());
    });
}

FT_STATUS VirtualDevice::check(FT_HANDLE handle) const
{
    if (handle && handle == m_handle)
        return FT_OK;
    const bool dead = std::count(m_deadHandles.begin(), m_deadHandles.end(), handle) > 0;
    return dead ? FT_IO_ERROR : FT_INVALID_HANDLE;
}

FT_STATUS VirtualDevice::checkFifo(FT_HANDLE handle) const
{
    if (const FT_STATUS status = check(handle))
        return status;
    return m_bitMode == FT_BITMODE_SYNC_FIFO ? FT_OK : FT_IO_ERROR;
}

FT_STATUS VirtualDevice::listNumber(DWORD *count)
{
    return call("FT_ListDevices", {FT_LIST_NUMBER_ONLY}, [&](const CallFault &fault) {
        if (!count)
            return FT_INVALID_PARAMETER;
        *count = fault.told(m_foreignDevices + (m_plugged ? 1 : 0));
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::listString(DWORD index, DWORD flags, char *text)
{
    return call("FT_ListDevices", {index, flags}, [&](const CallFault &fault) {
        const bool serial = flags == (FT_LIST_BY_INDEX | FT_OPEN_BY_SERIAL_NUMBER);
        const bool product = flags == (FT_LIST_BY_INDEX | FT_OPEN_BY_DESCRIPTION);
        if (!text || (!serial && !product))
            return FT_INVALID_PARAMETER;
        if (index > m_foreignDevices || (index == m_foreignDevices && !m_plugged))
            return FT_DEVICE_NOT_FOUND;
        const std::string_view truth = index < m_foreignDevices
            ? (serial ? kForeignSerial : kForeignProduct)
            : (serial ? kSerial : kProduct);
        if (fault.answer == CallFault::Answer::Garbage)
            std::memset(text, 0xff, kTextSize); // without an end
        else
            text[truth.copy(text, fault.share(DWORD(truth.size())))] = '\0';
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::open(int index, FT_HANDLE *handle)
{
    return call("FT_Open", {index}, [&](const CallFault &fault) {
        if (!handle)
            return FT_INVALID_PARAMETER;
        *handle = reinterpret_cast<FT_HANDLE>(std::uintptr_t(fault.told(0)));
        if (fault.answer != CallFault::Answer::True)
            return FT_OK; // with nothing opened
        if (index < 0 || unsigned(index) > m_foreignDevices
            || (unsigned(index) == m_foreignDevices && !m_plugged))
            return FT_DEVICE_NOT_FOUND;
        if (m_handle || unsigned(index) < m_foreignDevices)
            return FT_DEVICE_NOT_OPENED;
        m_handle = reinterpret_cast<FT_HANDLE>(++m_lastHandle);
        m_bitMode = FT_BITMODE_RESET;
        m_readTimeoutMs = 0;
        *handle = m_handle;
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::close(FT_HANDLE handle)
{
    return call("FT_Close", {}, [&]() -> FT_STATUS {
        if (std::erase(m_deadHandles, handle))
            return FT_OK;
        if (const FT_STATUS bad = check(handle))
            return bad;
        m_handle = nullptr;
        dropQueue();
        m_changed.notify_all();
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::resetDevice(FT_HANDLE handle)
{
    return call("FT_ResetDevice", {}, handle, [&] {
        dropQueue();
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::setBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode)
{
    return call("FT_SetBitMode", {mask, mode}, handle, [&] {
        // The chip's other modes (bit bang, MPSSE) drive pins that the receiver does not have.
        if (mode != FT_BITMODE_RESET && mode != FT_BITMODE_SYNC_FIFO)
            return FT_NOT_SUPPORTED;
        m_bitMode = mode;
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::setLatencyTimer(FT_HANDLE handle, UCHAR milliseconds)
{
    return call("FT_SetLatencyTimer", {milliseconds}, handle,
        [&] { return milliseconds < kMinLatencyMs ? FT_INVALID_PARAMETER : FT_OK; });
}

FT_STATUS VirtualDevice::setUsbParameters(FT_HANDLE handle, ULONG inSize, ULONG outSize)
{
    return call("FT_SetUSBParameters", {inSize, outSize}, handle, [&] {
        const auto fits = [](ULONG size) {
            return size >= kTransferUnit && size <= kMaxTransfer && size % kTransferUnit == 0;
        };
        return fits(inSize) && fits(outSize) ? FT_OK : FT_INVALID_PARAMETER;
    });
}

FT_STATUS VirtualDevice::setFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff)
{
    return call("FT_SetFlowControl", {flowControl, xon, xoff}, handle, [&] {
        constexpr USHORT kModes[] = {
            0, FT_FLOW_RTS_CTS, 0x0200 /* DTR/DSR */, 0x0400 /* Xon/Xoff */};
        return std::count(std::begin(kModes), std::end(kModes), flowControl) ? FT_OK
                                                                             : FT_INVALID_PARAMETER;
    });
}

FT_STATUS VirtualDevice::setTimeouts(FT_HANDLE handle, ULONG readMs, ULONG writeMs)
{
    return call("FT_SetTimeouts", {readMs, writeMs}, handle, [&] {
        m_readTimeoutMs = readMs;
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::purge(FT_HANDLE handle, ULONG mask)
{
    return call("FT_Purge", {mask}, handle, [&] {
        if (mask == 0 || mask & ~(FT_PURGE_RX | FT_PURGE_TX))
            return FT_INVALID_PARAMETER;
        if (mask & FT_PURGE_RX)
            dropQueue();
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::write(
    FT_HANDLE handle, const std::uint8_t *data, DWORD size, DWORD *written)
{
    if (written)
        *written = 0;
    return call("FT_Write", {size}, [&](const CallFault &fault) -> FT_STATUS {
        if (const FT_STATUS bad = checkFifo(handle))
            return bad;
        if (!data || !written)
            return FT_INVALID_PARAMETER;
        for (DWORD i = 0; i < fault.share(size); ++i) {
            if (m_parser.push(data[i]))
                obey(m_parser.packet());
        }
        *written = fault.told(size);
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::userAreaSize(FT_HANDLE handle, DWORD *size)
{
    return call("FT_EE_UASize", {}, handle, [&](const CallFault &fault) {
        if (!size)
            return FT_INVALID_PARAMETER;
        *size = fault.told(DWORD(m_eeprom.bytes().size()));
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::userAreaRead(FT_HANDLE handle, UCHAR *data, DWORD size, DWORD *received)
{
    if (received)
        *received = 0;
    return call("FT_EE_UARead", {size}, handle, [&](const CallFault &fault) {
        const auto &bytes = m_eeprom.bytes();
        if (!data || !received || size < bytes.size())
            return FT_INVALID_PARAMETER;
        std::copy_n(bytes.begin(), fault.share(DWORD(bytes.size())), data);
        *received = fault.told(DWORD(bytes.size()));
        return FT_OK;
    });
}

FT_STATUS VirtualDevice::userAreaWrite(FT_HANDLE handle, const UCHAR *data, DWORD size)
{
    return call("FT_EE_UAWrite", {size}, handle, [&] {
        if (!data || size > m_eeprom.bytes().size())
            return FT_INVALID_PARAMETER;
        return m_eeprom.write(data, size) ? FT_OK : FT_EEPROM_WRITE_FAILED;
    });
}

FT_STATUS VirtualDevice::read(FT_HANDLE handle, std::uint8_t *buffer, DWORD size, DWORD *received)
{
    std::lock_guard stream(m_streamMutex);
    Lock lock(m_mutex);
    if (received)
        *received = 0;
    ++m_reads;
    const CallFault fault = takeCallFault("FT_Read", lock);
    if (fault.status)
        return fault.status;
    if (const FT_STATUS status = checkFifo(handle))
        return status;
    if (!received || (!buffer && size > 0))
        return FT_INVALID_PARAMETER;
    if (size == 0)
        return FT_OK;
    const std::size_t wanted = m_faults.onRead(fault.share(size));
    if (const FT_STATUS status = fill(lock, handle, wanted))
        return status;
    // Granted samples are never lost in a read that timed out: they wait for one that they fill.
    if (m_clock.pace() != Pace::Credit || m_frames.bytes() >= wanted) {
        const auto delivery = m_frames.deliver(buffer, wanted);
        *received =
            fault.answer == CallFault::Answer::Garbage ? fault.told(0) : DWORD(delivery.bytes);
        m_framesSent += delivery.frames;
        m_samplesSent += delivery.samples;
        m_sceneEnded = m_sceneEnded || (delivery.endedRun == m_run && !m_seek);
    }
    m_shortReads += *received < size;
    return FT_OK;
}

// Makes frames until the queue holds the bytes wanted or the read timeout has passed.
FT_STATUS VirtualDevice::fill(Lock &lock, FT_HANDLE handle, std::size_t wanted)
{
    const Time deadline =
        m_readTimeoutMs ? Clock::now() + std::chrono::milliseconds(m_readTimeoutMs) : Time::max();
    for (;;) {
        if (std::exchange(m_queueDropped, false))
            m_frames.clear();
        if (m_frames.bytes() >= wanted)
            return FT_OK;
        const Time now = Clock::now();
        runPlugFaults();
        if (const FT_STATUS status = checkFifo(handle))
            return status;
        startSilence(now);
        countOverruns(now);
        const std::uint64_t needed =
            std::min(framesFor(wanted - m_frames.bytes()), framesToEvent());
        // What falls due while the last frames are made is for the next read.
        const std::uint64_t due = m_clock.due(std::min(now, deadline));
        const bool timedOut = now >= deadline;
        const bool takeSome = timedOut && m_clock.pace() == Pace::RealTime && due > 0;
        if (due >= needed || takeSome) {
            const auto batch = nextBatch(std::min({needed, due, FrameQueue::kBatchFrames}));
            lock.unlock();
            m_frames.make(batch);
            lock.lock();
            m_clipped += m_frames.takeClipped();
            if (batch.run == m_run && !m_seek)
                m_position = m_frames.position();
        } else if (timedOut) {
            return FT_OK;
        } else if (const Time wake = std::min(deadline, m_clock.dueAt(needed, now));
                   wake == Time::max()) {
            m_changed.wait(lock);
        } else {
            m_changed.wait_until(lock, wake);
        }
    }
}

// Frames up to the next silence or plug-out, at least one.
std::uint64_t VirtualDevice::framesToEvent() const
{
    const double frames =
        std::ceil((m_faults.nextEvent() - m_clock.seconds()) / m_clock.frameSeconds());
    constexpr std::uint64_t kNever = StreamClock::kUnlimited;
    return frames < double(kNever) ? std::uint64_t(std::max(frames, 1.0)) : kNever;
}

void VirtualDevice::startSilence(Time now)
{
    if (!m_state.streaming())
        return;
    const double seconds = m_clock.seconds();
    const auto span = m_faults.takeSilence(seconds);
    if (!span || span->to <= seconds)
        return;
    const double length = span->to - seconds;
    m_clock.pass(std::uint64_t(std::ceil(length / m_clock.frameSeconds())));
    if (m_clock.pace() != Pace::RealTime)
        m_clock.hold(now + std::chrono::nanoseconds(std::llround(length * 1e9)));
}

void VirtualDevice::countOverruns(Time now)
{
    m_overruns += m_clock.dropBeyond(kFifoFrames, now);
}

FrameQueue::Batch VirtualDevice::nextBatch(std::uint64_t frames)
{
    FrameQueue::Batch batch;
    batch.frames = frames;
    batch.skip = m_clock.takePassed();
    batch.state = m_state;
    batch.scene = m_scene;
    batch.run = m_run;
    batch.seek = std::exchange(m_seek, std::nullopt);
    batch.loop = m_loop;
    batch.paused = m_paused;
    for (std::uint64_t i = 0; i < frames; ++i)
        batch.byteFaults.push_back(m_faults.onFrame(m_clock.frame() + i));
    m_clock.take(frames);
    return batch;
}

void VirtualDevice::obey(const CommandPacket &packet)
{
    ++m_commandCount;
    if (m_commands.size() < kMaxCommands * CommandPacket::kSize)
        m_commands.insert(m_commands.end(), packet.bytes.begin(), packet.bytes.end());

    const DeviceState before = m_state;
    m_state.apply(packet);
    const bool sameStream = m_state.streaming() == before.streaming()
        && m_state.rateCode() == before.rateCode()
        && m_state.shortSamples() == before.shortSamples();
    if (m_state.streaming() && !sameStream) {
        m_clock.start(m_state.sampleRateHz(), m_state.samplesPerFrame(), Clock::now());
        beginRun();
    } else if (!m_state.streaming()) {
        m_clock.stop(Clock::now());
    }
    if (!sameStream)
        m_changed.notify_all();
}

void VirtualDevice::dropQueue()
{
    m_queueDropped = true;
    if (m_clock.pace() == Pace::RealTime)
        m_clock.pass(m_clock.due(Clock::now()));
}

// Power-on state: what the device forgets when it is unplugged.
void VirtualDevice::powerOn()
{
    m_badBytes += m_parser.badBytes();
    m_parser.clear();
    m_state = DeviceState();
    m_bitMode = FT_BITMODE_RESET;
    m_clock.stop({});
    m_queueDropped = true;
}

void VirtualDevice::plug(bool plugged)
{
    if (m_plugged == plugged)
        return;
    m_plugged = plugged;
    if (plugged)
        return;
    m_unpluggedAt = Clock::now();
    m_unpluggedSeconds = m_clock.seconds();
    if (m_handle)
        m_deadHandles.push_back(m_handle);
    m_handle = nullptr;
    powerOn();
    m_changed.notify_all();
}

// The stream's time stands while the device is out, so it is continued by the monotonic clock.
void VirtualDevice::runPlugFaults()
{
    if (m_plugged) {
        const bool streaming = m_state.streaming();
        if (streaming && m_faults.takeUnplug(m_clock.seconds()))
            plug(false);
        return;
    }
    const std::chrono::duration<double> out = Clock::now() - m_unpluggedAt;
    if (m_faults.takeReplug(m_unpluggedSeconds + out.count()))
        plug(true);
}

// The vr_ functions.

void VirtualDevice::reset()
{
    Lock lock(m_mutex);
    m_handle = nullptr;
    m_deadHandles.clear();
    m_plugged = true;
    m_foreignDevices = 0;
    powerOn();
    m_badBytes = 0;
    m_clock = StreamClock();
    m_scene = makeBuiltinScene();
    m_loop = m_paused = false;
    beginRun();
    m_eeprom = Eeprom();
    m_faults.clear();
    m_calls.clear();
    m_commands.clear();
    m_commandCount = 0;
    m_reads = m_framesSent = m_samplesSent = m_shortReads = m_overruns = m_clipped = 0;
    m_changed.notify_all();
}

void VirtualDevice::setScene(std::shared_ptr<Scene> scene)
{
    Lock lock(m_mutex);
    m_scene = std::move(scene);
    m_paused = false;
    beginRun();
}

// The scene begins anew.
void VirtualDevice::beginRun()
{
    ++m_run;
    m_sceneEnded = false;
    m_seek.reset();
    m_position = 0.0;
}

bool VirtualDevice::seekScene(double seconds, std::string &error)
{
    Lock lock(m_mutex);
    if (!m_scene->isSeekable())
        error = "the scene is no recording";
    else if (!std::isfinite(seconds))
        error = "no position";
    if (!error.empty())
        return false;
    m_position = std::clamp(seconds, 0.0, m_scene->seconds());
    m_seek = m_position;
    m_sceneEnded = false;
    return true;
}

double VirtualDevice::scenePosition() const
{
    Lock lock(m_mutex);
    return m_position;
}

void VirtualDevice::loopScene(bool loop)
{
    Lock lock(m_mutex);
    m_loop = loop;
    m_sceneEnded = m_sceneEnded && !loop;
}

void VirtualDevice::pauseScene(bool pause)
{
    Lock lock(m_mutex);
    m_paused = pause;
}

double VirtualDevice::sceneSeconds() const
{
    Lock lock(m_mutex);
    return m_scene->seconds();
}

double VirtualDevice::sceneWidthHz() const
{
    Lock lock(m_mutex);
    return m_scene->widthHz();
}

double VirtualDevice::sceneFrequencyHz() const
{
    Lock lock(m_mutex);
    return m_scene->frequencyHz();
}

void VirtualDevice::setPace(Pace pace)
{
    Lock lock(m_mutex);
    m_clock.setPace(pace, Clock::now());
    m_changed.notify_all();
}

void VirtualDevice::addCredit(std::uint64_t samples)
{
    Lock lock(m_mutex);
    m_clock.addCredit(samples);
    m_changed.notify_all();
}

bool VirtualDevice::useEepromFile(const std::string &path, std::string &error)
{
    Lock lock(m_mutex);
    return m_eeprom.useFile(path, error);
}

bool VirtualDevice::putEeprom(const std::uint8_t *bytes, std::size_t size, std::string &error)
{
    Lock lock(m_mutex);
    return m_eeprom.replace(bytes, size, error);
}

std::vector<std::uint8_t> VirtualDevice::eeprom() const
{
    Lock lock(m_mutex);
    return m_eeprom.bytes();
}

bool VirtualDevice::addFaults(const std::string &list, std::string &error)
{
    Lock lock(m_mutex);
    if (!m_faults.add(list, error))
        return false;
    m_clock.setSpeed(1.0 + m_faults.clockError(), Clock::now());
    return true;
}

void VirtualDevice::setPlugged(bool plugged)
{
    Lock lock(m_mutex);
    plug(plugged);
}

void VirtualDevice::setForeignDevices(unsigned count)
{
    Lock lock(m_mutex);
    m_foreignDevices = count;
}

vr_status VirtualDevice::status()
{
    Lock lock(m_mutex);
    runPlugFaults();
    countOverruns(Clock::now());
    vr_status status = {};
    status.frequency_word = m_state.frequencyWord();
    status.frequency_hz = m_state.frequencyHz();
    status.state_word = m_state.stateWord();
    status.attenuator = m_state.attenuator();
    std::copy(m_state.adcRegisters().begin(), m_state.adcRegisters().end(), status.adc_registers);
    status.open = m_handle != nullptr;
    status.streaming = m_state.streaming();
    status.sample_rate_hz = m_state.sampleRateHz();
    status.commands = m_commandCount;
    status.bad_bytes = m_badBytes + m_parser.badBytes();
    status.frames_sent = m_framesSent;
    status.samples_sent = m_samplesSent;
    status.short_reads = m_shortReads;
    status.fifo_overruns = m_overruns;
    status.clipped_samples = m_clipped;
    status.scene_ended = m_sceneEnded;
    status.reads = m_reads;
    return status;
}

std::vector<std::uint8_t> VirtualDevice::commands() const
{
    Lock lock(m_mutex);
    return m_commands;
}

std::string VirtualDevice::calls() const
{
    Lock lock(m_mutex);
    return m_calls.text();
}

void VirtualDevice::forgetCalls()
{
    Lock lock(m_mutex);
    m_calls.clear();
    m_commands = {};
}
} // namespace vr

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CallLog.h"
#include "CommandParser.h"
#include "DeviceState.h"
#include "Eeprom.h"
#include "Faults.h"
#include "FrameQueue.h"
#include "StreamClock.h"
#include "scenes/Scene.h"
#include "virtual_receiver.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vr
{
/// The receiver and its USB chip: what the FT_ functions talk to and what the vr_ functions set up.
/// One per process.
///
/// It is an independent witness of what the plugin sends and expects: the tuning word, the state
/// word's bits, the nine rates, the frame's layout, the EEPROM page and its checksum are written
/// down here once more (CommandPacket, DeviceState, FramePacker, Eeprom) and never taken from the
/// plugin's headers, so that a number that is wrong on one side shows in the tests.
///
/// Threads: any thread may call anything.
/// 1. The reading thread, in read(), makes the stream: it waits until the clock has frames due,
///    then renders the scene, packs and delivers. It holds m_streamMutex for the whole call, so
///    readers follow each other, and m_mutex only for moments between waits and renderings.
/// 2. All others take m_mutex only, so none of them ever waits for a read or for a scene.
///
/// Lock order: m_streamMutex before m_mutex.
class VirtualDevice
{
public:
    static VirtualDevice &instance();

    FT_STATUS listNumber(DWORD *count);
    FT_STATUS listString(DWORD index, DWORD flags, char *text);
    FT_STATUS open(int index, FT_HANDLE *handle);
    FT_STATUS close(FT_HANDLE handle);
    FT_STATUS resetDevice(FT_HANDLE handle);
    FT_STATUS setBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode);
    FT_STATUS setLatencyTimer(FT_HANDLE handle, UCHAR milliseconds);
    FT_STATUS setUsbParameters(FT_HANDLE handle, ULONG inSize, ULONG outSize);
    FT_STATUS setFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff);
    FT_STATUS setTimeouts(FT_HANDLE handle, ULONG readMs, ULONG writeMs);
    FT_STATUS purge(FT_HANDLE handle, ULONG mask);
    FT_STATUS read(FT_HANDLE handle, std::uint8_t *buffer, DWORD size, DWORD *received);
    FT_STATUS write(FT_HANDLE handle, const std::uint8_t *data, DWORD size, DWORD *written);
    FT_STATUS userAreaSize(FT_HANDLE handle, DWORD *size);
    FT_STATUS userAreaRead(FT_HANDLE handle, UCHAR *data, DWORD size, DWORD *received);
    FT_STATUS userAreaWrite(FT_HANDLE handle, const UCHAR *data, DWORD size);

    void reset();
    void setScene(std::shared_ptr<Scene> scene);
    double sceneSeconds() const;
    double sceneFrequencyHz() const;
    double sceneWidthHz() const;
    bool seekScene(double seconds, std::string &error);
    double scenePosition() const;
    void loopScene(bool loop);
    void pauseScene(bool pause);
    void setPace(Pace pace);
    void addCredit(std::uint64_t samples);
    bool useEepromFile(const std::string &path, std::string &error);
    bool putEeprom(const std::uint8_t *bytes, std::size_t size, std::string &error);
    std::vector<std::uint8_t> eeprom() const;
    bool addFaults(const std::string &list, std::string &error);
    void setPlugged(bool plugged);
    void setForeignDevices(unsigned count);
    vr_status status();
    std::vector<std::uint8_t> commands() const;
    std::string calls() const;
    void forgetCalls();

private:
    using Lock = std::unique_lock<std::mutex>;
    using Time = StreamClock::Time;

    VirtualDevice();

    Faults::CallFault takeCallFault(const char *function, Lock &lock);
    template <typename Body>
    FT_STATUS call(const char *function, CallLog::Numbers numbers, Body body);
    template <typename Body>
    FT_STATUS call(const char *function, CallLog::Numbers numbers, FT_HANDLE handle, Body body);

    FT_STATUS check(FT_HANDLE handle) const;
    FT_STATUS checkFifo(FT_HANDLE handle) const;
    void powerOn();
    void plug(bool plugged);
    void runPlugFaults();
    void obey(const CommandPacket &packet);
    void beginRun();
    void dropQueue();
    void countOverruns(Time now);
    void startSilence(Time now);
    std::uint64_t framesToEvent() const;
    FrameQueue::Batch nextBatch(std::uint64_t frames);
    FT_STATUS fill(Lock &lock, FT_HANDLE handle, std::size_t wanted);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed; // stream, credit, handle or plug; with m_mutex

    // Guarded by m_mutex.
    CallLog m_calls;
    std::uint64_t m_reads = 0;
    unsigned m_foreignDevices = 0; // in the list before the receiver
    bool m_plugged = true;
    Time m_unpluggedAt = {};
    double m_unpluggedSeconds = 0.0;      // time of the stream when the plug was pulled
    FT_HANDLE m_handle = nullptr;         // null: closed
    std::vector<FT_HANDLE> m_deadHandles; // of devices that went out, not yet closed
    std::uintptr_t m_lastHandle = 0;
    UCHAR m_bitMode = FT_BITMODE_RESET;
    ULONG m_readTimeoutMs = 0; // 0: without limit
    CommandParser m_parser;
    DeviceState m_state;
    std::uint64_t m_badBytes = 0; // of parsers before m_parser
    std::uint64_t m_commandCount = 0;
    std::vector<std::uint8_t> m_commands;
    Eeprom m_eeprom;
    Faults m_faults;
    std::shared_ptr<Scene> m_scene;
    std::optional<double> m_seek; // not yet done by the reading thread
    bool m_loop = false;
    bool m_paused = false;
    double m_position = 0.0; // seconds, of what has been made
    StreamClock m_clock;
    std::uint64_t m_run = 1;     // counts stream starts and changes of scene
    bool m_queueDropped = false; // the reading thread is to empty m_frames
    std::uint64_t m_framesSent = 0;
    std::uint64_t m_samplesSent = 0;
    std::uint64_t m_shortReads = 0;
    std::uint64_t m_overruns = 0;
    std::uint64_t m_clipped = 0;
    bool m_sceneEnded = false;

    std::mutex m_streamMutex;
    FrameQueue m_frames; // guarded by m_streamMutex
};
} // namespace vr

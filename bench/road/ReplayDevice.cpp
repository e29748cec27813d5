// SPDX-License-Identifier: GPL-3.0-or-later
#include "road/ReplayDevice.h"

#include "d2xx/ftd2xx.h"
#include "host_interfaces/EngineLimits.h"
#include "road/CpuSeconds.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstring>
#include <mutex>

namespace
{
constexpr std::size_t kFrameBytes = EngineLimits::kFrameBytes;
constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kFrameSamples = EngineLimits::kFrameSamples;
constexpr double kFullScale = 8388607.0; // 24 bits
constexpr auto kReadTimeout = std::chrono::milliseconds(200);

std::vector<std::uint8_t> stream;
std::size_t position = 0; // reading thread only
std::mutex grantMutex;
std::condition_variable grantCame;
std::uint64_t granted = 0;      // bytes, guarded by grantMutex
std::uint64_t sent = 0;         // bytes, reading thread only
std::atomic<double> spent{0.0}; // of two threads
int handleTarget = 0;

void putComponent(std::uint8_t *out, double value)
{
    const auto code =
        static_cast<std::int32_t>(std::lround(std::clamp(value, -1.0, 1.0) * kFullScale));
    out[0] = static_cast<std::uint8_t>(code);
    out[1] = static_cast<std::uint8_t>(code >> 8);
    out[2] = static_cast<std::uint8_t>(code >> 16);
}

double threadSeconds()
{
    return bench::cpuSeconds(CLOCK_THREAD_CPUTIME_ID);
}

void spend(double seconds)
{
    double before = spent;
    while (!spent.compare_exchange_weak(before, before + seconds)) { }
}

std::size_t waitForGrant(std::size_t wanted)
{
    std::unique_lock lock(grantMutex);
    grantCame.wait_for(lock, kReadTimeout, [&] { return granted - sent >= wanted; });
    return std::min<std::size_t>(wanted, granted - sent);
}

void copyOut(std::uint8_t *out, std::size_t bytes)
{
    while (bytes > 0) {
        const std::size_t run = std::min(bytes, stream.size() - position);
        std::memcpy(out, stream.data() + position, run);
        position = (position + run) % stream.size();
        out += run;
        bytes -= run;
    }
}
} // namespace

namespace replay
{
void load(const std::vector<COMPLEX> &samples)
{
    std::vector<std::uint8_t> frames(samples.size() / kFrameSamples * kFrameBytes);
    for (std::size_t i = 0; i < frames.size() / kFrameBytes * kFrameSamples; ++i) {
        std::uint8_t *frame = frames.data() + i / kFrameSamples * kFrameBytes;
        if (i % kFrameSamples == 0)
            std::memcpy(frame, "\x55\x55\x55\x55\x01\x00\xff\x1f", kHeaderBytes);
        std::uint8_t *sample = frame + kHeaderBytes + i % kFrameSamples * 6;
        putComponent(sample, samples[i].re);
        putComponent(sample + 3, samples[i].im);
    }
    loadFrames(std::move(frames));
}

void loadFrames(std::vector<std::uint8_t> frames)
{
    stream = std::move(frames);
    position = 0;
    sent = 0;
    granted = 0;
    spent = 0.0;
}

void grant(std::uint64_t samples)
{
    const double start = threadSeconds();
    {
        const std::lock_guard lock(grantMutex);
        granted += samples * kFrameBytes / kFrameSamples;
    }
    grantCame.notify_one();
    spend(threadSeconds() - start);
}

double deviceSeconds()
{
    return spent;
}
} // namespace replay

FT_STATUS FT_ListDevices(PVOID count, PVOID, DWORD)
{
    *static_cast<DWORD *>(count) = 1;
    return FT_OK;
}

FT_STATUS FT_Open(int, FT_HANDLE *handle)
{
    *handle = &handleTarget;
    return FT_OK;
}

FT_STATUS FT_EE_UASize(FT_HANDLE, LPDWORD)
{
    return FT_EEPROM_NOT_PRESENT;
}

FT_STATUS FT_EE_UARead(FT_HANDLE, PUCHAR, DWORD, LPDWORD)
{
    return FT_EEPROM_NOT_PRESENT;
}

FT_STATUS FT_EE_UAWrite(FT_HANDLE, PUCHAR, DWORD)
{
    return FT_EEPROM_NOT_PRESENT;
}

FT_STATUS FT_Read(FT_HANDLE, LPVOID buffer, DWORD bytes, LPDWORD received)
{
    const double start = threadSeconds();
    const std::size_t ready = waitForGrant(bytes);
    copyOut(static_cast<std::uint8_t *>(buffer), ready);
    sent += ready;
    *received = static_cast<DWORD>(ready);
    spend(threadSeconds() - start);
    return FT_OK;
}

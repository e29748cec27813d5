// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverSource.h"

#include "virtual_receiver.h"

#include <cstdio>

#include <thread>

ReceiverSource::ReceiverSource(const char *recording, double speed) : m_speed(speed)
{
    if (vr_scene_file(recording, "wav", 0.0, 0.0) != 0)
        std::fprintf(stderr, "%s\n", vr_last_error());
    vr_set_pace(VR_PACE_CREDIT);
    FT_Open(0, &m_handle);
}

void ReceiverSource::write(std::span<const std::uint8_t> data)
{
    DWORD taken = 0;
    FT_Write(m_handle, const_cast<std::uint8_t *>(data.data()), DWORD(data.size()), &taken);
}

std::size_t ReceiverSource::read(std::span<std::uint8_t> data, unsigned timeoutMs)
{
    vr_status state = {};
    vr_get_status(&state);
    const auto now = Clock::now();
    if (state.streaming) {
        const double rate = m_speed * state.sample_rate_hz;
        const auto samples =
            std::uint64_t(std::chrono::duration<double>(now - m_granted).count() * rate);
        vr_add_credit(samples);
        // Not now: the parts of samples that are left out add up.
        m_granted += std::chrono::duration_cast<Clock::duration>(
            std::chrono::duration<double>(double(samples) / rate));
    } else {
        m_granted = now;
    }
    DWORD got = 0;
    FT_SetTimeouts(m_handle, timeoutMs, timeoutMs);
    if (FT_Read(m_handle, data.data(), DWORD(data.size()), &got) != FT_OK)
        std::this_thread::sleep_for(std::chrono::milliseconds(timeoutMs)); // not a FIFO yet
    return got;
}

void ReceiverSource::setBitMode(std::uint8_t mask, std::uint8_t mode)
{
    FT_SetBitMode(m_handle, mask, mode);
}

void ReceiverSource::purge(bool in, bool out)
{
    FT_Purge(m_handle, (in ? FT_PURGE_RX : 0) | (out ? FT_PURGE_TX : 0));
}

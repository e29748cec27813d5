// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/IqListener.h"
#include "stream/StreamLedger.h"

#include "DspCore/types.h"
#include "host_interfaces/CreditPump.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <semaphore>
#include <thread>
#include <vector>

namespace host
{
class HostBridge;
} // namespace host

namespace soak
{
/// Keeps the stream of a virtual receiver going as fast as the engine takes it: grants it credit
/// and pulls the audio of all three outlets, on a thread of its own that the engine wakes.
///
/// Threads:
/// 1. Owner's: everything but pushIq().
/// 2. Sound: run().
/// 3. Engine: pushIq().
class SoakStream : public host::IqListener
{
public:
    /// Bridge and ledger outlive the stream. The receiver streams already and has sent nothing.
    SoakStream(double rateHz, host::HostBridge &bridge, host::StreamLedger &ledger);
    ~SoakStream() override;

    /// IQ samples that the engine has finished.
    std::uint64_t processed() const { return m_ledger.processedSamples(); }

    /// Grants no more, and waits until what is on its way has come through or nothing moves. Then
    /// sent samples that never came are known.
    void pause();
    void resume() { m_paused = false; }

    /// After pause(): IQ samples that were sent and not processed, beyond what rests in windows
    /// and blocks.
    static std::uint64_t dropped(const host::StreamLedger &ledger);

    /// Rate of the cable while it is open, 0: closed.
    void setCableRate(int hz) { m_cableRateHz = hz; }
    void setLineOutOpen(bool isOpen) { m_lineOutOpen = isOpen; }

    /// Audio samples so far that are no number, or on the sound card beyond full scale.
    std::size_t beyond() const { return m_beyond; }

    /// Begins to keep the left side of the next so many frames.
    void capture(std::size_t frames);
    bool isCaptured() const { return m_kept >= m_wanted; }
    const std::vector<COMPLEX> &captured() const { return m_audio; }

    void pushIq(const COMPLEX *block, int samples) override;

private:
    void run();
    void pullSoundCard();
    void pullOthers();
    void countBeyond(float limit); // of m_out
    void keep(std::size_t frames);

    host::HostBridge &m_bridge;
    host::StreamLedger &m_ledger;
    CreditPump m_pump;          // thread 2
    std::uint64_t m_unseen = 0; // samples since the last wake-up; thread 3
    std::counting_semaphore<> m_wake{0};
    std::atomic<std::size_t> m_beyond = 0;
    std::atomic<bool> m_paused = false;
    std::atomic<bool> m_ended = false;
    std::atomic<int> m_cableRateHz = 0;
    std::atomic<bool> m_lineOutOpen = false;
    std::uint64_t m_pulled = 0;      // frames, thread 2
    std::uint64_t m_otherPulled = 0; // frames of the sound card up to which the others were pulled
    std::vector<float> m_in;
    std::vector<float> m_out;

    std::atomic<std::size_t> m_wanted = 0; // frames to be kept
    std::atomic<std::size_t> m_kept = 0;
    std::vector<COMPLEX> m_audio; // written by 2 below m_wanted, read by 1 after
    std::thread m_thread;
};
} // namespace soak

// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoakStream.h"

#include "services/HostBridge.h"

#include "host_interfaces/EngineLimits.h"
#include "virtual_receiver/virtual_receiver.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace soak
{
namespace
{
using namespace std::chrono_literals;

// The engine wakes the sound thread so often: half of what is on its way at 192 kHz, an eighth of
// the input ring at higher rates.
constexpr std::uint64_t kWakeSamples = 16384;

constexpr auto kLook = 2ms; // without a wake-up
constexpr auto kStandstill = 500ms;
constexpr std::size_t kChannels = 2;
constexpr int kAudioRateHz = 48000;
constexpr float kFullScale = 1.0f;

std::uint64_t sent()
{
    vr_status status{};
    vr_get_status(&status);
    return status.samples_sent;
}
} // namespace

SoakStream::SoakStream(double rateHz, host::HostBridge &bridge, host::StreamLedger &ledger)
    : m_bridge(bridge), m_ledger(ledger),
      m_pump(rateHz, {vr_add_credit, sent}, [this](std::uint64_t frames, double share) {
          return double(m_ledger.waitingFrames() + frames)
              <= share * double(EngineLimits::kAudioRing);
      })
{
    m_thread = std::thread([this] { run(); });
}

SoakStream::~SoakStream()
{
    m_ended = true;
    m_wake.release();
    m_thread.join();
}

void SoakStream::pushIq(const COMPLEX *, int samples)
{
    m_unseen += std::uint64_t(samples);
    if (m_unseen < kWakeSamples)
        return;
    m_unseen = 0;
    m_wake.release();
}

void SoakStream::run()
{
    while (!m_ended) {
        if (m_wake.try_acquire_for(kLook))
            while (m_wake.try_acquire()) { }
        pullSoundCard();
        pullOthers();
        while (!m_paused && m_pump.grant(processed())) { }
        m_pump.nudge(processed(), false);
    }
}

void SoakStream::pullSoundCard()
{
    const std::size_t frames = m_ledger.readyFrames();
    if (frames == 0)
        return;
    m_bridge.soundOut()->pull(m_in, m_out, frames, kChannels);
    countBeyond(kFullScale);
    m_ledger.addPulled(frames);
    m_pulled += frames;
    keep(frames);
}

/// As much as has been made meanwhile; what is not there yet comes as silence.
void SoakStream::pullOthers()
{
    const std::uint64_t frames = m_pulled - m_otherPulled;
    if (frames < EngineLimits::kOutletChunk)
        return;
    m_otherPulled = m_pulled;
    const auto pull = [this](auto &outlet, std::uint64_t count) {
        outlet.pull(m_in, m_out, count, kChannels);
        countBeyond(std::numeric_limits<float>::max());
    };
    if (const int rate = m_cableRateHz)
        pull(m_bridge.vac(), frames * std::uint64_t(rate) / kAudioRateHz);
    if (m_lineOutOpen)
        pull(m_bridge.lineOut(), frames);
}

void SoakStream::countBeyond(float limit)
{
    m_beyond += std::size_t(std::count_if(
        m_out.begin(), m_out.end(), [limit](float value) { return !(std::abs(value) <= limit); }));
}

void SoakStream::keep(std::size_t frames)
{
    const std::size_t kept = m_kept;
    const std::size_t part = std::min(frames, m_wanted - std::min<std::size_t>(m_wanted, kept));
    if (part == 0)
        return; // the counts may just be set anew
    for (std::size_t i = 0; i < part; ++i)
        m_audio[kept + i] = {double(m_out[kChannels * i]), 0.0};
    m_kept = kept + part;
}

void SoakStream::capture(std::size_t frames)
{
    m_audio.resize(frames);
    m_kept = 0;
    m_wanted = frames;
}

void SoakStream::pause()
{
    m_paused = true;
    auto since = std::chrono::steady_clock::now();
    for (std::uint64_t before = 0; std::chrono::steady_clock::now() - since < kStandstill;) {
        if (sent() <= processed() + CreditPump::kLargestRest)
            return;
        if (processed() != before)
            since = std::chrono::steady_clock::now();
        before = processed();
        std::this_thread::sleep_for(kLook);
    }
}

std::uint64_t SoakStream::dropped(const host::StreamLedger &ledger)
{
    const std::uint64_t accounted = ledger.processedSamples() + CreditPump::kLargestRest;
    return sent() - std::min(sent(), accounted);
}
} // namespace soak

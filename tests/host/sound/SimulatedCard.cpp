// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SimulatedCard.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace test
{
namespace
{
constexpr double kBlockSeconds = 512.0 / 48000.0; // of the engine at its lowest rate
constexpr double kSendJitter = 0.01;
constexpr double kAskSeconds = 0.02;
constexpr double kAskJitter = 0.015;
constexpr std::uint64_t kAsksToLate = 50; // every so many the card's thread is held up
constexpr double kLateSeconds = 0.03;
constexpr double kFragmentSeconds = 0.01; // a card asks for multiples of it
} // namespace

SimulatedCard::SimulatedCard(const Setup &setup) : stream(setup.rateHz), m_setup(setup)
{
    stream.begin(setup.rateHz, setup.bufferSeconds);
}

void SimulatedCard::replug()
{
    stream.end();
    stream.begin(m_setup.rateHz, m_setup.bufferSeconds);
    m_queued = 0.0;
    m_isStarted = false;
}

void SimulatedCard::sendAhead(double seconds)
{
    const std::uint64_t before = m_sentFrames;
    for (double sent = 0.0; sent < seconds; sent += kBlockSeconds)
        send();
    const double ahead = double(m_sentFrames - before) / m_setup.rateHz;
    m_sentAhead += ahead;
    m_sendTime -= ahead;
}

void SimulatedCard::run(double seconds, bool isSending)
{
    m_isSending = isSending;
    const double end = m_now + seconds;
    while (m_now < end) {
        const bool isSend = m_sendTime < m_askTime;
        m_now = isSend ? m_sendTime : m_askTime;
        isSend ? send() : ask();
    }
}

void SimulatedCard::send()
{
    const auto frames = std::size_t(kBlockSeconds * m_setup.rateHz);
    m_block.resize(2 * frames);
    const double step = 2.0 * std::numbers::pi * m_setup.toneHz / m_setup.rateHz;
    for (std::size_t i = 0; i < frames; ++i)
        m_block[2 * i] = m_block[2 * i + 1] =
            m_setup.amplitude * float(std::sin(step * double(m_sentFrames + i)));
    if (m_isSending)
        stream.push(m_block.data(), frames);
    m_sentFrames += frames;
    const double late = std::uniform_real_distribution(0.0, kSendJitter)(m_random);
    m_sendTime = double(m_sentFrames + frames) / m_setup.rateHz - m_sentAhead + late;
}

void SimulatedCard::ask()
{
    const double cardHz = m_setup.rateHz * (1.0 + m_setup.drift);
    if (m_isStarted)
        m_queued -= (m_now - m_playedTime) * cardHz;
    m_playedTime = m_now;
    if (m_queued < 0.0) {
        ++m_cardGaps;
        m_queued = 0.0;
    }
    const double fragment = kFragmentSeconds * m_setup.rateHz;
    const double room = m_setup.bufferSeconds * m_setup.rateHz - m_queued;
    const auto frames = std::size_t(std::floor(room / fragment) * fragment);
    if (frames > 0) {
        m_block.resize(2 * frames);
        stream.render(m_block.data(), frames, m_queued / m_setup.rateHz);
        if (onPlayed)
            onPlayed(m_block.data(), frames);
        m_queued += double(frames);
        m_isStarted = true;
    }
    const double late = std::uniform_real_distribution(0.0, kAskJitter)(m_random);
    const double held = ++m_asks % kAsksToLate == 0 ? kLateSeconds : 0.0;
    m_askTime = double(m_asks) * kAskSeconds + late + held;
    m_askTime = std::max(m_askTime, m_now);
}
} // namespace test

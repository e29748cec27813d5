// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/SoundStream.h"

#include <cstdint>
#include <functional>
#include <random>
#include <vector>

namespace test
{
/// A receiver and a sound card with clocks of their own, both late now and then, joined by a
/// SoundStream; time is simulated.
class SimulatedCard
{
public:
    struct Setup
    {
        int rateHz = 48000;          // of source and card, each by its own clock
        double drift = 0.0;          // of the card's clock against the source's, share of 1
        double bufferSeconds = 0.08; // of the card
        double toneHz = 1000.0;
        float amplitude = 0.5f;
    };

    explicit SimulatedCard(const Setup &setup);

    /// Runs for so long. isSending: whether the source sends.
    void run(double seconds, bool isSending = true);

    host::SoundStream stream;

    /// Gets what the card plays.
    std::function<void(const float *, std::size_t frames)> onPlayed;

    /// Times that the card had nothing to play.
    std::uint64_t cardGaps() const { return m_cardGaps; }

    /// The source sends so much more at once.
    void sendAhead(double seconds);

    /// The source is held up for so long; what it has by then comes at once.
    void hold(double seconds) { m_sendTime += seconds; }

    /// The card goes, another comes.
    void replug();

private:
    void send();
    void ask();

    Setup m_setup;
    std::mt19937 m_random{1};
    double m_now = 0.0;        // seconds of the source's clock
    double m_sendTime = 0.0;   // of the next block
    double m_sentAhead = 0.0;  // seconds
    double m_askTime = 0.0;    // of the card's next look
    double m_playedTime = 0.0; // up to which m_queued is right
    double m_queued = 0.0;     // frames in the card
    std::uint64_t m_asks = 0;
    std::uint64_t m_sentFrames = 0;
    std::uint64_t m_cardGaps = 0;
    bool m_isStarted = false; // the card plays from its first full buffer on
    bool m_isSending = true;
    std::vector<float> m_block;
};
} // namespace test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundStream.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host
{
namespace
{
constexpr std::size_t kChannels = FrameSource::kChannels;
static_assert(sizeof(COMPLEX32) == kChannels * sizeof(float));

constexpr unsigned kRingFrames = 32768; // 0.7 s, above target and excess for any sound card

// From silence to full volume and back: too slow to click, too fast to be noticed.
constexpr double kFadeSeconds = 0.01;

// A source that is silent for longer was not late but off.
constexpr double kOffSeconds = 0.5;

// How long a surplus lasts that is none of a moment, and how long nothing is late on a machine that
// is not busy any more. Both arbitrary.
constexpr double kSureSeconds = 0.5;
constexpr double kCalmSeconds = 60.0;

// A longer reserve goes by so many seconds a second: half of what the loop may do to the pitch.
constexpr double kRelaxing = ClockLoop::kMostCorrection / 2.0;
} // namespace

SoundStream::SoundStream(int rateHz)
    : m_rateHz(rateHz), m_ring(kRingFrames),
      m_resampler([this](float *out, std::size_t frames) { return pull(out, frames); })
{ }

void SoundStream::push(const float *interleaved, std::size_t frames)
{
    if (!m_isOpen)
        return;
    const bool isKept = m_ring.write(reinterpret_cast<const COMPLEX32 *>(interleaved), int(frames));
    if (!isKept && m_seemsPlaying) // a card that is being opened takes its time
        m_lostFrames += frames;
}

std::size_t SoundStream::pull(float *interleaved, std::size_t frames)
{
    frames = std::min<std::size_t>(frames, m_ring.count());
    return m_ring.read(reinterpret_cast<COMPLEX32 *>(interleaved), int(frames)) ? frames : 0;
}

void SoundStream::begin(int cardHz, double cardSeconds)
{
    m_cardHz = cardHz;
    m_usualTarget = cardSeconds + kReserveSeconds;
    m_target = m_usualTarget + kStartSeconds;
    m_mostTarget = m_usualTarget + kMostGrowthSeconds;
    m_loop = ClockLoop();
    m_ring.clear();
    m_resampler.clear();
    m_isPlaying = m_isEnding = m_isLate = false;
    m_silence = 0.0;
    m_gain = 0.0f;
    m_isOpen = true;
}

double SoundStream::waitingSeconds(double queuedSeconds) const
{
    return double(m_ring.count() + m_resampler.waiting()) / m_rateHz + queuedSeconds;
}

/// Leaves out what waits beyond so many seconds.
void SoundStream::dropTo(double seconds, double queuedSeconds)
{
    const double surplus = waitingSeconds(queuedSeconds) - seconds;
    auto frames = std::size_t(std::max(0.0, surplus) * m_rateHz);
    std::array<float, 256 * kChannels> dropped;
    while (frames > 0) {
        const std::size_t got = pull(dropped.data(), std::min(frames, dropped.size() / kChannels));
        if (got == 0)
            break;
        frames -= got;
    }
}

void SoundStream::render(float *out, std::size_t frames, double queuedSeconds)
{
    if (!m_isPlaying)
        tryPlay(frames, queuedSeconds);
    const std::size_t made = m_isPlaying ? play(out, frames, waitingSeconds(queuedSeconds)) : 0;
    std::fill(out + made * kChannels, out + frames * kChannels, 0.0f);
    m_seemsPlaying = m_isPlaying;
    m_playedFrames += frames;
}

/// Begins when enough waits: more than before, if the source was late and not switched off. What it
/// owes for the silence it may send at once; then that waits from now on.
void SoundStream::tryPlay(std::size_t frames, double queuedSeconds)
{
    const bool wasLate = m_isLate && m_silence < kOffSeconds;
    m_silence += double(frames) / m_cardHz;
    const double waiting = waitingSeconds(queuedSeconds);
    if (waiting < std::min(m_target + (wasLate ? kGrowthSeconds : 0.0), m_mostTarget))
        return;
    m_gaps += wasLate;
    setReserve(wasLate ? waiting : m_target);
    m_silence = 0.0;
    m_isLate = false;
    m_resampler.clear(); // what it remembers was heard before
    dropTo(m_target, queuedSeconds);
    m_isPlaying = true;
}

/// Frames that are to be heard; fewer than asked for where it has faded to silence.
std::size_t SoundStream::play(float *out, std::size_t frames, double waiting)
{
    const double correction = m_loop.update(waiting, double(frames) / m_cardHz);
    m_delay = m_loop.waiting();
    m_aim = m_target;
    m_correction = correction;
    if (!m_isEnding)
        judge(frames, waiting);
    const std::size_t made =
        m_resampler.process(out, frames, double(m_cardHz) / (m_rateHz * (1.0 + correction)));
    const std::size_t heard = shape(out, made);
    if (heard < frames) { // begins anew when the right time waits
        m_isPlaying = m_isEnding = false;
        m_gain = 0.0f;
        if (m_isLate)
            m_ring.clear(); // a rest that nothing has followed
    }
    return heard;
}

/// It ends while there is still enough to fade out, or when far too much waits.
void SoundStream::judge(std::size_t frames, double waiting)
{
    constexpr double kFilterSeconds = 0.002; // that the resampler keeps to itself
    const double seconds = double(frames) / m_cardHz;
    if (waitingSeconds(0.0) < seconds + kFadeSeconds + kFilterSeconds)
        m_isEnding = m_isLate = true;
    else if (waiting > m_mostTarget + kMostExcessSeconds) {
        m_isEnding = true;
        ++m_skips;
    } else
        adaptReserve(seconds, waiting);
}

/// A surplus comes from a source or a card that was late. It is kept for the next time, which
/// nobody hears, and goes by and by when there is none. One look does not tell: a card that asks
/// late has played more than it says.
void SoundStream::adaptReserve(double seconds, double waiting)
{
    const bool isSurplus = waiting > m_target + kMostExcessSeconds;
    m_leastSurplus = isSurplus ? std::min(m_leastSurplus, waiting) : m_mostTarget;
    m_surplus = isSurplus ? m_surplus + seconds : 0.0;
    m_calm += seconds;
    if (m_surplus > kSureSeconds) {
        setReserve(m_leastSurplus);
    } else if (m_calm > kCalmSeconds && m_target > m_usualTarget) {
        m_target = std::max(m_target - kRelaxing * seconds, m_usualTarget);
        m_loop.setTarget(m_target);
    }
}

/// From now on so much waits, in ring and card.
void SoundStream::setReserve(double seconds)
{
    m_target = std::min(seconds, m_mostTarget);
    m_loop.restart(m_target);
    m_leastSurplus = m_mostTarget;
    m_surplus = m_calm = 0.0;
}

/// Gives the frames their volume. How many there are before the silence of an end.
std::size_t SoundStream::shape(float *out, std::size_t frames)
{
    const float step = float(1.0 / (kFadeSeconds * m_cardHz));
    const float target = m_isEnding || m_isMuted ? 0.0f : m_volume.load();
    for (std::size_t i = 0; i < frames; ++i) {
        m_gain += std::clamp(target - m_gain, -step, step);
        if (m_isEnding && m_gain == 0.0f)
            return i;
        for (std::size_t channel = 0; channel < kChannels; ++channel)
            out[i * kChannels + channel] *= m_gain;
    }
    return frames;
}

void SoundStream::end()
{
    m_isOpen = false;
    m_seemsPlaying = false;
}

void SoundStream::setVolume(double db)
{
    m_volume = db <= kSilenceDb ? 0.0f : float(std::pow(10.0, db / 20.0));
}

SoundStream::Status SoundStream::status() const
{
    return {m_seemsPlaying, m_delay, m_aim, m_correction, m_gaps, m_skips, m_lostFrames,
        m_playedFrames};
}
} // namespace host

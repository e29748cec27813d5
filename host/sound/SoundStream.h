// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/ClockLoop.h"
#include "sound/VariableResampler.h"
#include "stream/FrameSink.h"
#include "stream/FrameSource.h"

#include "DspCore/types.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <atomic>
#include <cstdint>

namespace host
{
/// The way from the receiver's clock to that of a sound card.
///
///     push() -> ring -> VariableResampler -> volume, fades -> render()
///                 └──── ClockLoop: ring + what waits in the sound card ───┘ ratio
///
/// What waits in the ring and in the sound card together is held at the buffer of the card plus
/// kReserve, whatever the clocks do; with its 100 ms that is a delay of 200 ms.
///
/// The reserve is longer while a program starts, and on a busy machine: what a source sends at once
/// that was late, or a card has not played that was, stays there, up to kMostGrowth, so that the
/// same again is no gap any more. When nothing is late it goes by and by. A surplus beyond it is
/// left out.
///
/// A source that stops is faded to silence; when enough has gathered it fades in again. The same
/// goes for a surplus that is left out. Volume and mute glide. So nothing clicks.
///
/// Threads:
/// 1. Source: push().
/// 2. Sound: begin(), render(), end().
/// 3. Any: setVolume(), setMuted(), status().
/// Nothing waits but for the ring's spin lock. Allocates at construction only.
class SoundStream : public FrameSink
{
public:
    /// Waits in the ring beside the sound card's own buffer: what the card asks for at once (25 ms)
    /// and the fade, in case that it is the last (12 ms), a block of the engine (10 ms), the pump's
    /// sleep (3 ms). That leaves 50 ms for a receiver or an engine that gets the processor late,
    /// which happens beside compilers.
    static constexpr double kReserveSeconds = 0.1;

    /// More than that to begin with: a program that starts comes from the disk, and sets up much.
    static constexpr double kStartSeconds = 0.1;

    /// Above the target for half a second; then the reserve grows by the surplus.
    static constexpr double kMostExcessSeconds = 0.06;

    /// By which the reserve grows with a gap at least, and in all at most.
    static constexpr double kGrowthSeconds = 0.03;
    static constexpr double kMostGrowthSeconds = 0.24;

    static constexpr double kSilenceDb = -60.0; ///< at and below it nothing is heard

    struct Status
    {
        bool isPlaying = false;       ///< audio goes out, not the silence of a source that stopped
        double delaySeconds = 0.0;    ///< that waits in ring and sound card, smoothed
        double aimSeconds = 0.0;      ///< that should wait there
        double correction = 0.0;      ///< how much faster than it comes it is played, share of 1
        std::uint64_t gaps = 0;       ///< times that the source was late, by half a second at most
        std::uint64_t skips = 0;      ///< times that a surplus was left out
        std::uint64_t lostFrames = 0; ///< refused by the ring of a card that stands still
        std::uint64_t playedFrames = 0; ///< at the sound card's rate, gaps included
    };

    /// rateHz of the source.
    explicit SoundStream(int rateHz = FrameSource::kRateHz);

    void push(const float *interleaved, std::size_t frames) override;

    /// A sound card of that rate, with a buffer of that length, plays from here on.
    void begin(int cardHz, double cardSeconds);

    /// Fills all of `out`. queuedSeconds: what the card has still to play before.
    void render(float *out, std::size_t frames, double queuedSeconds);

    /// No card plays any more: what comes is dropped.
    void end();

    /// 0 dB leaves the audio as it is.
    void setVolume(double db);
    void setMuted(bool muted) { m_isMuted = muted; }

    Status status() const;

private:
    double waitingSeconds(double queuedSeconds) const;
    void dropTo(double seconds, double queuedSeconds);
    std::size_t pull(float *interleaved, std::size_t frames);
    void tryPlay(std::size_t frames, double queuedSeconds);
    void judge(std::size_t frames, double waiting);
    void adaptReserve(double seconds, double waiting);
    void setReserve(double seconds);
    std::size_t play(float *out, std::size_t frames, double waiting);
    std::size_t shape(float *out, std::size_t frames);

    int m_rateHz;
    CircularBuffer<COMPLEX32> m_ring; // 1 to 2
    std::atomic<bool> m_isOpen = false;
    std::atomic<float> m_volume = 1.0f; // linear
    std::atomic<bool> m_isMuted = false;

    // The sound thread's.
    VariableResampler m_resampler;
    ClockLoop m_loop;
    int m_cardHz = FrameSource::kRateHz;
    double m_target = 0.0;       // seconds
    double m_usualTarget = 0.0;  // seconds
    double m_mostTarget = 0.0;   // seconds
    double m_surplus = 0.0;      // seconds for which too much has waited
    double m_leastSurplus = 0.0; // seconds that waited in that time
    double m_calm = 0.0;         // seconds since the reserve has grown
    bool m_isPlaying = false;
    bool m_isEnding = false; // plays, fading out
    bool m_isLate = false;   // ended, or ends, as the source had nothing in time
    double m_silence = 0.0;  // seconds since then
    float m_gain = 0.0f;

    // Written by 1 or 2.
    std::atomic<bool> m_seemsPlaying = false;
    std::atomic<double> m_delay = 0.0;
    std::atomic<double> m_aim = 0.0;
    std::atomic<double> m_correction = 0.0;
    std::atomic<std::uint64_t> m_gaps = 0;
    std::atomic<std::uint64_t> m_skips = 0;
    std::atomic<std::uint64_t> m_lostFrames = 0;
    std::atomic<std::uint64_t> m_playedFrames = 0;
};
} // namespace host

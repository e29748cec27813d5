// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace host
{
/// Finds out by how much a source of audio is faster than its sink, from the time for which what
/// waits between them would last.
///
///     waiting ─ two low-passes ─ minus target ─┬─ kProportional ─────────┐
///                                                   └─ kIntegral ─ integral ─ + ─ limit ─>
///                                                   correction
///
/// The waiting time w changes by the drift less the correction, w' = d - c, so a proportional and
/// integral controller makes a second-order loop, s^2 + kProportional s + kIntegral, here
/// critically damped with 50 s (F. M. Gardner, "Phaselock Techniques", type-2 loops). That is slow
/// enough that what reading in blocks makes of w moves the pitch by some millionths only: a step of
/// the drift of d is caught up with d * 50 s / e, 3.7 ms for 200 millionths.
///
/// One thread.
class ClockLoop
{
public:
    /// Largest correction, either way: 0.9 cents of pitch, a sixth of what the best ears tell apart
    /// (5 cents). Crystals of sound cards and receivers are off by 100 millionths at most.
    static constexpr double kMostCorrection = 500e-6;

    /// The time that waits has been put right, to this target: forgets it and keeps the drift that
    /// was learned.
    void restart(double targetSeconds);

    /// Another target, some milliseconds away at most or by and by: nothing is forgotten.
    void setTarget(double seconds) { m_target = seconds; }

    /// What waits now, and the time since the last call, both in seconds. Gives the correction:
    /// the audio is to be played so much faster than it comes, as a share of 1.
    double update(double waiting, double seconds);

    double correction() const { return m_correction; }

    /// What waits, smoothed, in seconds.
    double waiting() const { return m_smooth; }

private:
    double m_target = 0.0; // seconds
    bool m_isFresh = true;
    double m_rough = 0.0;    // seconds, after the first low-pass
    double m_smooth = 0.0;   // seconds
    double m_integral = 0.0; // share of 1
    double m_correction = 0.0;
};
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <array>

namespace DspCore
{
/// Hides a change of mode or of gain-control parameters behind a fade of the audio.
///
///     processing ──> decrease ──> switching ──> increase ──┐
///       │ ^             ^ any new change restarts here │   │
///       │ └────────────────────────────────────────────┼───┘
///       └──> passing ─────────────> switching ─────────┘
///
/// One step runs at the tail of each block. `decrease` fades both channels to -130 dB; once there
/// the clear flag asks the owner to empty its filters at the head of the next block, which still
/// runs in the old mode. `switching` at that block's tail makes the new mode current and starts the
/// fade-in. The fade counts samples, not milliseconds: it is 15 ms per time constant at 39062.5 Hz,
/// which takes a third of a second to silence, or short: straight, within 10 ms at 48 kHz. A new
/// switcher's gains are 0 though its audio passes, so its first fade begins with a step; not so a
/// short one.
///
/// `passing` is for audio that waits in a look-ahead: the mode changes at once, what is on its way
/// is heard to its end, and a short fade hides the joint when that comes out. So the time that the
/// look-ahead takes to fill is not silent.
///
/// Not thread-safe; the owner serialises.
class ModulationSwitcher
{
public:
    static constexpr int kShortSamples = 480; ///< of a short fade, down or up

    /// Short fades. Not during one.
    void setShort(bool isShort) { mShort = isShort; }

    /// Asks for a mode. Nothing happens if it is the one asked for last, even while its fade runs.
    void setModulation(Modulation modulation);

    /// The same while `waiting` samples (kShortSamples at least) of the mode before are still to
    /// come out. Short fades only, and not during one: isSteady().
    void setModulation(Modulation modulation, int waiting);

    /// Nothing is fading, and nothing waits for that.
    bool isSteady() const { return mStep == 0; }

    /// What comes out is of the mode before the present one.
    bool isPassing() const;

    /// The fade that runs is for another mode than the present one.
    bool isModeChange() const { return mRequested != mCurrent; }

    /// Starts the fade with the mode as it is. A fade that is already going down goes on, as does
    /// one that waits for a joint.
    void setAgcParam();

    /// The mode of the next block.
    Modulation modulation() const { return mCurrent; }

    /// The mode asked for last; another one than the present while its fade runs.
    Modulation requested() const { return mRequested; }

    /// True once per fade, after it has reached silence: time to clear what holds history.
    bool takeClear();

    /// Runs the current step over both channels, length 0..SIGNAL_MAX_SIZE samples each.
    void process(COMPLEX *a, COMPLEX *b, int length);

    /// Ends any fade at once: the mode asked for is current and the audio passes. The gains and
    /// the clear flag stay for the next fade.
    void clear();

private:
    struct Fade
    {
        Fade();
        void ramp(COMPLEX *buffer, int length);
        void rampStraight(COMPLEX *buffer, int length);
        bool arrived() const;

        double pole;
        double gain = 0.0;
        double target = 1.0;
    };
    using Step = void (ModulationSwitcher::*)(COMPLEX *, COMPLEX *, int);

    void processing(COMPLEX *a, COMPLEX *b, int length);
    void decrease(COMPLEX *a, COMPLEX *b, int length);
    void switching(COMPLEX *a, COMPLEX *b, int length);
    void increase(COMPLEX *a, COMPLEX *b, int length);
    void passing(COMPLEX *a, COMPLEX *b, int length);

    void fadeOut();
    void setTargets(double target);
    void ramp(COMPLEX *a, COMPLEX *b, int length);

    static const std::array<Step, 5> kSteps;

    bool mShort = false;
    bool mClear = false;
    unsigned mStep = 0; // index into kSteps
    int mWaiting = 0;   // samples until the joint comes out
    Modulation mRequested = Modulation::AM;
    Modulation mCurrent = Modulation::AM;
    Fade mFadeA;
    Fade mFadeB;
};
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace DspCore
{
/// Which dead ends of the receiver its owner wants to have mended. With none the receiver gives, to
/// the sample, what it always gave; each is told in docs/repairs.md.
struct ReceiverRepairs
{
    bool meter = false;   ///< a level that is no number does not stay
    bool agc = false;     ///< gain control that is set while nothing is heard holds at once
    bool numbers = false; ///< what is not finite does not stay in a loop
    bool ctcss = false;   ///< the tone squelch opens for its tone, at every rate
    bool pace = false;    ///< meter and level squelch go by time
    bool cable = false; ///< the virtual cable gets what the gain control has levelled, and wide FM
    bool fade = false;  ///< changes of mode and gain control mute for a moment only
    bool wfm = false;   ///< wide FM has its region, and mono stays mono
};
} // namespace DspCore

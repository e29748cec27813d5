// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Dial.h"
#include "radio/Switch.h"

#include <QString>

namespace host
{
/// What keys and knobs act on. Steps count up, or down below 0; lists are gone through round their
/// end. GUI thread.
class PanelTarget
{
public:
    virtual ~PanelTarget() = default;

    virtual void tune(int steps) = 0;
    virtual void turn(Dial dial, int steps) = 0;
    virtual void toggle(Switch id) = 0;

    virtual void setMode(Mode mode) = 0;
    virtual void stepMode(int steps) = 0;

    /// Counted from 0; one that is not there is left.
    virtual void chooseFilter(int filter) = 0;
    virtual void stepFilter(int steps) = 0;

    /// By its name in the device's list, in any case.
    virtual void goToBand(const QString &name) = 0;
    virtual void stepBand(int steps) = 0;

    /// The step of the dial.
    virtual void stepStep(int steps) = 0;

    virtual void toggleVfo() = 0;
    virtual void swapVfos() = 0;
    virtual void toggleSplit() = 0;
    virtual void toggleLock() = 0;
    virtual void togglePower() = 0;

    /// A keystroke for the program that has the desktop's focus, see SenderKeyToSystem.
    virtual void send(const QString &keys) = 0;
};
} // namespace host

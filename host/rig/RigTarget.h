// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Dial.h"
#include "radio/Switch.h"
#include "radio/Vfo.h"
#include "rig/RigError.h"

#include <QString>

#include <optional>

namespace host
{
/// What rig control acts on. Frequencies in hertz, levels in dBm and dB; whatever stays as it is
/// here is not available to clients. All on the thread of the server, which is the GUI thread.
class RigTarget
{
public:
    struct Limits
    {
        double low;
        double high;
        double step;
    };

    virtual ~RigTarget() = default;

    virtual QString deviceName() const = 0;
    virtual Limits frequencyLimits() const = 0;

    virtual bool isPowered() const = 0;
    virtual RigError setPowered(bool) { return RigError::NotAvailable; }

    virtual VfoId active() const { return VfoId::A; }
    virtual RigError setActive(VfoId id) { return onlyA(id); }
    virtual Vfo vfo(VfoId id) const = 0;

    /// Within frequencyLimits().
    virtual RigError setFrequency(VfoId id, double hertz) = 0;
    virtual RigError setMode(VfoId id, Mode mode) = 0;

    /// Width of the filter in use in a mode.
    virtual double passbandHz(Mode mode) const = 0;

    /// A width of 0 is the usual one of the mode.
    virtual RigError setPassband(Mode mode, double hertz) = 0;

    /// Both VFOs are heard.
    virtual bool isSplit() const { return false; }
    virtual RigError setSplit(bool on) { return on ? RigError::NotAvailable : RigError::None; }

    virtual RigError swapVfos() { return RigError::NotAvailable; }
    virtual RigError copyToOther() { return RigError::NotAvailable; }

    /// By so many steps of the dial.
    virtual RigError tune(int) { return RigError::NotAvailable; }
    virtual std::optional<int> stepHz() const { return {}; }
    virtual RigError setStep(int) { return RigError::NotAvailable; }

    /// In the filter of a VFO.
    virtual double signalDbm(VfoId id) const = 0;

    virtual std::optional<bool> isOn(Switch) const { return {}; }
    virtual RigError setOn(Switch, bool) { return RigError::NotAvailable; }
    virtual std::optional<double> value(Dial) const { return {}; }
    virtual Limits limits(Dial) const { return {}; }
    virtual RigError setValue(Dial, double) { return RigError::NotAvailable; }

    virtual std::optional<bool> isLocked() const { return {}; }
    virtual RigError setLocked(bool) { return RigError::NotAvailable; }

    /// Position in the device's list of gain controls: off, long, slow, medium, fast, user.
    virtual std::optional<int> agcMode() const { return {}; }
    virtual RigError setAgcMode(int) { return RigError::NotAvailable; }

protected:
    static RigError onlyA(VfoId id)
    {
        return id == VfoId::A ? RigError::None : RigError::NotAvailable;
    }
};
} // namespace host

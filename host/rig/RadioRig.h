// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigTarget.h"

namespace host
{
class Radio;

/// Rig control of the radio.
///
/// Programs that log and decode mean the carrier by a frequency, be it there or not: where the
/// audio's 0 Hz lies. In DIGL and DIGU the radio's own frequency is that of a pitch in the audio,
/// so the two differ, and a change of mode keeps the carrier. GUI thread.
class RadioRig : public RigTarget
{
public:
    /// radio is loaded and must outlive this.
    explicit RadioRig(Radio &radio) : m_radio(radio) { }

    QString deviceName() const override;
    Limits frequencyLimits() const override;
    bool isPowered() const override;
    RigError setPowered(bool on) override;
    VfoId active() const override;
    RigError setActive(VfoId id) override;
    Vfo vfo(VfoId id) const override;
    RigError setFrequency(VfoId id, double hertz) override;
    RigError setMode(VfoId id, Mode mode) override;
    double passbandHz(Mode mode) const override;

    /// Only of the mode that is heard; for another one nothing is done, which is no fault.
    RigError setPassband(Mode mode, double hertz) override;

    bool isSplit() const override;
    RigError setSplit(bool on) override;
    RigError swapVfos() override;
    RigError copyToOther() override;
    RigError tune(int steps) override;
    std::optional<int> stepHz() const override;
    RigError setStep(int hertz) override;
    double signalDbm(VfoId id) const override;
    std::optional<bool> isOn(Switch id) const override;
    RigError setOn(Switch id, bool on) override;
    std::optional<double> value(Dial id) const override;
    Limits limits(Dial id) const override;
    RigError setValue(Dial id, double value) override;
    std::optional<bool> isLocked() const override;
    RigError setLocked(bool locked) override;
    std::optional<int> agcMode() const override;
    RigError setAgcMode(int agc) override;

private:
    Radio &m_radio;
};
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/PluginReceiver.h"
#include "rig/RigTarget.h"
#include "settings/HostSettings.h"

namespace host
{
/// Rig control of a run without a window: frequency, mode, filter and meter of the one station that
/// is heard. A frequency is that of the carrier, as in RadioRig. Main thread.
class HeadlessRig : public RigTarget
{
public:
    /// receiver has been opened with the settings and must outlive this.
    HeadlessRig(PluginReceiver &receiver, const HostSettings &settings);

    QString deviceName() const override;
    Limits frequencyLimits() const override;
    bool isPowered() const override { return true; }
    Vfo vfo(VfoId id) const override;

    /// The receiver's centre follows where the filter would leave the sampled band.
    RigError setFrequency(VfoId id, double hertz) override;
    RigError setMode(VfoId id, Mode mode) override;
    double passbandHz(Mode mode) const override;
    RigError setPassband(Mode mode, double hertz) override;
    double signalDbm(VfoId id) const override;

private:
    double carrierHz() const;
    void tuneReceiver();

    PluginReceiver &m_receiver;
    double m_rateHz;
    double m_centerHz;
    double m_carrierHz; // on the air
    Mode m_mode;
    double m_filterLowHz;
    double m_filterHighHz;
    double m_diglOffsetHz; // pitches of the tuned frequency, as the device stores them
    double m_diguOffsetHz;
};
} // namespace host

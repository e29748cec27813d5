// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ToolSettings.h"

class DeviceAbstract;
class DeviceManagerAbstract;

namespace host
{
class SettingsStore;

/// Hands the settings of the tools to a device: their details as stored settings that hold for this
/// run only, their switches and levels by the host's calls. Main thread.
class ToolSetup
{
public:
    /// Both must outlive the set-up.
    ToolSetup(DeviceAbstract &device, DeviceManagerAbstract &manager)
        : m_device(device), m_manager(manager)
    { }

    /// Before the device reads its settings.
    static void overlay(const ToolSettings &settings, SettingsStore &store);

    /// Before the start and behind the settings, among them the sample rate, a change of which
    /// forgets the tuning and switches stereo on. centerHz is the receiver's frequency.
    void prepare(const ToolSettings &settings, double centerHz);

    /// Behind the start, which would cancel the fade at whose bottom the gain control changes.
    void begin(const ToolSettings &settings);

private:
    void setUpEffects(const ToolSettings &settings);
    void setUpSquelch(const ToolSettings &settings);
    void setUpChannels(const ToolSettings &settings, double centerHz);

    DeviceAbstract &m_device;
    DeviceManagerAbstract &m_manager;
};
} // namespace host

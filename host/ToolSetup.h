// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ToolSettings.h"

class ZephrinMDSP;

namespace host
{
/// Hands the settings of the tools to an engine. Main thread.
class ToolSetup
{
public:
    /// engine must outlive the set-up.
    explicit ToolSetup(ZephrinMDSP &engine) : m_engine(engine) { }

    /// Before the start and behind the sample rate, a change of which forgets the tuning and
    /// switches stereo on. centerHz is the receiver's frequency.
    void prepare(const ToolSettings &settings, double centerHz);

    /// Behind the start, which would cancel the fade at whose bottom the gain control changes.
    void begin(const ToolSettings &settings);

private:
    void setUpBlankers(const ToolSettings &settings);
    void setUpNr(const PredictorSettings &settings);
    void setUpAnf(const PredictorSettings &settings);
    void setUpEffects(const ToolSettings &settings);
    void setUpSquelch(const ToolSettings &settings);
    void setUpChannels(const ToolSettings &settings, double centerHz);

    ZephrinMDSP &m_engine;
};
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
// Each call of the device's library goes wrong in each way under the loaded plugin. It survives,
// says what it has to say, holds nobody up for longer than the call itself, leaves no thread, and
// when the fault is over there is a stream.
#include "CallFaults.h"
#include "ProcessTable.h"
#include "SessionProcess.h"

#include <gtest/gtest.h>

namespace
{
constexpr std::size_t kAtOnce = 8;

// What a call of the plugin may take: the read under way (0.2 s), the pause of a change of rate.
constexpr int kStatedMs = 400;
constexpr int kHangMs = 3000;
constexpr int kBusyMachineMs = 5000;

} // namespace

TEST(PluginCallTest, EveryFaultIsSurvivedAndToldAndEnds)
{
    const auto faults = callFaults(isWholeTableWanted());
    const auto sessions = resultsOf(faults, kAtOnce,
        [](const CallFault &fault) { return SessionProcess(FAULT_SESSION, fault.text); });
    for (std::size_t i = 0; i < faults.size(); ++i) {
        const CallFault &fault = faults[i];
        const SessionProcess &session = sessions[i];
        SCOPED_TRACE(qPrintable(fault.text + "\n" + session.output()));
        EXPECT_TRUE(session.hasEnded());
        EXPECT_EQ(session.status(), 0);
        EXPECT_GE(session.numberAfter("struck at call"), int(fault.call));
        EXPECT_LE(session.numberAfter("longest"),
            kStatedMs + kBusyMachineMs + (fault.hangs ? kHangMs : 0));
        EXPECT_EQ(session.output().contains("replugged"), fault.keepsHandle);
        EXPECT_EQ(session.output().contains("lost"), fault.ending == Ending::Lost);
        EXPECT_TRUE(!fault.warning || session.output().contains(fault.warning));
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include "host_interfaces/Repairs.h"

#include <gtest/gtest.h>

namespace
{
using test::PluginRig;

// By the gain control, whose "Off" ahead of the start is heard only if that is asked for: then a
// strong carrier is not levelled.
TEST(RepairsTest, ThePluginMendsWhatIsNamedAheadOfInitAndElseNothing)
{
    constexpr double kCentreHz = 7.1e6;
    constexpr double kToneHz = 1000.0;
    constexpr double kLevelledDb = -9.5; // at most; 20 dB more than 0.5 clip at -7
    constexpr unsigned kOff = 0;
    for (const QStringList &names : {QStringList{}, QStringList{"no such repair", "agc"}}) {
        PluginRig rig;
        if (!names.isEmpty())
            rig.device().setProperty(Repairs::kProperty, names);
        PluginRig::chooseCarriers({{kCentreHz + kToneHz, -3.0}});
        rig.prepare();
        rig.tune(kCentreHz, kCentreHz);
        rig.device().setAgcGain(0, 0, 20);
        rig.device().setAgcMode(0, 0, kOff);
        ASSERT_TRUE(rig.device().start());
        const auto audio = rig.listen(0.7);
        const double db = PluginRig::level({audio.end() - 9600, audio.end()}, kToneHz);
        EXPECT_EQ(db > kLevelledDb, names.contains("agc")) << db;
    }
}
} // namespace

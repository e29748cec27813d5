// SPDX-License-Identifier: GPL-3.0-or-later
// That a named repair arrives; what it does is tested at the block that it is in.
#include "EngineTest.h"

#include <cmath>

namespace
{
class EngineRepairsTest : public EngineTest
{
protected:
    void ask(const QStringList &names)
    {
        QStringList unknown;
        engine.setRepairs(Repairs::named(names, unknown));
        ASSERT_TRUE(unknown.isEmpty());
    }
};

TEST_F(EngineRepairsTest, TheMeterRestartsIfAskedFor)
{
    float dbm = 0.0f;
    sensors.onDbm = [&dbm](uint, uint, float value) { dbm = value; };
    for (const bool repaired : {false, true}) {
        ask(repaired ? QStringList("meter") : QStringList());
        start();
        play(std::vector<COMPLEX>(20 * kBlock, COMPLEX{0.0, 0.0}));
        playTone(4, 0.1);
        engine.close();
        EXPECT_EQ(std::isfinite(dbm), repaired);
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/StreamHealth.h"

#include <gtest/gtest.h>

namespace
{
constexpr std::uint64_t kPerLook = 7680; // 192 kHz, 25 looks a second
} // namespace

TEST(StreamHealthTest, CountsWhatNeverComesAndNotWhatIsLate)
{
    struct Case
    {
        const char *name;
        std::uint64_t late;     // samples on their way at each look but one in a second
        std::uint64_t gone;     // that never come
        std::uint64_t reported; // of those, as lost in reads
    };
    for (const Case &c :
        {Case{"nothing", 400, 0, 0}, Case{"a full ring now and then", 100000, 0, 0},
            Case{"refused by the ring", 400, 131072, 0}, Case{"lost in reads", 400, 8400, 8400},
            Case{"both", 400, 108400, 8400}}) {
        host::StreamHealth health;
        health.restart(1000, 900); // something was on its way when it began
        std::uint64_t sent = 1000, processed = 900, lost = 0;
        for (int look = 0; look < 100; ++look) {
            sent += kPerLook;
            if (look == 40) {
                lost = c.reported;
                processed -= c.gone;
            }
            processed += kPerLook;
            health.look(sent, processed - (look % 25 == 7 ? 0 : c.late), lost);
        }
        EXPECT_EQ(health.dropped(), c.gone - c.reported) << c.name;
        health.restart(sent, processed);
        for (int look = 0; look < 50; ++look)
            health.look(sent, processed, lost);
        EXPECT_EQ(health.dropped(), c.gone - c.reported) << c.name << ", after a restart";
    }
}

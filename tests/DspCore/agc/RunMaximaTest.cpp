// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/agc/RunMaxima.h"
#include "DspCore/agc/LargestPart.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace
{
// A ring shorter than a run, one of whole runs, one with a rest; blocks within a run, across runs,
// around the end and longer than the ring.
TEST(RunMaximaTest, AnswersAsAScanOfTheWholeRing)
{
    for (const std::size_t size : {1, 30, 128, 1440}) {
        std::vector<COMPLEX> ring(size, COMPLEX{0.0, 0.0});
        DspCore::RunMaxima maxima;
        maxima.reset(size);
        EXPECT_EQ(maxima.largest(), 0.0);
        const auto stream = test::noise(20000, 2);
        std::size_t write = 0;
        std::size_t at = 0;
        for (std::size_t round = 0; at + 2000 < stream.size(); ++round) {
            const std::size_t length = round % 20 == 19 ? 2000 : 1 + 37 * round % 150;
            const std::size_t first = write;
            for (std::size_t n = 0; n < length; ++n) {
                const double size = round % 7 == 0 ? 1.0 : 0.1; // peaks come and go
                ring[write] = {size * stream[at].re, size * stream[at].im};
                ++at;
                write = write + 1 < ring.size() ? write + 1 : 0;
            }
            maxima.update(ring.data(), ring.size(), first, length);
            ASSERT_EQ(maxima.largest(), DspCore::largestPart(ring.data(), ring.size())) << round;
        }
    }
}
} // namespace

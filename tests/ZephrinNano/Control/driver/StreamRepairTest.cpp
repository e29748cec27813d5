// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinNano/Control/driver/DriverTest.h"
#include "ZephrinNano/Control/driver/FrameStream.h"
#include "host_interfaces/Repairs.h"

#include <atomic>

namespace
{
constexpr int kPatienceMs = 2000;

class StreamRepairTest : public DriverTest, public testing::WithParamInterface<bool>
{
protected:
    StreamRepairTest()
    {
        QStringList unknown;
        driver.setRepairs(
            Repairs::named(isRepaired() ? QStringList("stream") : QStringList(), unknown));
    }

    static bool isRepaired() { return GetParam(); }
};

// A frame that has lost a byte of its marker is none. At 48 kHz a window is 8 frames; the last
// marker before 20 such frames ends at the front of a window with no other.
TEST_P(StreamRepairTest, AGapInTheMarkersLongerThanAWindowEndsTheStreamForGood)
{
    constexpr unsigned kFrames = 300;
    constexpr unsigned kGap = 100; // where it begins
    vr_set_pace(VR_PACE_CREDIT);
    vr_fault("lost-byte@100:0x20");
    open();
    ASSERT_TRUE(driver.startStream(HardwareZephrinNANO::Rate48000));
    vr_add_credit(kFrames * test::kFrameSamples);
    const auto arrived = [this](unsigned frames) {
        return engine->iqBuffer()->count() >= frames * test::kFrameSamples;
    };
    EXPECT_TRUE(wait(kPatienceMs, [&] { return arrived(kGap - 10); }));
    EXPECT_EQ(wait(isRepaired() ? kPatienceMs : 300, [&] { return arrived(kFrames - 50); }),
        isRepaired());

    // Reads of nothing succeed, so nobody notices.
    const auto before = device().reads;
    wait(100, [] { return false; });
    EXPECT_EQ(device().reads - before > 1000, !isRepaired()) << device().reads - before;
    EXPECT_TRUE(driver.isStartStream());
    EXPECT_TRUE(warnings().isEmpty());
    EXPECT_TRUE(driver.stopStream());
}

std::atomic<int> failuresTold;

TEST_P(StreamRepairTest, ADeviceThatFailsIsReadAndToldOfWithoutEnd)
{
    constexpr int kMs = 300;
    constexpr int kPauseMs = 10;
    open();
    ASSERT_TRUE(driver.startStream(HardwareZephrinNANO::Rate48000));
    ASSERT_TRUE(wait(kPatienceMs, [this] { return engine->iqBuffer()->count() > 0; }));
    failuresTold = 0;
    // Too many to collect.
    const auto collector = qInstallMessageHandler([](auto, auto &, const QString &text) {
        failuresTold += text.contains("failed to read IQ, error");
    });
    const auto before = device().reads;
    vr_set_plugged(0);
    wait(kMs, [] { return false; });
    const auto reads = device().reads - before;
    qInstallMessageHandler(collector);
    if (isRepaired()) {
        EXPECT_EQ(failuresTold, 1);
        EXPECT_LE(reads, kMs / kPauseMs + 20u); // and those before the unplugging
    } else {
        EXPECT_GT(failuresTold, 1000);
        EXPECT_GT(reads, 1000u);
    }
    EXPECT_TRUE(wait(3 * kPatienceMs, [this] { return !driver.isStartStream(); })); // as ever
}

INSTANTIATE_TEST_SUITE_P(
    , StreamRepairTest, testing::Bool(), [](const auto &row) { return row.param ? "On" : "Off"; });
} // namespace

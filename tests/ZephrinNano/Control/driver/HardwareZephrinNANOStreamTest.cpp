// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/AutoPreamp.h"
#include "ZephrinNano/Control/driver/DriverTest.h"
#include "ZephrinNano/Control/driver/FrameStream.h"

#include <QCoreApplication>

namespace
{
enum Code { State = 2 };
constexpr std::uint32_t kStreamOn = 0x00080000;

class DriverStreamTest : public DriverTest
{
protected:
    using SampleRate = HardwareZephrinNANO::SampleRate;

    /// Ticks AutoPreamp by hand; true if that reports overflow.
    static bool overflowed()
    {
        bool seen = false;
        QObject context;
        QObject::connect(
            AutoPreamp::instance(), &AutoPreamp::adcOverflow, &context, [&] { seen = true; });
        QMetaObject::invokeMethod(AutoPreamp::instance(), "onUpdate", Qt::DirectConnection);
        return seen;
    }

    std::size_t extract(std::vector<int8_t> block)
    {
        return driver.extractIQ(block, driver.findHeaders(block));
    }
};

TEST_F(DriverStreamTest, CodeSetsTheWindowAndIsLimited)
{
    open();
    const struct
    {
        int code;
        int sent;
        int window;
    } rows[] = {{-1, 0, 4096}, {4, 4, 4096}, {5, 5, 8192}, {12, 8, 32768}};
    for (const auto &row : rows) {
        ASSERT_TRUE(driver.startStream(SampleRate(row.code)));
        EXPECT_TRUE(driver.isStartStream() && driver.isRunning() && engine->hasThread());
        const QString sizes = QString("FT_SetUSBParameters(%1, %1)").arg(row.window);
        EXPECT_EQ(calls(),
            (QStringList{"FT_Purge(3)", sizes, "FT_SetTimeouts(200, 200)", "FT_Write(11)"}));
        EXPECT_EQ(sent(), (std::vector<Sent>{{State, kStreamOn | unsigned(row.sent)}}));
        EXPECT_FALSE(driver.startStream(SampleRate(0)));
        EXPECT_TRUE(calls().isEmpty());
        if (row.code == 12)
            driver.close(); // ends the stream first
        else
            EXPECT_TRUE(driver.stopStream());
        EXPECT_FALSE(driver.isStartStream() || driver.isRunning() || engine->hasThread());
        EXPECT_EQ(sent(), (std::vector<Sent>{{State, unsigned(row.sent)}}));
        calls();
    }
    ASSERT_TRUE(driver.open(0)); // begins with the window of the last stream
    EXPECT_TRUE(calls().contains("FT_SetUSBParameters(32768, 32768)"));
    EXPECT_TRUE(warnings().isEmpty()) << warnings().join("\n").toStdString();
}

// A read window is 8 frames here; the last one is still open when the device falls silent. A torn
// read costs the frames of its window and the one that is cut.
TEST_F(DriverStreamTest, SamplesReachTheEngineButForWhatAFaultCosts)
{
    constexpr unsigned kFrames = 480; // all fit into the engine's tap
    const struct
    {
        const char *faults;
        unsigned framesLost; // at most
    } rows[] = {{"none", 0}, {"lost-byte@5,added-byte@9", 2}, {"torn-read@3x2", 2 * 9}};
    vr_set_pace(VR_PACE_CREDIT);
    open();
    for (const auto &row : rows) {
        vr_fault(row.faults);
        ASSERT_TRUE(driver.startStream(SampleRate::Rate48000));
        vr_add_credit(kFrames * test::kFrameSamples);
        const unsigned expected = (kFrames - 8 - row.framesLost) * test::kFrameSamples - 512;
        EXPECT_TRUE(wait(2000, [&] { return engine->iqBuffer()->count() >= expected; }))
            << engine->iqBuffer()->count() << " of " << expected;
        EXPECT_TRUE(driver.stopStream());
    }
    EXPECT_TRUE(warnings().isEmpty());
}

TEST_F(DriverStreamTest, PeakGoesToAutoPreampUnlessItIsZero)
{
    overflowed();
    EXPECT_EQ(extract(test::frames(3, 0, 0x8001)), 512u);
    EXPECT_TRUE(overflowed());
    AutoPreamp::instance()->setAdcValue(0x8000);
    EXPECT_EQ(extract(test::frames(3, 0, 0)), 512u); // does not take the place of what waits
    EXPECT_TRUE(overflowed());
    EXPECT_EQ(
        extract(test::frames(1, 0, 0x8001)), 512u); // the tail's peak comes with the next read
    EXPECT_FALSE(overflowed());
    EXPECT_EQ(extract(std::vector<int8_t>(4096)), 0u); // no marker: the whole window is given up
}

TEST_F(DriverStreamTest, ReadErrorsAreNamedAndOnlyASecondOfNothingElseEndsTheStream)
{
    open();
    ASSERT_TRUE(driver.startStream(SampleRate::Rate48000));
    int overflows = 0;
    QObject::connect(
        AutoPreamp::instance(), &AutoPreamp::adcOverflow, &driver, [&] { ++overflows; });
    AutoPreamp::instance()->setAdcValue(0x8000);
    EXPECT_TRUE(wait(500, [&] { return overflows == 1; })); // it ticks with the stream
    vr_fault("read-error@1x3");
    ASSERT_TRUE(wait(500, [this] { return warnings().size() >= 3; }));
    EXPECT_TRUE(log.warned("virtual void HardwareZephrinNANO::run()  failed to read IQ, error 4"));
    EXPECT_TRUE(driver.isStartStream());

    // Then nothing but errors, millions of them: not collected.
    const auto quiet = qInstallMessageHandler([](auto, auto &, auto &) {});
    vr_set_plugged(0);
    EXPECT_TRUE(wait(2500, [this] { return !driver.isStartStream(); }));
    qInstallMessageHandler(quiet);
    EXPECT_TRUE(driver.isOpen());
    EXPECT_FALSE(driver.isRunning() || engine->hasThread());
}

TEST_F(DriverStreamTest, StopOfTheStreamBeforeDoesNotEndTheNextOne)
{
    open();
    ASSERT_TRUE(driver.startStream(SampleRate::Rate48000));
    emit driver.forceStop(); // on its way until the event loop turns
    EXPECT_TRUE(driver.stopStream() && driver.startStream(SampleRate::Rate48000));
    QCoreApplication::processEvents();
    EXPECT_TRUE(driver.isStartStream());
    emit driver.forceStop();
    QCoreApplication::processEvents();
    EXPECT_FALSE(driver.isStartStream());
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include <QCoreApplication>

#include <algorithm>
#include <future>

namespace
{
using namespace std::chrono_literals;

constexpr int kSize = 4096;
constexpr double kHzPerBin = 48000.0 / kSize;

class EngineSpectrumTest : public EngineTest
{
protected:
    EngineSpectrumTest()
    {
        QObject::connect(&engine, &ZephrinMDSP::spectrum, &receiver, [this](quint32 id) {
            EXPECT_EQ(id, 0u);
            ++frames;
        });
    }

    /// Plays a tone until the window holds nothing else and frames of it have been signalled.
    bool showTone(double hz)
    {
        playTone(kSize / kBlock, 0.1, hz);
        QCoreApplication::processEvents(); // frames from before are counted now
        // The frame of a job that is already posted, and one whose samples are all the tone's.
        const int due = frames + 3;
        const auto end = std::chrono::steady_clock::now() + 60s;
        while (frames < due && std::chrono::steady_clock::now() < end) {
            playTone(1, 0.1, hz);
            std::this_thread::sleep_for(2ms);
            QCoreApplication::processEvents();
        }
        return frames >= due;
    }

    static int peak(const std::vector<float> &line)
    {
        return int(std::max_element(line.begin(), line.end()) - line.begin());
    }

    QObject receiver;
    int frames = 0;
    std::vector<float> line;
    std::vector<float> waterfall;
};

/// A pool of one worker that is kept busy with its queue full until it is released.
class FullPool
{
public:
    FullPool()
    {
        m_pool.post([this] {
            m_entered.set_value();
            m_gate.get_future().wait();
        });
        m_entered.get_future().wait();
        for (int i = 1; i < kQueue; ++i)
            m_pool.post([] {});
        m_pool.post([this] { m_drained.set_value(); });
    }
    void release()
    {
        m_gate.set_value();
        m_drained.get_future().wait();
    }
    tp::ThreadPool &pool() { return m_pool; }

private:
    static constexpr int kQueue = 64; // more than a busy machine leaves waiting

    std::promise<void> m_entered;
    std::promise<void> m_gate;
    std::promise<void> m_drained;
    tp::ThreadPool m_pool{tp::ThreadPoolOptions{.workerCount = 1, .queueSize = kQueue}};
};
} // namespace

TEST_F(EngineSpectrumTest, AToneStandsAtItsBin)
{
    start();
    for (const int bin : {300, -1000}) {
        ASSERT_TRUE(showTone(bin * kHzPerBin));
        engine.readSpectrum(0, line, waterfall);
        ASSERT_EQ(line.size(), std::size_t(kSize));
        ASSERT_EQ(waterfall.size(), std::size_t(kSize));
        EXPECT_EQ(peak(line), kSize / 2 + bin);
        EXPECT_EQ(peak(waterfall), kSize / 2 + bin);
        EXPECT_NEAR(waterfall[std::size_t(kSize / 2 + bin)], -20.0, 0.1) << "amplitude 0.1";
    }
}

TEST_F(EngineSpectrumTest, SettingsReachThePanorama)
{
    engine.setHideSpectrumSlopes(true);
    engine.setSpectrumSize(1000); // a power of two from there on
    engine.setSpectrumUpdateTime(10);
    start();
    ASSERT_TRUE(showTone(-500 * kHzPerBin));
    engine.readSpectrum(0, line, waterfall);
    ASSERT_EQ(waterfall.size(), 1024u);
    // 43 of 48 kHz are stretched over the line; the interpolation blurs by a bin.
    EXPECT_NEAR(peak(waterfall), 512 - 125 * 48.0 / 43.0, 1.5);
}

TEST_F(EngineSpectrumTest, OnlyARunningEngineShowsLinesAndOnlyOfReceiver0)
{
    engine.readSpectrum(0, line, waterfall);
    EXPECT_TRUE(line.empty());
    start();
    engine.readSpectrum(1, line, waterfall);
    EXPECT_TRUE(line.empty());
    engine.readSpectrum(0, line, waterfall);
    EXPECT_EQ(line.size(), std::size_t(kSize));
    engine.close();
    line = {1.0f};
    engine.readSpectrum(0, line, waterfall);
    EXPECT_EQ(line, std::vector<float>{1.0f});
}

TEST(EngineFullPoolTest, ARefusedJobEndsTheThreadAndTheEngineStartsAgain)
{
    const auto previous = qInstallMessageHandler([](auto, auto &, auto &) {});
    test::TestBridge bridge;
    FullPool busy;
    ZephrinMDSP engine(busy.pool(), bridge, nullptr);
    test::TestSensors sensors;
    engine.setSensors(&sensors);
    test::TestIqServer iqServer;
    long begun = 0;
    iqServer.onWrite = [&](COMPLEX *, int) { ++begun; };
    engine.setIqServer(&iqServer);
    long heard = 0;
    bridge.sink.onWrite = [&](COMPLEX32 *, int) { ++heard; };
    auto samples = test::noise(512, 1);
    const auto playUntil = [&](auto condition) {
        const auto end = std::chrono::steady_clock::now() + 60s;
        while (!condition() && std::chrono::steady_clock::now() < end) {
            engine.processIQ(samples);
            std::this_thread::sleep_for(1ms);
        }
        return condition();
    };

    engine.open(vm::thread::jthread::Priority::Highest);
    ASSERT_TRUE(playUntil([&] { return engine.stopping(); })) << "by itself, when a frame is due";
    EXPECT_TRUE(engine.hasThread());
    engine.setSampleRate(48000.0); // hangs if the engine mutex was left locked
    engine.open(vm::thread::jthread::Priority::Highest);
    EXPECT_TRUE(engine.stopping()) << "no start before a close";
    EXPECT_EQ(bridge.sink.switches, std::vector<bool>{true});
    const long processed = sensors.blocks;
    engine.processIQ(samples);

    engine.close();
    EXPECT_EQ(sensors.blocks, processed);
    EXPECT_EQ(begun, processed + 1) << "ends after the server of the IQ stream";
    EXPECT_EQ(heard, processed) << "and ahead of the receiver";
    EXPECT_EQ(bridge.sink.switches, (std::vector<bool>{true, false}));
    busy.release();
    engine.open(vm::thread::jthread::Priority::Highest);
    EXPECT_TRUE(playUntil([&] { return sensors.blocks > processed + 50; }));
    EXPECT_FALSE(engine.stopping());
    engine.close();
    qInstallMessageHandler(previous);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpectrumRig.h"
#include "support/Signals.h"

#include <QElapsedTimer>
#include <QObject>

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <thread>

using DspCore::Spectrum;
using namespace std::chrono_literals;

namespace
{
/// Counts the frames that a spectrum signals. Lives longer than the spectrum and listens before the
/// first job is posted.
struct Frames
{
    void listen(Spectrum &spectrum)
    {
        QObject::connect(&spectrum, QOverload<unsigned int>::of(&Spectrum::spectrum),
            [this](unsigned int id) { count += id == kReceiver; });
    }
    static constexpr unsigned int kReceiver = 3;
    std::atomic<int> count = 0;
};

/// Feeds blocks for some time and counts the frames.
int framesIn(Spectrum &spectrum, const Frames &frames, int ms)
{
    const int before = frames.count;
    auto block = test::noise(64, /*seed*/ 1);
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < ms;) {
        spectrum.append(block.data(), int(block.size()));
        std::this_thread::sleep_for(200us);
    }
    std::this_thread::sleep_for(50ms); // the last job
    return frames.count - before;
}

TEST(SpectrumThreadsTest, FramesComeAtTheUpdateIntervalWithinItsLimits)
{
    constexpr int kMs = 400;
    Frames frames;
    tp::ThreadPool pool({.workerCount = 2, .queueSize = 64});
    Spectrum spectrum(pool, Frames::kReceiver, nullptr);
    frames.listen(spectrum);
    spectrum.open();
    // No machine makes more: a frame is due when more than the interval has passed. A busy one
    // makes fewer and may try again.
    struct
    {
        int interval, most, fewest;
    } const rows[] = {
        {5, kMs / 11 + 2, 26}, // limited to 10; 5 would give 67, the 16 it starts with 24
        {100, kMs / 41 + 2, 6} // limited to 40; 100 would give 4
    };
    for (const auto &row : rows) {
        spectrum.setUpdateInterval(row.interval);
        int count = 0;
        for (int tries = 0; tries < 8 && count < row.fewest; ++tries) {
            count = framesIn(spectrum, frames, kMs);
            ASSERT_LE(count, row.most) << row.interval;
        }
        EXPECT_GE(count, row.fewest) << row.interval;
    }
}

TEST(SpectrumThreadsTest, FullPoolThrowsAndTheSpectrumGoesOn)
{
    Frames frames;
    test::HeldPool held(/*queueSize*/ 2);
    Spectrum spectrum(held.pool(), Frames::kReceiver, nullptr);
    frames.listen(spectrum);
    spectrum.setUpdateInterval(10);
    spectrum.open();
    auto block = test::tone(512, 0.25);
    const auto appendOneFrame = [&] {
        std::this_thread::sleep_for(12ms);
        spectrum.append(block.data(), 512);
    };
    appendOneFrame();
    appendOneFrame();
    EXPECT_THROW(appendOneFrame(), std::runtime_error) << "no room in a queue of two";
    spectrum.append(block.data(), 512); // not due again: the refused frame restarted the interval
    held.letGo();
    for (int tries = 0; frames.count < 2 && tries < 500; ++tries)
        std::this_thread::sleep_for(10ms);
    EXPECT_EQ(frames.count, 2);
    EXPECT_GT(test::read(spectrum).spectrum[384], 0.0f);
}

/// A spectrum with one job in a pool that has not come to it.
std::unique_ptr<Spectrum> withAJob(tp::ThreadPool &pool)
{
    auto spectrum = std::make_unique<Spectrum>(pool, 0u, nullptr);
    spectrum->open();
    std::this_thread::sleep_for(20ms); // the first frame is due
    auto block = test::noise(512, /*seed*/ 1);
    spectrum->append(block.data(), 512);
    return spectrum;
}

TEST(SpectrumThreadsTest, ItsEndDoesNotWaitForAPoolThatStandsStill)
{
    test::HeldPool held;
    auto spectrum = withAJob(held.pool());
    auto gone = std::async(std::launch::async, [&spectrum] { spectrum.reset(); });
    const bool inTime = gone.wait_for(10s) == std::future_status::ready;
    EXPECT_FALSE(DspCore::PoolJobs::released(0ms)) << "the pool may still call into the code";
    held.letGo(); // the job finds nothing to work on
    ASSERT_TRUE(inTime);
    EXPECT_TRUE(DspCore::PoolJobs::released(10s));
}

TEST(SpectrumThreadsTest, ItsEndWaitsForAFrameInProgress)
{
    test::HeldPool held;
    auto spectrum = withAJob(held.pool());
    std::promise<void> begun;
    std::promise<void> end;
    QObject::connect(spectrum.get(), QOverload<>::of(&Spectrum::spectrum), [&] {
        begun.set_value();
        end.get_future().wait();
    });
    held.letGo();
    begun.get_future().wait();
    auto gone = std::async(std::launch::async, [&spectrum] { spectrum.reset(); });
    EXPECT_EQ(gone.wait_for(50ms), std::future_status::timeout);
    end.set_value();
    EXPECT_EQ(gone.wait_for(10s), std::future_status::ready);
}

TEST(SpectrumThreadsTest, FramesAtTheSameTimeDoNotMix)
{
    constexpr int kFramesEach = 200;
    test::HeldPool held;
    Spectrum spectrum(held.pool(), 0, nullptr);
    spectrum.setUpdateInterval(40);
    spectrum.setSize(1024);
    spectrum.open();
    const test::Lines alone = test::frameOf(spectrum, test::tone(1024, 0.25));
    std::vector<std::jthread> makers;
    for (int n = 0; n < 3; ++n)
        makers.emplace_back([&spectrum] {
            for (int frame = 0; frame < kFramesEach; ++frame)
                spectrum.makeFrame();
        });
    for (int n = 0; n < kFramesEach; ++n)
        ASSERT_EQ(test::read(spectrum).spectrum, alone.spectrum);
}
} // namespace

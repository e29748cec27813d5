// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/jthread.h"

#include <chrono>
#include <gtest/gtest.h>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>
#include <sstream>
#include <stdexcept>
#include <string>

using vm::thread::jthread;

namespace
{
constexpr auto kPriority = jthread::Priority::Highest;

class Recorder : public jthread
{
public:
    ~Recorder() override { close(); }

    void before() override { note('b', stopping()); }
    void after() override { note('a', stopping()); }
    void run() override
    {
        ++runs;
        runThread = std::this_thread::get_id();
        if (fail)
            throw std::runtime_error("no more");
    }

    // Until run() has been entered that often, or five seconds.
    bool waitForRuns(int wanted)
    {
        for (int i = 0; i < 5000 && runs < wanted; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return runs >= wanted;
    }

    std::string calls; // b before, a after; a capital while the stop flag is set
    std::atomic<int> runs = 0;
    std::atomic<std::thread::id> runThread;
    std::atomic<bool> fail = false;

private:
    void note(char call, bool stopped)
    {
        EXPECT_EQ(std::this_thread::get_id(), m_owner);
        calls += char(stopped ? std::toupper(call) : call);
    }

    const std::thread::id m_owner = std::this_thread::get_id();
};

TEST(jthreadTest, RunsOnceBetweenOpenAndCloseUntilItIsWoken)
{
    Recorder worker;
    EXPECT_TRUE(worker.stopping());
    worker.close(); // nothing to close, so no after()
    worker.open(kPriority);
    EXPECT_FALSE(worker.stopping());
    ASSERT_TRUE(worker.waitForRuns(1));
    EXPECT_NE(worker.runThread.load(), std::this_thread::get_id());
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(worker.runs, 1);
    for (int i = 0; i < 5000 && worker.runs < 2; ++i) { // an early wake-up may meet run() at work
        worker.wake();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_GE(worker.runs, 2);

    worker.close();
    EXPECT_TRUE(worker.stopping());
    EXPECT_FALSE(worker.hasThread());
    // before() ahead of the cleared flag, after() later than the set one.
    EXPECT_EQ(worker.calls, "BA");
}

TEST(jthreadTest, ClosingNeverMissesAThreadThatIsFallingAsleep)
{
    Recorder worker;
    for (int i = 0; i < 3000; ++i) {
        worker.open(kPriority);
        for (int spin = 0; spin < i % 200; ++spin) // another point of the loop each time
            worker.stopping();
        worker.close();
    }
    EXPECT_EQ(worker.calls.size(), 6000u);
}

TEST(jthreadTest, ExceptionEndsTheThreadWithOneLineAndLeavesTheHandle)
{
    std::ostringstream log;
    const auto logger =
        std::make_shared<spdlog::logger>("", std::make_shared<spdlog::sinks::ostream_sink_mt>(log));
    const auto previous = spdlog::default_logger();
    spdlog::set_default_logger(logger);
    logger->set_pattern("%l %v");

    Recorder worker;
    worker.fail = true;
    worker.open(kPriority);
    while (!worker.stopping()) // set by the thread that ends
        std::this_thread::yield();
    worker.open(kPriority); // the handle is still there
    EXPECT_TRUE(worker.stopping());
    EXPECT_TRUE(worker.hasThread());
    EXPECT_EQ(worker.runs, 1);
    worker.close();
    EXPECT_EQ(log.str(), "info void vm::thread::jthread::exec(vm::thread::jthread::token *)113\n");
    spdlog::set_default_logger(previous);

    worker.fail = false;
    worker.open(kPriority);
    EXPECT_TRUE(worker.waitForRuns(2));
}
} // namespace

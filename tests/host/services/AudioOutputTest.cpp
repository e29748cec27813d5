// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostBridge.h"

#include <gtest/gtest.h>
#include <thread>

namespace
{
using Samples = std::vector<float>;
} // namespace

TEST(HostSoundOutTest, NothingRunsInACallbackThatWasTakenAway)
{
    constexpr int kRounds = 200;
    host::HostSoundOut output;
    std::atomic<bool> end = false;
    std::atomic<long> pulled = 0;
    std::thread puller([&] { // an audio thread that asks again at once
        Samples in, out;
        while (!end)
            pulled += output.pull(in, out, 16, 2);
    });
    for (int i = 0; i < kRounds; ++i) {
        // Plain memory of the callback's owner: the thread sanitizer sees who still touches it.
        auto owner = std::make_unique<int>(0);
        std::atomic<int> inside = 0;
        output.setAudioCallback([&inside, counter = owner.get()](auto &, Samples &out, auto, auto) {
            ++inside;
            *counter += int(out.size());
            std::this_thread::yield();
            --inside;
            return true;
        });
        for (const long before = pulled; pulled == before;)
            std::this_thread::yield();
        output.setAudioCallback({});
        EXPECT_EQ(inside, 0);
        EXPECT_EQ(*owner % 32, 0); // 16 stereo frames each time
    }
    end = true;
    puller.join();
}

TEST(HostVacTest, TellsOfEachOpeningWithItsRateAndGivesAudioOnlyBetween)
{
    host::HostVac vac;
    vac.setAudioCallback([](auto &, auto &, auto, auto) { return true; });
    QStringList story;
    QObject::connect(&vac, &VacAbstract::opened, &vac,
        [&] { story << QString::number(vac.audioParams().sampleRate); });
    QObject::connect(&vac, &VacAbstract::closed, &vac, [&] { story << "closed"; });
    Samples in, out;

    EXPECT_FALSE(vac.open(0));
    EXPECT_FALSE(vac.pull(in, out, 8, 2));
    EXPECT_TRUE(vac.open(48000));
    EXPECT_TRUE(vac.open(48000));
    EXPECT_TRUE(vac.pull(in, out, 8, 2));
    EXPECT_TRUE(vac.open(44100));
    vac.close();
    vac.close();
    EXPECT_FALSE(vac.pull(in, out, 8, 2));
    EXPECT_EQ(story, (QStringList{"48000", "closed", "44100", "closed"}));
}

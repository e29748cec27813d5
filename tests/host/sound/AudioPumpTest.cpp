// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/AudioPump.h"

#include <gtest/gtest.h>

namespace
{
using namespace std::chrono_literals;
using host::AudioPump;

/// Gives frames of one value, a few at a time.
struct Source : host::FrameSource
{
    Source(float value, std::size_t frames) : value(value), left(frames) { }

    std::size_t pull(float *interleaved, std::size_t frames) override
    {
        frames = std::min({frames, left.load(), std::size_t(100)});
        std::fill_n(interleaved, 2 * frames, value);
        left -= frames;
        return frames;
    }

    float value;
    std::atomic<std::size_t> left;
};

struct Sink : host::FrameSink
{
    void push(const float *interleaved, std::size_t count) override
    {
        value = interleaved[0];
        frames += count;
    }

    std::atomic<float> value = 0.0f;
    std::atomic<std::size_t> frames = 0;
};

template <typename Condition>
bool becomes(Condition condition)
{
    for (int i = 0; i < 5000 && !condition(); ++i)
        std::this_thread::sleep_for(1ms);
    return condition();
}

TEST(AudioPumpTest, HandsEveryFrameToEachSinkThatIsThere)
{
    Source receiver(0.5f, 3000), recording(0.25f, 2000);
    Sink card, file;
    AudioPump pump(receiver);
    EXPECT_TRUE(becomes([&] { return receiver.left == 0; })); // drained though nobody listens

    pump.add(card);
    pump.add(file);
    receiver.left = 1000;
    EXPECT_TRUE(becomes([&] { return card.frames == 1000 && file.frames == 1000; }));

    pump.remove(file);
    pump.play(&recording);
    receiver.left = 500; // drained, not heard
    EXPECT_TRUE(becomes([&] { return card.frames == 3000 && receiver.left == 0; }));
    EXPECT_EQ(card.value, 0.25f);
    EXPECT_EQ(file.frames, 1000u);
}
} // namespace

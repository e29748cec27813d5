// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundStream.h"

#include "sound/SimulatedCard.h"
#include "support/Signals.h"

#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Window64.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <numbers>

namespace
{
using host::ClockLoop;
using host::SoundStream;
using test::SimulatedCard;

constexpr double kToneHz = 1000.0;
constexpr float kAmplitude = 0.5f;

/// What a steady tone leaves of itself in y[n+1] - 2 cos(w) y[n] + y[n-1]: nothing. A step of the
/// wave or of its slope leaves its height, a pitch that is off by the largest correction 2e-5.
class ToneWatch
{
public:
    explicit ToneWatch(double rateHz)
        : m_turn(2.0 * std::cos(2.0 * std::numbers::pi * kToneHz / rateHz))
    { }

    void add(const float *stereo, std::size_t frames)
    {
        for (std::size_t i = 0; i < frames; ++i) {
            const double next = stereo[2 * i];
            if (++m_seen > 2)
                largest = std::max(largest, std::abs(next - m_turn * m_now + m_before));
            peak = std::max(peak, std::abs(next));
            m_before = m_now;
            m_now = next;
        }
    }

    double largest = 0.0;
    double peak = 0.0;

private:
    std::uint64_t m_seen = 0;
    double m_turn;
    double m_now = 0.0;
    double m_before = 0.0;
};

struct Drift
{
    const char *name;
    double share; // of the card's clock against the receiver's
    int rateHz;   // a low one makes a long time short
    double seconds;
};

class DriftTest : public testing::TestWithParam<Drift>
{ };

// With a card that looks in every 20 to 65 ms and blocks that come up to 10 ms late.
TEST_P(DriftTest, PlaysWithoutGapOrClickAndHoldsTheDelay)
{
    constexpr double kSettled = 900.0;   // seconds: the longer start, then 8 times the loop's 50
    constexpr double kMostAway = 0.015;  // seconds from the target, asked blocks included
    constexpr double kMostWander = 4e-6; // of the correction about the drift, on the average
    constexpr double kNoise = 2e-5;      // of full scale: the resampler's, 88 dB below the tone
    const double share = GetParam().share;
    const int rateHz = GetParam().rateHz;

    SimulatedCard card({.rateHz = rateHz, .drift = share, .amplitude = kAmplitude});
    card.run(1.0); // gathered and faded in
    ToneWatch tone(rateHz);
    double away = 0.0, largest = 0.0, squares = 0.0, sum = 0.0, settled = 0.0;
    card.onPlayed = [&](const float *out, std::size_t frames) {
        tone.add(out, frames);
        const auto status = card.stream.status();
        away = std::max(away, std::abs(status.delaySeconds - status.aimSeconds));
        largest = std::max(largest, std::abs(status.correction));
        if (double(status.playedFrames) < kSettled * rateHz)
            return;
        const double wander = status.correction + share / (1.0 + share);
        sum += wander;
        squares += wander * wander;
        settled += 1.0;
    };
    card.run(GetParam().seconds);

    const auto status = card.stream.status();
    EXPECT_EQ(status.gaps + status.skips + status.lostFrames, 0u);
    EXPECT_EQ(card.cardGaps(), 0u);
    const double turn = 2.0 * std::numbers::pi * kToneHz / rateHz;
    const double bend = kAmplitude * 2.0 * std::sin(turn) * turn * ClockLoop::kMostCorrection;
    EXPECT_LT(tone.largest, bend + kNoise);
    EXPECT_LT(away, kMostAway);
    if (settled > 0.0) {
        EXPECT_LT(std::abs(sum / settled), kMostWander);
        EXPECT_EQ(status.aimSeconds, 0.08 + SoundStream::kReserveSeconds);
    }
    std::printf("largest correction %.1f, wander %.2f rms, millionths; delay within %.2f ms; "
                "residual %.1e\n",
        largest * 1e6, std::sqrt(squares / std::max(settled, 1.0)) * 1e6, away * 1e3, tone.largest);
}

INSTANTIATE_TEST_SUITE_P(Clocks, DriftTest,
    testing::Values(Drift{"hour_fast", 200e-6, 8000, 3600.0}, Drift{"slow", -200e-6, 8000, 1500.0},
        Drift{"full_rate", 200e-6, 48000, 150.0}),
    [](const auto &info) { return info.param.name; });

/// The loudest component outside of a band around the tone, relative to the tone.
double loudestSideDb(std::vector<COMPLEX> samples, double rateHz, double bandHz)
{
    const int length = int(samples.size());
    std::vector<double> window(samples.size());
    DspCore::Window64::calc(window.data(), length, DspCore::Window::BlackmanHarris);
    for (int i = 0; i < length; ++i)
        samples[std::size_t(i)].re *= window[std::size_t(i)];
    DspCore::FFT64 fft;
    fft.init(length);
    fft.process(samples.data(), length, DspCore::FftType::Forward);
    double inside = 0.0, outside = 0.0;
    for (int bin = 1; bin < length / 2; ++bin) {
        const double magnitude = test::magnitude(samples[std::size_t(bin)]);
        const bool isTone = std::abs(bin * rateHz / length - kToneHz) < bandHz;
        double &largest = isTone ? inside : outside;
        largest = std::max(largest, magnitude);
    }
    return test::decibels(outside / inside);
}

// In the first minute, when the loop has 200 millionths to learn, and while the reserve goes.
TEST(SoundStreamTest, LeavesNoSideLinesBesideATone)
{
    constexpr double kBandHz = 5.0;          // the window's own lobe is 1.5 Hz wide
    constexpr double kSideDb = -90.0;        // quieter than what 16 bits can hold
    constexpr std::size_t kLength = 1 << 17; // 2.7 s
    SimulatedCard card({.drift = 200e-6, .amplitude = kAmplitude});
    for (const double wait : {2.0, 30.0, 100.0}) {
        card.onPlayed = nullptr;
        card.run(wait);
        std::vector<COMPLEX> played;
        card.onPlayed = [&](const float *out, std::size_t frames) {
            for (std::size_t i = 0; i < frames && played.size() < kLength; ++i)
                played.push_back({out[2 * i], 0.0});
        };
        card.run(3.0);
        ASSERT_EQ(played.size(), kLength);
        const double side = loudestSideDb(played, 48000.0, kBandHz);
        EXPECT_LT(side, kSideDb);
        std::printf("after %g s: %.1f dB\n", wait, side);
    }
}

// Each in a word about what happens to a tone that plays; none of it makes a step.
TEST(SoundStreamTest, FadesWhateverHappens)
{
    constexpr double kSmooth = 0.011; // a step of the fade, 0.5 / 480, times that of the wave
    const struct
    {
        const char *name;
        std::function<void(SimulatedCard &)> act;
        double peak; // what is heard half a second later
        std::uint64_t gaps, skips;
    } cases[] = {
        {"mute", [](SimulatedCard &card) { card.stream.setMuted(true); }, 0.0, 0, 0},
        {"quieter", [](SimulatedCard &card) { card.stream.setVolume(-20.0); }, 0.05, 0, 0},
        {"silent", [](SimulatedCard &card) { card.stream.setVolume(-60.0); }, 0.0, 0, 0},
        {"source stops", [](SimulatedCard &card) { card.run(1.0, false); }, 0.0, 0, 0},
        {"source is late",
            [](SimulatedCard &card) {
                card.run(0.3, false);
                card.run(0.5);
            },
            0.5, 1, 0},
        {"source comes back",
            [](SimulatedCard &card) {
                card.run(1.0, false);
                card.run(0.5);
            },
            0.5, 0, 0},
        {"source sends too much",
            [](SimulatedCard &card) {
                card.sendAhead(0.12);
                card.run(1.0);
            },
            0.5, 0, 0},
        {"source sends far too much",
            [](SimulatedCard &card) {
                card.sendAhead(0.4);
                card.run(1.0);
            },
            0.5, 0, 1},
        {"another card",
            [](SimulatedCard &card) {
                card.replug();
                card.run(0.5);
            },
            0.5, 0, 0},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.name);
        const bool isSending = std::string(row.name) != "source stops";
        SimulatedCard card({.amplitude = kAmplitude});
        card.run(2.0);
        ToneWatch tone(48000.0);
        card.onPlayed = [&](const float *out, std::size_t frames) { tone.add(out, frames); };
        row.act(card);
        const auto status = card.stream.status();
        EXPECT_EQ(status.gaps, row.gaps);
        EXPECT_EQ(status.skips, row.skips);
        card.run(0.5, isSending);
        ToneWatch later(48000.0);
        card.onPlayed = [&](const float *out, std::size_t frames) {
            tone.add(out, frames);
            later.add(out, frames);
        };
        card.run(0.5, isSending);
        EXPECT_NEAR(later.peak, row.peak, 0.002);
        EXPECT_LT(tone.largest, kSmooth);
    }
}

// Who gets the processor late sends at once what it owes.
TEST(SoundStreamTest, GetsOverASourceThatIsLateAgainAndAgain)
{
    const struct
    {
        double late; // seconds
        std::uint64_t mostGaps;
    } cases[] = {{0.05, 0}, {0.15, 0}, {0.25, 2}};
    for (const auto &row : cases) {
        SCOPED_TRACE(row.late);
        SimulatedCard card({.amplitude = kAmplitude});
        card.run(0.5);
        EXPECT_TRUE(card.stream.status().isPlaying);
        for (int round = 0; round < 12; ++round) {
            card.hold(row.late);
            card.run(2.0);
        }
        EXPECT_LE(card.stream.status().gaps, row.mostGaps);
        EXPECT_EQ(card.stream.status().skips, 0u);
        EXPECT_LT(card.stream.status().delaySeconds,
            0.08 + SoundStream::kReserveSeconds + SoundStream::kMostGrowthSeconds);
    }
}

TEST(SoundStreamTest, ALongerReserveGoesWhenTheMachineIsQuiet)
{
    constexpr double kUsual = 0.08 + SoundStream::kReserveSeconds;
    SimulatedCard card({.rateHz = 8000, .drift = 200e-6, .amplitude = kAmplitude});
    card.run(1.0);
    card.sendAhead(0.12);
    card.run(30.0);
    EXPECT_NEAR(
        card.stream.status().delaySeconds, kUsual + 0.12 + SoundStream::kStartSeconds, 0.02);
    ToneWatch tone(8000.0);
    card.onPlayed = [&](const float *out, std::size_t frames) { tone.add(out, frames); };
    card.run(1200.0); // 220 ms by 250 millionths are 880 s
    EXPECT_NEAR(card.stream.status().delaySeconds, kUsual, 0.01);
    EXPECT_EQ(card.stream.status().gaps + card.stream.status().skips, 0u);
    EXPECT_LT(tone.largest, 1e-3);
}
} // namespace

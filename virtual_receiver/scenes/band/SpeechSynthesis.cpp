// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpeechSynthesis.h"

#include "AudioClip.h"

#include <cmath>
#include <numbers>
#include <random>

namespace vr
{
namespace
{
constexpr double kFormantsHz[][3] = {
    {730, 1090, 2440},
    {530, 1840, 2480},
    {270, 2290, 3010},
    {570, 840, 2410},
    {300, 870, 2240},
};
constexpr double kBandwidthsHz[3] = {80, 100, 140};
constexpr int kSyllables = 14;

/// A two-pole resonance of unity gain at its centre, nearly.
struct Resonance
{
    double y1 = 0.0;
    double y2 = 0.0;

    double process(double x, double frequencyHz, double bandwidthHz)
    {
        const double r = std::exp(-std::numbers::pi * bandwidthHz / kAudioRateHz);
        const double c = 2.0 * r * std::cos(2.0 * std::numbers::pi * frequencyHz / kAudioRateHz);
        const double y = (1.0 - r) * x + c * y1 - r * r * y2;
        y2 = y1;
        y1 = y;
        return y;
    }
};
} // namespace

std::vector<float> synthesiseSpeech(unsigned seed)
{
    std::minstd_rand random(seed + 1);
    const auto between = [&random](double low, double high) {
        return low + (high - low) * double(random()) / double(std::minstd_rand::max());
    };
    const double pitchHz = between(95.0, 180.0);
    std::vector<float> out;
    Resonance resonances[3];
    double phase = 0.0;
    for (int syllable = 0; syllable < kSyllables; ++syllable) {
        const auto &formants = kFormantsHz[random() % std::size(kFormantsHz)];
        const auto length = std::size_t(between(0.12, 0.26) * kAudioRateHz);
        const auto gap = std::size_t(between(0.02, 0.09) * kAudioRateHz);
        const double stressed = pitchHz * between(0.9, 1.2);
        for (std::size_t i = 0; i < length + gap; ++i) {
            const double progress = std::min(1.0, double(i) / double(length));
            const double loudness = std::sin(std::numbers::pi * progress);
            phase += stressed * (1.1 - 0.2 * progress) / kAudioRateHz;
            const bool pulse = phase >= 1.0;
            phase -= pulse ? 1.0 : 0.0;
            double voice = 0.0;
            for (int k = 0; k < 3; ++k)
                voice +=
                    resonances[k].process(pulse ? loudness : 0.0, formants[k], kBandwidthsHz[k])
                    / (1 + k);
            out.push_back(float(voice));
        }
    }
    return out;
}
} // namespace vr

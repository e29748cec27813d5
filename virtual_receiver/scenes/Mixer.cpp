// SPDX-License-Identifier: GPL-3.0-or-later
#include "Mixer.h"

#include "processor/Clones.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vr
{
namespace
{
constexpr std::size_t kLanes = 8;
// The tone is advanced by multiplication inside a chunk only; each chunk starts from an exact sine.
constexpr std::size_t kChunk = 512;
constexpr double kTwoPi = 2.0 * std::numbers::pi;

struct Tone
{
    double re[kChunk];
    double im[kChunk];
};

PROCESSOR_CLONES void makeTone(double phase, double frequency, std::size_t count, Tone &tone)
{
    double re[kLanes];
    double im[kLanes];
    for (std::size_t k = 0; k < kLanes; ++k) {
        re[k] = std::cos(kTwoPi * (phase + double(k) * frequency));
        im[k] = std::sin(kTwoPi * (phase + double(k) * frequency));
    }
    const double stepRe = std::cos(kTwoPi * kLanes * frequency);
    const double stepIm = std::sin(kTwoPi * kLanes * frequency);
    for (std::size_t i = 0; i < count; i += kLanes) {
        for (std::size_t k = 0; k < kLanes; ++k) {
            tone.re[i + k] = re[k];
            tone.im[i + k] = im[k];
            const double next = re[k] * stepRe - im[k] * stepIm;
            im[k] = re[k] * stepIm + im[k] * stepRe;
            re[k] = next;
        }
    }
}
} // namespace

template <typename Combine>
void Mixer::run(std::size_t count, Combine combine)
{
    Tone tone;
    for (std::size_t done = 0; done < count; done += kChunk) {
        const std::size_t part = std::min(kChunk, count - done);
        makeTone(m_phase, m_frequency, part, tone);
        for (std::size_t i = 0; i < part; ++i)
            combine(done + i, tone.re[i], tone.im[i]);
        m_phase = std::fmod(m_phase + double(part) * m_frequency, 1.0);
    }
}

void Mixer::process(Sample *samples, std::size_t count)
{
    auto *x = reinterpret_cast<double *>(samples);
    run(count, [x](std::size_t i, double re, double im) {
        const double real = x[2 * i] * re - x[2 * i + 1] * im;
        x[2 * i + 1] = x[2 * i] * im + x[2 * i + 1] * re;
        x[2 * i] = real;
    });
}

void Mixer::add(const Sample *samples, Sample *out, std::size_t count)
{
    const auto *x = reinterpret_cast<const double *>(samples);
    auto *y = reinterpret_cast<double *>(out);
    run(count, [x, y](std::size_t i, double re, double im) {
        y[2 * i] += x[2 * i] * re - x[2 * i + 1] * im;
        y[2 * i + 1] += x[2 * i] * im + x[2 * i + 1] * re;
    });
}

void Mixer::addTone(double amplitude, Sample *out, std::size_t count)
{
    auto *y = reinterpret_cast<double *>(out);
    run(count, [amplitude, y](std::size_t i, double re, double im) {
        y[2 * i] += amplitude * re;
        y[2 * i + 1] += amplitude * im;
    });
}
} // namespace vr

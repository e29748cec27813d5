// SPDX-License-Identifier: GPL-3.0-or-later
#include "SsbModulator.h"

#include "processor/Clones.h"
#include "scenes/Kaiser.h"

#include <cmath>
#include <numbers>

namespace vr
{
namespace
{
constexpr double kPassLowHz = 100.0;
constexpr double kPassHighHz = 5000.0;
constexpr double kStopHz = -300.0; // of the other side band
constexpr double kAttenuationDb = 106.0;
constexpr std::size_t kLanes = 8;

PROCESSOR_CLONES Sample dot(const double *re, const double *im, const double *x, std::size_t taps)
{
    double sumRe[kLanes] = {};
    double sumIm[kLanes] = {};
    for (std::size_t i = 0; i < taps; i += kLanes) {
        for (std::size_t k = 0; k < kLanes; ++k)
            sumRe[k] += re[i + k] * x[i + k];
        for (std::size_t k = 0; k < kLanes; ++k)
            sumIm[k] += im[i + k] * x[i + k];
    }
    Sample sum = 0.0;
    for (std::size_t k = 0; k < kLanes; ++k)
        sum += Sample(sumRe[k], sumIm[k]);
    return sum;
}
} // namespace

// The analytic signal has the power of the audio in either of its parts.
SsbModulator::SsbModulator(AudioLoop audio, double activeRms, bool upper)
    : m_audio(std::move(audio)),
      m_scale(activeRms > 0.0 ? 1.0 / (std::numbers::sqrt2 * activeRms) : 0.0)
{
    const double transition = (kPassLowHz - kStopHz) / kAudioRateHz;
    std::size_t taps = kaiser::length(kAttenuationDb, transition);
    taps = (taps + kLanes - 1) / kLanes * kLanes;
    const double lowEdge = (kPassLowHz + kStopHz) / 2.0;
    const double highEdge = kPassHighHz + (kPassLowHz - kStopHz) / 2.0;
    const double centre = (lowEdge + highEdge) / 2.0 / kAudioRateHz;
    const double bandwidth = (highEdge - lowEdge) / kAudioRateHz;
    const double middle = double(taps - 1) / 2.0;
    for (std::size_t i = 0; i < taps; ++i) {
        const double t = middle - double(i);
        // Twice: the audio's other half of the spectrum is taken away.
        const double h = 2.0 * bandwidth * kaiser::sinc(bandwidth * t)
            * kaiser::window(kAttenuationDb, t / (double(taps) / 2.0));
        const double angle = 2.0 * std::numbers::pi * centre * t;
        m_filterRe.push_back(h * std::cos(angle));
        m_filterIm.push_back((upper ? h : -h) * std::sin(angle));
    }
    rewind();
}

void SsbModulator::rewind()
{
    m_audio.rewind();
    m_history.assign(m_filterRe.size() - 1, 0.0);
}

void SsbModulator::make(Sample *out, std::size_t count)
{
    const std::size_t taps = m_filterRe.size();
    m_history.resize(taps - 1 + count);
    m_audio.read(&m_history[taps - 1], count);
    for (std::size_t i = 0; i < count; ++i)
        out[i] = m_scale * dot(m_filterRe.data(), m_filterIm.data(), &m_history[i], taps);
    m_history.erase(m_history.begin(), m_history.begin() + std::ptrdiff_t(count));
}
} // namespace vr

// SPDX-License-Identifier: GPL-3.0-or-later
#include "RateConverter.h"

#include "Kaiser.h"
#include "processor/Clones.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vr
{
namespace
{
constexpr std::size_t kLanes = 8;

PROCESSOR_CLONES Sample dot(
    const double *filter, const double *re, const double *im, std::size_t taps)
{
    double sumRe[kLanes] = {};
    double sumIm[kLanes] = {};
    for (std::size_t i = 0; i < taps; i += kLanes) {
        for (std::size_t k = 0; k < kLanes; ++k)
            sumRe[k] += filter[i + k] * re[i + k];
        for (std::size_t k = 0; k < kLanes; ++k)
            sumIm[k] += filter[i + k] * im[i + k];
    }
    Sample sum = 0.0;
    for (std::size_t k = 0; k < kLanes; ++k)
        sum += Sample(sumRe[k], sumIm[k]);
    return sum;
}
} // namespace

void RateConverter::init(double inputHz, double outputHz, double transition)
{
    constexpr double kPerHertz = 1000.0;
    const auto in = std::uint64_t(std::llround(inputHz * kPerHertz));
    const auto out = std::uint64_t(std::llround(outputHz * kPerHertz));
    const std::uint64_t divisor = std::gcd(in, out);
    m_up = out / divisor;
    m_down = in / divisor;
    m_inputHz = inputHz;
    m_cutoffHz = std::min(inputHz, outputHz) / 2.0;

    const std::size_t taps =
        kaiser::length(kAttenuationDb, transition * std::min(1.0, outputHz / inputHz));
    m_taps = (taps + kLanes - 1) / kLanes * kLanes;
    m_phases = std::min({m_up, kMaxPhases, std::max<std::uint64_t>(kMaxCoefficients / m_taps, 1)});
    m_blend.assign(m_taps, 0.0);
    design();
    clear();
}

void RateConverter::setCutoff(double cutoffHz)
{
    if (cutoffHz == m_cutoffHz)
        return;
    m_cutoffHz = cutoffHz;
    design();
}

void RateConverter::design()
{
    // Row p holds the filter for an output p / m_phases of an input period after its input sample.
    // Column i weighs input sample i of m_taps, the output lying between the two in the middle.
    const double half = double(m_taps) / 2.0;
    const double bandwidth = 2.0 * m_cutoffHz / m_inputHz; // of the input's
    m_filter.resize((m_phases + 1) * m_taps);
    for (std::size_t p = 0; p <= m_phases; ++p) {
        for (std::size_t i = 0; i < m_taps; ++i) {
            const double t = double(i) - (half - 1.0) - double(p) / double(m_phases);
            m_filter[p * m_taps + i] =
                bandwidth * kaiser::sinc(bandwidth * t) * kaiser::window(kAttenuationDb, t / half);
        }
    }
}

void RateConverter::clear()
{
    // Zeros stand before the stream, up to the tap that meets input sample 0 at output sample 0.
    m_re.assign(m_taps / 2 - 1, 0.0);
    m_im.assign(m_taps / 2 - 1, 0.0);
    m_first = 0;
    m_phase = 0;
}

std::size_t RateConverter::needed(std::size_t count) const
{
    if (count == 0)
        return 0;
    const std::uint64_t last = m_phase + (count - 1) * m_down;
    const std::size_t end = m_first + std::size_t(last / m_up) + m_taps;
    return end > m_re.size() ? end - m_re.size() : 0;
}

void RateConverter::push(const Sample *samples, std::size_t count)
{
    dropUsed();
    for (std::size_t i = 0; i < count; ++i) {
        m_re.push_back(samples[i].real());
        m_im.push_back(samples[i].imag());
    }
}

void RateConverter::dropUsed()
{
    const std::size_t used = std::min(m_first, m_re.size());
    m_re.erase(m_re.begin(), m_re.begin() + std::ptrdiff_t(used));
    m_im.erase(m_im.begin(), m_im.begin() + std::ptrdiff_t(used));
    m_first -= used;
}

void RateConverter::pull(Sample *out, std::size_t count)
{
    const bool exact = m_phases == m_up;
    for (std::size_t n = 0; n < count; ++n) {
        const double *filter = nullptr;
        if (exact) {
            filter = &m_filter[m_phase * m_taps];
        } else {
            const double position = double(m_phase) * double(m_phases) / double(m_up);
            const auto row = std::size_t(position);
            const double weight = position - double(row);
            const double *below = &m_filter[row * m_taps];
            for (std::size_t i = 0; i < m_taps; ++i)
                m_blend[i] = below[i] + weight * (below[i + m_taps] - below[i]);
            filter = m_blend.data();
        }
        out[n] = dot(filter, &m_re[m_first], &m_im[m_first], m_taps);
        skip(1);
    }
}

void RateConverter::skip(std::size_t count)
{
    m_phase += count * m_down;
    m_first += std::size_t(m_phase / m_up);
    m_phase %= m_up;
}
} // namespace vr

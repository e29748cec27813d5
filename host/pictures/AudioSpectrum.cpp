// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioSpectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host
{
AudioSpectrum::AudioSpectrum() : m_window(kSegment)
{
    m_fft.init(kPoints);
    m_pending.reserve(kSegment);
    for (int n = 0; n < kSegment; ++n) {
        m_window[std::size_t(n)] = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * n / kSegment);
        m_windowSum += m_window[std::size_t(n)];
    }
}

void AudioSpectrum::add(const float *interleaved, std::size_t frames)
{
    for (std::size_t i = 0; i < frames; ++i) {
        m_pending.push_back({interleaved[2 * i], interleaved[2 * i + 1]});
        if (m_pending.size() == kSegment) {
            addSegment();
            m_pending.erase(m_pending.begin(), m_pending.begin() + kSegment / 2);
        }
    }
}

void AudioSpectrum::addSegment()
{
    for (std::size_t n = 0; n < kSegment; ++n)
        m_work[n] = {m_pending[n].re * m_window[n], m_pending[n].im * m_window[n]};
    std::fill(m_work.begin() + kSegment, m_work.end(), COMPLEX{});
    m_fft.direct(m_work.data());
    // The spectra of two real signals in one complex one: X[k] and the conjugate of X[N - k] have
    // the left channel as half their sum and j times the right one as half their difference.
    for (std::size_t k = 0; k < kBins; ++k) {
        const COMPLEX a = m_work[k];
        const COMPLEX b = m_work[(kPoints - k) % kPoints];
        const double sumRe = a.re + b.re;
        const double sumIm = a.im - b.im;
        const double differenceRe = a.re - b.re;
        const double differenceIm = a.im + b.im;
        m_left[k] += 0.25 * (sumRe * sumRe + sumIm * sumIm);
        m_right[k] += 0.25 * (differenceRe * differenceRe + differenceIm * differenceIm);
    }
    ++m_segments;
}

std::vector<float> AudioSpectrum::levels(const std::vector<double> &powers) const
{
    std::vector<float> levels(kBins, float(kSilenceDb));
    if (m_segments == 0)
        return levels;
    // The transform divides by its points; half of a sine's amplitude is at the negative frequency.
    const double scale = double(kPoints) / m_windowSum;
    for (std::size_t k = 0; k < kBins; ++k) {
        const double sides = k == 0 ? 1.0 : 2.0;
        const double amplitude = sides * scale * std::sqrt(powers[k] / double(m_segments));
        if (amplitude > 0.0)
            levels[k] = float(std::max(kSilenceDb, 20.0 * std::log10(amplitude)));
    }
    return levels;
}
} // namespace host

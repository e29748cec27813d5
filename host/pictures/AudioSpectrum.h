// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/fft/FFT64.h"
#include "DspCore/types.h"

#include <cstddef>
#include <vector>

namespace host
{
/// Power spectrum of stereo audio at 48 kHz, averaged over segments that overlap by half (P. D.
/// Welch, "The use of fast Fourier transform for the estimation of power spectra", 1967).
///
/// A segment of 8192 frames under a Hann window, followed by as many zeros: bins 2.93 Hz apart, so
/// that a tone between two of them reads at most 0.36 dB low. Both channels go through one complex
/// transform, left as the real part. One thread at a time.
class AudioSpectrum
{
public:
    static constexpr int kRateHz = 48000;
    static constexpr int kSegment = 8192;        // frames, 171 ms
    static constexpr int kPoints = 2 * kSegment; // of the transform
    static constexpr int kBins = kPoints / 2;    // 0 Hz up to, not including, 24 kHz
    static constexpr double kBinHz = double(kRateHz) / kPoints;
    static constexpr double kSilenceDb = -200.0; // the least level

    AudioSpectrum();

    /// Frames of left and right in turn, full scale 1.
    void add(const float *interleaved, std::size_t frames);

    /// Whole segments so far. What follows the last of them is not in the spectrum.
    std::size_t segments() const { return m_segments; }

    /// dBFS of each bin: a sine of amplitude 1 reads 0. Silence before the first segment.
    std::vector<float> left() const { return levels(m_left); }
    std::vector<float> right() const { return levels(m_right); }

private:
    void addSegment();
    std::vector<float> levels(const std::vector<double> &powers) const;

    DspCore::FFT64 m_fft;
    std::vector<double> m_window;
    double m_windowSum = 0.0;
    std::vector<COMPLEX> m_pending; // fewer than kSegment frames
    std::vector<COMPLEX> m_work = std::vector<COMPLEX>(kPoints);
    std::vector<double> m_left = std::vector<double>(kBins); // sums over the segments
    std::vector<double> m_right = std::vector<double>(kBins);
    std::size_t m_segments = 0;
};
} // namespace host

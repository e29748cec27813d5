// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Scene.h"

#include <cstdint>
#include <vector>

namespace vr
{
/// Changes the sample rate of a complex stream with a windowed-sinc low-pass in polyphase form.
///
/// The low-pass is a Kaiser design (Kaiser 1974: beta and length from attenuation and transition
/// width) of kAttenuationDb. With the default transition it is flat up to 0.44 and stopped from
/// 0.56 of the lower rate, so images and aliases stay out of the middle 88 % of the band. Rates in
/// a ratio of small integers get one filter phase for each output phase; others interpolate
/// linearly between kMaxPhases phases, whose error is below -118 dB. Output sample 0 lies at the
/// time of input sample 0.
///
/// Memory is taken in init() and in push(); not thread-safe.
class RateConverter
{
public:
    static constexpr double kAttenuationDb = 110.0;
    static constexpr double kTransition = 0.12; // of the lower rate
    static constexpr std::uint64_t kMaxPhases = 1024;

    /// 32 MiB. Only a fall in rate by more than 64 has phases so long that it tells: the low-pass
    /// is then so narrow that a few phases are as good as many.
    static constexpr std::uint64_t kMaxCoefficients = 1u << 22;

    /// Rates in hertz, resolved to a millihertz. The cut-off is half the lower rate; transition is
    /// the width between pass and stop band around it, as a fraction of the lower rate.
    void init(double inputHz, double outputHz, double transition = kTransition);

    /// Redesigns the low-pass for a cut-off below half the lower rate, in hertz; the transition
    /// keeps its width and the stream runs on.
    void setCutoff(double cutoffHz);

    /// Empties the history; filters stay.
    void clear();

    /// Input samples that must still be pushed before count output samples can be pulled.
    std::size_t needed(std::size_t count) const;
    void push(const Sample *samples, std::size_t count);
    void pull(Sample *out, std::size_t count);

    /// Passes over output samples without computing them.
    void skip(std::size_t count);

private:
    void design();
    void dropUsed();

    double m_inputHz = 1.0;
    double m_cutoffHz = 0.5;
    std::size_t m_taps = 0; // of one phase, a multiple of the lanes of the inner loop
    std::uint64_t m_up = 1; // output samples in m_down input samples
    std::uint64_t m_down = 1;
    std::uint64_t m_phases = 1; // rows of m_filter, plus one if interpolated
    std::vector<double> m_filter;
    std::vector<double> m_blend; // one phase between two rows

    std::vector<double> m_re; // input not yet used up, from m_first on
    std::vector<double> m_im;
    std::size_t m_first = 0;   // oldest input sample under the filter of the next output
    std::uint64_t m_phase = 0; // of the next output, 0..m_up-1
};
} // namespace vr

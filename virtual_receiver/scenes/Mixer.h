// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Scene.h"

namespace vr
{
/// Multiplies by a complex tone whose phase runs on over blocks and changes of frequency: it shifts
/// a spectrum, or makes a carrier out of a level.
class Mixer
{
public:
    /// Cycles per sample, of either sign; a component at g comes out at g + frequency.
    void setFrequency(double cyclesPerSample) { m_frequency = cyclesPerSample; }
    double frequency() const { return m_frequency; }

    /// Mixes in place.
    void process(Sample *samples, std::size_t count);

    /// Adds samples, mixed, to out.
    void add(const Sample *samples, Sample *out, std::size_t count);

    /// Adds a tone of constant amplitude to out.
    void addTone(double amplitude, Sample *out, std::size_t count);

    /// Restarts the tone at a phase in cycles; the frequency stays.
    void reset(double phase = 0.0) { m_phase = phase; }

private:
    template <typename Combine>
    void run(std::size_t count, Combine combine);

    double m_frequency = 0.0;
    double m_phase = 0.0; // cycles, -1..1
};
} // namespace vr

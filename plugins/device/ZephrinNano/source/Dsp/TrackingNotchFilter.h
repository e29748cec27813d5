// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp/NotchCascade.h"
#include "DspCore/types.h"

namespace zephrinnano
{
/// Takes one frequency out of a complex stream.
///
///     tone A moves the notch to 0 Hz -> DC block -> tone B moves the stream back
///
/// The two tones undo each other but for the sample between them, so neither is made: a sample
/// ahead the notch stands where its tone has turned the last one to, and the three are one section
/// with a complex pole and no phase that could run away,
///
///     y[n] = x[n] - w x[n-1] + p w y[n-1],    w = exp(j 2 pi offset / rate)
///
/// The DC block is y[n] = x[n] - x[n-1] + p y[n-1] with p = exp(-2 pi width / rate): a zero at
/// 0 Hz and a pole beside it, the analogue RC high-pass by impulse invariance (Oppenheim and
/// Schafer, Discrete-Time Signal Processing, 7.1). A carrier on the notch dies away by 60 dB in
/// 1.1 / width seconds; a station at a distance of 3 widths or more loses less than 0.5 dB; a
/// station at half the rate from the notch gains 2 / (1 + p).
///
/// A setter stores; update() then makes the settings act. Not thread-safe; the owner serialises.
class TrackingNotchFilter
{
public:
    /// Samples that one process() takes at most.
    static constexpr int kMaxBlock = 16384;

    TrackingNotchFilter() { update(); }

    /// Rate of the stream in hertz.
    void setSampleRate(double rate) { m_sampleRate = rate; }
    double sampleRate() const { return m_sampleRate; }

    /// A filter that is off leaves the stream as it is. Acts at once.
    void setEnable(bool state) { m_enabled = state; }
    bool enable() const { return m_enabled; }

    /// Distance of the notch from the centre of the stream in hertz.
    void setFrequency(double offset) { m_offset = offset; }
    double frequency() const { return m_offset; }

    /// Half the width of the notch in hertz, the distance at which 3 dB are lost. Not limited.
    void setWidth(double width) { m_width = width; }
    double width() const { return m_width; }

    /// Derives the section from the settings and forgets its history.
    void update();

    /// Whether it is on and inside plus or minus half the rate.
    bool acts() const { return m_inBand && m_enabled; }

    /// For a cascade of filters that act.
    NotchSection &section() { return m_section; }

    /// Filters in place; does nothing if off, or if the notch is not inside plus or minus half the
    /// rate. Allocates nothing.
    void process(COMPLEX *data, int length);

private:
    double m_sampleRate = 39062.5; // Hz
    double m_width = 100.0;        // Hz
    double m_offset = 0.0;         // Hz
    NotchSection m_section;
    bool m_enabled = false;
    bool m_inBand = false;
};
} // namespace zephrinnano

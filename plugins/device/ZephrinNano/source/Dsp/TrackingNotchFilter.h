// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <vector>

namespace zephrinnano
{
/// Takes one frequency out of a complex stream.
///
///     tone A moves the notch to 0 Hz -> DC block -> tone B moves the stream back
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

    /// Derives tones and pole from the settings and forgets the history of the DC block. The
    /// phases of the tones run on.
    void update();

    /// Filters in place; does nothing if off, or if the notch is not inside plus or minus half the
    /// rate. Allocates nothing.
    void process(COMPLEX *data, int length);

private:
    /// Moves the stream along the frequency axis by a running tone. A second tone in series would
    /// reach further than half the rate; the notch never lies there, so it stays off.
    struct Shift
    {
        void process(COMPLEX *data, int length);

        double phase = 0.0; // radians, 0 <= phase < 2 pi, carried from block to block
        double secondPhase = 0.0;
        double frequency = 0.0; // cycles per sample, 0..1
        double secondFrequency = 0.0;
        std::vector<COMPLEX> tone = std::vector<COMPLEX>(kMaxBlock);
        bool secondEnabled = false;
    };

    void removeDc(COMPLEX *data, int length);

    double m_sampleRate = 39062.5; // Hz
    double m_width = 100.0;        // Hz
    double m_offset = 0.0;         // Hz
    Shift m_toZero;                // tone A
    Shift m_back;                  // tone B
    double m_decay = 0.0;          // pole of the DC block
    double m_timeConstant = 1.0;   // of the DC block, milliseconds
    double m_poleRate = 0.0;       // Hz, the rate that the pole is for
    COMPLEX m_input{0.0, 0.0};     // of the sample before
    COMPLEX m_output{0.0, 0.0};    // likewise
    bool m_dcBlockEnabled = true;
    bool m_enabled = false;
    bool m_inBand = false;
};
} // namespace zephrinnano

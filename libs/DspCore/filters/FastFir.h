// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/BasicFastFir.h"

namespace DspCore
{
/// Complex band-pass FIR filter for blocks of a running stream, in double precision.
///
/// The filter is a windowed-sinc low-pass moved to the centre of the band by complex modulation
/// (see Oppenheim/Schafer, Discrete-Time Signal Processing, chapter on windowed design), scaled to
/// a gain of about 1 in the band. As many samples come out as go in; the delay is about half the
/// taps. A new filter lets the response to what came before ring out (see BlockConvolver). Not
/// thread-safe.
class FastFir
{
public:
    /// Designs the filter; always true. Edges are in cycles per sample with sign, limited to
    /// -0.5..0.5; taps are limited to 16..7935. The tail of earlier blocks stays and rings out.
    /// Allocates, and costs a sine and a cosine per tap.
    bool init(double low, double high, int taps);

    /// Filters in place, any length; fastest for blocks of one length, a power of two. False with a
    /// warning for a null buffer, a length of 0, or a failing operation. Allocates nothing.
    bool process(COMPLEX *buffer, int length);
    bool process(std::vector<COMPLEX> &buffer);

    /// Empties the tail; the filter stays.
    void clear() { mFir.clear(); }

    /// The filter's response to a sample of 1, if that is all there is to it; none if the response
    /// depends on the transform (see BlockConvolver).
    std::span<const COMPLEX> taps() const { return mFir.taps(); }

    /// Whether something of an earlier filter, or of one without taps(), is still to come.
    bool hasTail() const { return mFir.hasTail(); }

    /// How blocks are convolved; for tests and measurements, before the first init().
    void setForm(ConvolutionForm form) { mFir.setForm(form); }

private:
    BasicFastFir<COMPLEX> mFir;
};
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "signal_primitives/complex.h"

using REAL = double;
using REAL32 = float;

/// An IQ sample (I, Q, full scale 1.0) or a stereo pair of audio (left, right).
using COMPLEX = Velmora::complex<REAL>;
using COMPLEX32 = Velmora::complex<REAL32>;

/// The largest block, in samples, that any DSP block accepts.
constexpr int SIGNAL_MAX_SIZE = 4096;

namespace DspCore
{
/// The host passes these numbers; they never change.
enum class Modulation {
    AM = 0,
    SAM = 1,
    DSB = 2,
    LSB = 3,
    USB = 4,
    CW = 5,
    NFM = 6,
    DIGL = 7,
    DIGU = 8,
    WFM = 9,
    DRM = 10,
};

enum class AgcMode {
    Off = 0,
    Long = 1,
    Slow = 2,
    Med = 3,
    Fast = 4,
    User = 5,
};

enum class Channel {
    A = 0,
    B = 1,
};

/// Direction of a transform. Any value but Forward is taken as inverse.
enum class FftType {
    Forward = 0,
    Inverse = 1,
};

/// Window shapes; the formulas stand at Window64. Any other number gives a flat window.
enum class Window {
    Sine = 1,
    Lanczos = 2,
    Bartlett = 3,
    Hann = 4,
    Hamming = 5,
    Blackman = 6,
    BlackmanHarris = 7,
    Nuttall = 8,
    BlackmanNuttall = 9,
    FlatTop = 10,
    Gauss03 = 11,
    Gauss05 = 12,
    Gauss12 = 13,
};
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/fft/BasicFft.h"

namespace DspCore
{
/// Complex FFT of a power-of-two length, in place, in double precision.
///
/// Forward: X[k] = 1/N sum x[n] exp(-j 2 pi k n / N). Inverse: x[n] = sum X[k] exp(+j 2 pi k n /
/// N), undivided, so that a forward transform followed by an inverse one gives the signal back. Not
/// thread-safe.
class FFT64
{
public:
    /// Prepares transforms of `length` points; what is below 2 or not a power of two is rounded up
    /// to the next one. No effect if the length is the present one. False with a warning, and the
    /// transform not set up, if it cannot be made; throws std::bad_alloc if there is
    /// no memory for the work buffer. Earlier set-ups stay allocated until
    /// free() and serve again when their length comes back.
    bool init(int length);

    /// Releases all set-ups and work buffers; the transform is then not set up.
    void free();

    /// Transforms `length` samples, which must be the length that init() settled on. Otherwise, for
    /// a null buffer and before init(): false, a warning, the buffer as it was. Allocates nothing.
    bool process(COMPLEX *buffer, int length, FftType type);

    /// Transform of length() samples, unchecked but for the status of the transform itself.
    bool direct(COMPLEX *buffer);
    bool invers(COMPLEX *buffer);

    /// Transform of length() samples into another array, which must not overlap the first;
    /// undivided in both directions, which saves the passes of scaling and copying.
    bool direct(const COMPLEX *in, COMPLEX *out);
    bool invers(const COMPLEX *in, COMPLEX *out);

    /// Points, 0 before init().
    int length() const { return mFft.length(); }
    IppStatus status() const { return mFft.status(); }

private:
    BasicFft<COMPLEX> mFft;
};

/// The same transform in single precision.
class FFT32
{
public:
    bool init(int length);
    void free();
    bool process(COMPLEX32 *buffer, int length, FftType type);
    bool direct(COMPLEX32 *buffer);
    bool invers(COMPLEX32 *buffer);
    bool direct(const COMPLEX32 *in, COMPLEX32 *out);
    bool invers(const COMPLEX32 *in, COMPLEX32 *out);

    int length() const { return mFft.length(); }
    IppStatus status() const { return mFft.status(); }

private:
    BasicFft<COMPLEX32> mFft;
};
} // namespace DspCore

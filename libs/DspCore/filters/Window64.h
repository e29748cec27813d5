// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/BasicWindow.h"

namespace DspCore
{
/// A window table and its application to a block, in double precision. Not thread-safe.
///
/// For sample n of N, with x = 2 pi n / (N - 1):
///
///  Sine             sin(pi n / (N - 1))
///  Lanczos          sin(u) / u, u = 2n / (N - 1) - 1 in radians; not a number where u is 0, which
///                   is the centre of an odd N
///  Bartlett         a triangle that reaches 1 at both middle samples of an even N
///  Hann             0.5 - 0.5 cos(x)
///  Hamming          0.54 - 0.46 cos(x)
///  Blackman         0.42 - 0.5 cos(x) + 0.08 cos(2x)
///  BlackmanHarris   0.35875 - 0.48829 cos(x) + 0.14128 cos(2x) - 0.01168 cos(3x)
///  Nuttall          0.355768 - 0.487396 cos(x) + 0.144232 cos(2x) - 0.12604 cos(3x)
///  BlackmanNuttall  0.3635819 - 0.4891775 cos(x) + 0.1365995 cos(2x) - 0.0106411 cos(3x)
///  FlatTop          1 - 1.93 cos(x) + 1.29 cos(2x) - 0.388 cos(3x) + 0.032 cos(4x)
///  Gauss..          exp(-g^2 / 2), g = (n - h) / (s h), h = (N - 1) / 2 rounded down, with s =
///  0.3,
///                   0.5 and 1.2
///
/// Each is divided by a constant of its own, for most of them near the mean of the table, so the
/// tables are not normalised to their peak. Any other number gives 1.0 throughout.
class Window64
{
public:
    /// Makes the table. Lengths below 32 become 32. No effect if the length is the present one,
    /// whatever the window: the old shape stays.
    void init(int length, Window type);

    /// Fills `table` with the window over `length` samples, 1 and up.
    static void calc(double *table, int length, Window type);

    /// Multiplies both parts of each sample by the window. A null buffer, a length of 0 and a
    /// length other than the table's are reported and leave the buffer as it is.
    void process(COMPLEX *buffer, int length);

private:
    BasicWindow<double> mWindow;
};

/// The same in single precision, for complex and for real blocks.
class Window32
{
public:
    void init(int length, Window type);
    static void calc(float *table, int length, Window type);
    void process(COMPLEX32 *buffer, int length);
    void process(float *buffer, int length);

private:
    BasicWindow<float> mWindow;
};
} // namespace DspCore

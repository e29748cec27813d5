// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/LoopDetector.h"

#include "processor/Clones.h"

#include <limits>

namespace DspCore
{
namespace
{
// Octant by octant: q = smaller / larger of |re| and |im|; above tan(pi / 8) the difference to
// pi / 4 is taken, of tangent (q - 1) / (q + 1), so that the series runs to 0.414 only. Choices are
// between constants and values that are there: the compiler blends those and nothing else.
[[gnu::always_inline]] inline double angleOf(COMPLEX x)
{
    constexpr double kQuarter = 0.5 * std::numbers::pi;
    constexpr double kTangent = std::numbers::sqrt2 - 1.0;
    constexpr double kSmallest = std::numeric_limits<float>::min();

    const double re = std::abs(x.re);
    const double im = std::abs(x.im);
    const double larger = re < im ? im : re;
    const double smaller = re < im ? re : im;
    const bool beyond = smaller > kTangent * larger;
    const double t =
        (smaller - (beyond ? larger : 0.0)) / (larger + (beyond ? smaller : kSmallest * 0x1p-60));
    const double u = t * t;
    const double u2 = u * u;
    // Interpolated at Chebyshev's points of t^2, to 3e-13.
    const double low = (0.9999999999992796 - 0.333333332783542 * u)
        + (0.19999993185703877 - 0.14285391135753475 * u) * u2;
    const double high = (0.11103532651268838 - 0.08993196160488283 * u)
        + (0.06976908252066026 - 0.03769999864634337 * u) * u2;
    const double octant = (beyond ? 0.5 * kQuarter : 0.0) + t * (low + high * (u2 * u2));
    const double quadrant = (re < im ? kQuarter : 0.0) + (re < im ? -1.0 : 1.0) * octant;
    const double half = (x.re < 0.0 ? 2.0 * kQuarter : 0.0) + (x.re < 0.0 ? -1.0 : 1.0) * quadrant;
    const double angle = std::copysign(half, x.im) + ((x.re - x.re) + (x.im - x.im));
    return larger < kSmallest ? LoopDetector::kNoAngle : angle;
}
} // namespace

PROCESSOR_CLONES
void LoopDetector::angles(const COMPLEX *samples, double *__restrict angles, int length)
{
    for (int n = 0; n < length; ++n)
        angles[n] = angleOf(samples[n]);
}
} // namespace DspCore

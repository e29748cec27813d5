// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/DotProduct.h"

#include "processor/Clones.h"

namespace FmSoft
{
namespace
{
constexpr std::size_t kLanes = 16;

[[gnu::always_inline]] inline double product(const double *a, const double *b, std::size_t length)
{
    double lanes[kLanes] = {};
    std::size_t i = 0;
    for (; i + kLanes <= length; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            lanes[lane] += a[i + lane] * b[i + lane];
    }
    double sum = 0.0;
    for (; i < length; ++i)
        sum += a[i] * b[i];
    for (const double lane : lanes)
        sum += lane;
    return sum;
}

// Eight numbers at any address, one register of the widest kind or several of a narrower one.
typedef double Eight __attribute__((vector_size(64), aligned(8), may_alias));

// A reference to the bare type is to an aligned one for clang.
struct [[gnu::packed, gnu::may_alias]] EightAnywhere
{
    Eight value;
};

[[gnu::always_inline]] inline const EightAnywhere &eightAt(const double *address)
{
    return *reinterpret_cast<const EightAnywhere *>(address);
}

[[gnu::always_inline]] inline double total(const Eight &x)
{
    return ((x[0] + x[4]) + (x[1] + x[5])) + ((x[2] + x[6]) + (x[3] + x[7]));
}

[[gnu::always_inline]] inline void fourProducts(
    const double *a, std::size_t length, const double *b, std::size_t step, double *out)
{
    Eight sum0{};
    Eight sum1{};
    Eight sum2{};
    Eight sum3{};
    std::size_t i = 0;
    for (; i + 8 <= length; i += 8) {
        const Eight tap = eightAt(a + i).value;
        sum0 += tap * eightAt(b + i).value;
        sum1 += tap * eightAt(b + step + i).value;
        sum2 += tap * eightAt(b + 2 * step + i).value;
        sum3 += tap * eightAt(b + 3 * step + i).value;
    }
    out[0] = total(sum0);
    out[1] = total(sum1);
    out[2] = total(sum2);
    out[3] = total(sum3);
    for (; i < length; ++i) {
        for (std::size_t n = 0; n < 4; ++n)
            out[n] += a[i] * b[n * step + i];
    }
}
} // namespace

PROCESSOR_CLONES double dotProduct(const double *a, const double *b, std::size_t length)
{
    return product(a, b, length);
}

PROCESSOR_CLONES void dotProducts(const double *a, std::size_t length, const double *b,
    std::size_t step, double *out, std::size_t count)
{
    std::size_t n = 0;
    for (; n + 4 <= count; n += 4)
        fourProducts(a, length, b + n * step, step, out + n);
    for (; n < count; ++n)
        out[n] = product(a, b + n * step, length);
}
} // namespace FmSoft

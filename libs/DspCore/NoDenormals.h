// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <immintrin.h>

namespace DspCore
{
/// For its lifetime, the calling thread reckons with zero where a number is too small to be normal
/// (below 2.2e-308, in single precision 1.2e-38).
///
/// Filters with feedback fade through such numbers for minutes after the signal has gone, and the
/// processor takes 100 cycles and more for each of them. No normal number changes.
class NoDenormals
{
public:
    NoDenormals() { _mm_setcsr(m_before | kFlushToZero | kDenormalsAreZero); }
    ~NoDenormals() { _mm_setcsr(m_before); }
    NoDenormals(const NoDenormals &) = delete;
    NoDenormals &operator=(const NoDenormals &) = delete;

private:
    static constexpr unsigned kFlushToZero = 0x8000;      // results
    static constexpr unsigned kDenormalsAreZero = 0x0040; // operands

    const unsigned m_before = _mm_getcsr();
};
} // namespace DspCore

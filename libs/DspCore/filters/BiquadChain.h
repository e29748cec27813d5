// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Biquad.h"
#include "DspCore/types.h"

#include <bitset>

namespace DspCore
{
/// Up to 18 second-order sections in series, as Biquad::process2() of each in turn, with several
/// sections in the lanes of a vector register.
///
///   step t     section 0   section 1   section 2   ..   section 17
///   works on   x[t]        x[t - 1]    x[t - 2]    ..   x[t - 17]
///
/// A section waits for its own last output; sections of different samples wait for nobody. So each
/// step takes all sections, each one sample behind the one before it, and a block is through after
/// length + 17 steps: nothing is carried into the next block but the sections' own states. In a
/// vector stand both parts of sections that are equally far apart, so that a vector's inputs are
/// the last outputs of the vector before it:
///
///   9 vectors of 4 doubles   |0 re|0 im|9 re|9 im|  |1 re|1 im|10 re|10 im|  ..
///
/// A block that is short against the 17 steps goes through three sections at a time in the same
/// way, a vector for each. While all sections are flat, numerator equal to denominator, their
/// states stay zero and a block passes as it is. Not thread-safe.
class BiquadChain
{
public:
    static constexpr int kSections = 18;

    /// All sections pass what they get.
    BiquadChain();

    /// Takes the coefficients and zeroes the state of a section.
    void set(int section, const Biquad::Coefficients &coefficients);

    /// Zeroes all states; the coefficients stay.
    void clear();

    /// In place, length 1 and up. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Coefficients and states by lanes; the first index of a section is lane(section), its
    /// imaginary part the next one.
    struct Lanes
    {
        static constexpr int kCount = 40; // a multiple of 8 for both parts of 18 sections

        alignas(64) double a0[kCount]{};
        alignas(64) double a1[kCount]{};
        alignas(64) double a2[kCount]{};
        alignas(64) double b1[kCount]{};
        alignas(64) double b2[kCount]{};
        alignas(64) double state1[kCount]{};
        alignas(64) double state2[kCount]{};
        alignas(64) double output[kCount]{};
    };

private:
    Lanes mLanes;
    std::bitset<kSections> mFlat; // sections that change nothing
};
} // namespace DspCore

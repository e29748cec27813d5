// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace zephrinnano
{
/// One notch of a complex stream as a zero on the unit circle and a pole beside it:
///
///     y[n] = x[n] - zero x[n-1] + pole y[n-1]
struct NotchSection
{
    COMPLEX zero{0.0, 0.0};
    COMPLEX pole{0.0, 0.0};
    COMPLEX input{0.0, 0.0};  // of the sample before
    COMPLEX output{0.0, 0.0}; // likewise
};

/// Notches in series, with several of them in the lanes of vector registers.
///
///     step t     notch 0   notch 1   notch 2   ..   notch 7
///     works on   x[t]      x[t - 1]  x[t - 2]  ..   x[t - 7]
///
/// A notch waits for its own last output; notches at different samples wait for nobody. So each
/// step takes all of them, each one sample later in its turn than the one before, and a block is
/// through after length + 7 steps: nothing is carried into the next block but the sections' own
/// states. A register holds a notch of the first and one of the second half, so that a register's
/// inputs are the last outputs of the register before it:
///
///     |0 re|0 im|4 re|4 im|  |1 re|1 im|5 re|5 im|  |2 ..  |3 ..
///
/// Not thread-safe.
class NotchCascade
{
public:
    static constexpr int kMost = 8;

    /// In place, in the order of the list; 1..kMost sections, any length. Allocates nothing.
    static void process(NotchSection *const *sections, int count, COMPLEX *data, int length);
};
} // namespace zephrinnano

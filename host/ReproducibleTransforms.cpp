// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReproducibleTransforms.h"

#include <fftw3.h>

namespace host
{
void makeTransformsReproducible()
{
    // FFTW takes a limit of 0 as "estimate", whatever a plan asks for.
    fftw_set_timelimit(0.0);
    fftwf_set_timelimit(0.0);
}
} // namespace host

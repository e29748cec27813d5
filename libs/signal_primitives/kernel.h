// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "processor/Clones.h"
#include "signal_primitives/ipps.h"

// What the sources of this folder share; not for their users.

namespace signal_primitives
{
/// The check every vector function starts with: all arrays there, at least one element.
template <typename... T>
[[gnu::always_inline]] inline IppStatus check(int len, const T *...arrays)
{
    if ((!arrays || ...))
        return ippStsNullPtrErr;
    return len < 1 ? ippStsSizeErr : ippStsNoErr;
}
} // namespace signal_primitives

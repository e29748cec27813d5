// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

namespace host
{
/// What gets the IQ stream beside the receiver, in the engine's blocks.
class IqListener
{
public:
    virtual ~IqListener() = default;

    /// On the engine's thread; waits for nothing but the spin lock of a ring, and allocates
    /// nothing.
    virtual void pushIq(const COMPLEX *block, int samples) = 0;
};
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/types.h"

namespace DspCore
{
/// What Window64 and Window32 have in common; see there. The caller's signature goes into the
/// warnings.
template <typename Real>
class BasicWindow
{
public:
    void init(int length, Window type);
    static void calc(Real *table, int length, Window type);

    /// Sample is Real or a complex pair of it.
    template <typename Sample>
    void process(Sample *buffer, int length, const char *signature) const;

private:
    AlignedVector<Real> mWindow;
};
} // namespace DspCore

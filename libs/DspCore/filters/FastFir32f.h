// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/BasicFastFir.h"

namespace DspCore
{
/// FastFir in single precision; see there.
class FastFir32f
{
public:
    bool init(double low, double high, int taps);
    bool process(COMPLEX32 *buffer, int length);
    bool process(std::vector<COMPLEX32> &buffer);
    void clear() { mFir.clear(); }
    void setForm(ConvolutionForm form) { mFir.setForm(form); }

private:
    BasicFastFir<COMPLEX32> mFir;
};
} // namespace DspCore

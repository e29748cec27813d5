// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/BlockConvolver.h"
#include "DspCore/filters/Window64.h"

#include <span>
#include <vector>

namespace DspCore
{
/// What FastFir and FastFir32f have in common: the design of the filter and the cutting of long
/// blocks. The convolution is BlockConvolver's. The caller's signature goes into the warnings.
template <typename Sample>
class BasicFastFir
{
public:
    bool init(double low, double high, int taps);
    bool process(Sample *buffer, int length, const char *signature);
    void clear() { mConvolver.clear(); }
    std::span<const Sample> taps() const { return mConvolver.taps(); }
    bool hasTail() const { return mConvolver.hasTail(); }
    void setForm(ConvolutionForm form) { mConvolver.setForm(form); }

private:
    static constexpr bool kIsDouble = std::is_same_v<Sample, COMPLEX>;

    void calculate(double low, double high, int taps);

    BlockConvolver<Sample> mConvolver;
    std::conditional_t<kIsDouble, Window64, Window32> mWindow;
    std::vector<Sample> mTaps;
    IppStatus mStatus = ippStsNoErr;
};

extern template class BasicFastFir<COMPLEX>;
extern template class BasicFastFir<COMPLEX32>;
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DcBlock.h"

namespace DspCore
{
bool DcBlock::init(double)
{
    clear();
    return true;
}

void DcBlock::clear()
{
    mInput = {0.0, 0.0};
    mOutput = {0.0, 0.0};
}

void DcBlock::process(COMPLEX *buffer, int length)
{
    const double pole = mPole;
    COMPLEX input = mInput;
    COMPLEX output = mOutput;
    for (int n = 0; n < length; ++n) {
        const COMPLEX x = buffer[n];
        output.re = (x.re - input.re) + pole * output.re;
        output.im = (x.im - input.im) + pole * output.im;
        input = x;
        buffer[n] = output;
    }
    mInput = input;
    mOutput = output;
}
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BandDecimator.h"

namespace DspCore
{
void BandDecimator::init(double edge, int taps, int up, int down)
{
    mAtOnce = DecimatingFir::pays(up, down);
    if (mAtOnce) {
        mBoth.init(edge, taps, up, down);
        mResampler.free();
        return;
    }
    mLimit.init(-edge, edge, taps);
    mLimit.clear();
    mResampler.init(up, down);
}

void BandDecimator::process(COMPLEX *in, int length, COMPLEX *out, int &outLength)
{
    if (mAtOnce)
        return mBoth.process(in, length, out, outLength);
    mLimit.process(in, length);
    mResampler.process(in, length, out, outLength);
}

void BandDecimator::clear()
{
    if (mAtOnce)
        return mBoth.clear();
    mLimit.clear();
    mResampler.clear();
}
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BandDecimator.h"

#include <algorithm>

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

void BandDecimator::process(int length, COMPLEX *out, int &outLength)
{
    if (mAtOnce)
        return mBoth.process(length, out, outLength);
    mLimit.process(mInput.data(), length);
    mResampler.process(mInput.data(), length, out, outLength);
}

void BandDecimator::process(const COMPLEX *in, int length, COMPLEX *out, int &outLength)
{
    std::copy_n(in, length, room(length));
    process(length, out, outLength);
}

void BandDecimator::clear()
{
    if (mAtOnce)
        return mBoth.clear();
    mLimit.clear();
    mResampler.clear();
}
} // namespace DspCore

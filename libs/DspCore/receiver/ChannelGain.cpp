// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/ChannelGain.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double kSilenceDb = 60.0; // distance below full level at which a control ends

double gainOfDb(double db)
{
    return std::pow(10.0, db / 20.0);
}
} // namespace

namespace DspCore
{
float volumeGain(double db)
{
    if (qFuzzyCompare(db, -kSilenceDb))
        return 0.0f;
    return float(std::clamp(gainOfDb(db), 0.0, 1.0));
}

void ChannelGain::setVolume(double db)
{
    mVolume.setTarget(volumeGain(db));
}

void ChannelGain::setBalance(double db)
{
    mLeft.setTarget(db < 0.0 ? float(gainOfDb(db)) : 1.0f);
    if (db > 0.0)
        mRight.setTarget(db >= kSilenceDb ? 0.0f : float(gainOfDb(-db)));
    else
        mRight.setTarget(1.0f);
}

void ChannelGain::process(COMPLEX *buffer, int length)
{
    mVolume.run(mMute, length, [buffer](int i, double gain) {
        buffer[i].re *= gain;
        buffer[i].im *= gain;
    });
    mLeft.run(mMute, length, [buffer](int i, double gain) { buffer[i].re *= gain; });
    mRight.run(mMute, length, [buffer](int i, double gain) { buffer[i].im *= gain; });
}
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/noise/NoiseReduction.h"

#include "signal_primitives/ipps.h"

#include <algorithm>

namespace DspCore
{
namespace
{
constexpr double kLevelFloor = 0.001;
constexpr double kHighestRatio = 30.0;
} // namespace

void NoiseReduction::setEnable(bool enable)
{
    mEnable = enable;
    clear();
}

double NoiseReduction::newGain(double in, double out)
{
    const double ratio =
        std::min(kHighestRatio, std::max(kLevelFloor, in) / std::max(kLevelFloor, out) * 0.5);
    mGain = 0.98 * mGain + 0.02 * ratio;
    return mGain;
}

void NoiseReduction::process(COMPLEX *buffer, int length)
{
    if (!mEnable || buffer == nullptr || length < 1)
        return;
    const double in = calcRms(buffer, length);
    mPredictor.process(buffer, length, [](COMPLEX, COMPLEX predicted) { return predicted; });
    const double gain = newGain(in, calcRms(buffer, length));
    ippsMulC_64f_I(gain, &buffer->re, 2 * length);
}

void NoiseReduction::process(std::vector<COMPLEX> &buffer)
{
    process(buffer.data(), static_cast<int>(buffer.size()));
}
} // namespace DspCore

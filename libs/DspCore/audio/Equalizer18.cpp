// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Equalizer18.h"

#include "vm_library/source/log/Log.h"

#include <algorithm>

namespace DspCore
{
namespace
{
constexpr double kQuality = 2.0;

Biquad::Type type(std::size_t band)
{
    if (band == 0)
        return Biquad::Type::LowShelf;
    return band + 1 == Equalizer18::kCentresHz.size() ? Biquad::Type::HighShelf
                                                      : Biquad::Type::Peak;
}
} // namespace

Equalizer18::Equalizer18()
{
    design();
}

void Equalizer18::design()
{
    for (std::size_t band = 0; band < Equalizer18::kCentresHz.size(); ++band) {
        Biquad section;
        const double gainDb = mEnable ? mGains[band] : 0.0;
        section.init(type(band), Equalizer18::kCentresHz[band] / mSampleRate, kQuality, gainDb);
        mChain.set(int(band), section.coefficients());
    }
}

void Equalizer18::clear()
{
    mChain.clear();
}

void Equalizer18::setEnable(bool enable)
{
    if (enable == mEnable)
        return;
    mEnable = enable;
    design();
}

bool Equalizer18::init(const QVector<int> &gains)
{
    if (gains.size() != kBands)
        return false;
    std::copy(gains.begin(), gains.end(), mGains.begin());
    if (mEnable)
        design();
    return true;
}

void Equalizer18::setSampleRate(double rate)
{
    mSampleRate = rate;
    if (mEnable)
        design();
}

bool Equalizer18::process(COMPLEX *buffer, unsigned int length)
{
    if (buffer == nullptr || length == 0) {
        vm::log::warning(Q_FUNC_INFO, " (", buffer, ",", length, "): Incorrect input parameters!");
        return true;
    }
    mChain.process(buffer, int(length));
    return true;
}
} // namespace DspCore

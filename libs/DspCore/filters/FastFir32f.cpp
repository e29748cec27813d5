// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FastFir32f.h"

#include <QtGlobal>

namespace DspCore
{
bool FastFir32f::init(double low, double high, int taps)
{
    return mFir.init(low, high, taps);
}

bool FastFir32f::process(COMPLEX32 *buffer, int length)
{
    return mFir.process(buffer, length, Q_FUNC_INFO);
}

bool FastFir32f::process(std::vector<COMPLEX32> &buffer)
{
    return process(buffer.data(), int(buffer.size()));
}
} // namespace DspCore

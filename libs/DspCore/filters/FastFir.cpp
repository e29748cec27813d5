// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FastFir.h"

#include <QtGlobal>

namespace DspCore
{
bool FastFir::init(double low, double high, int taps)
{
    return mFir.init(low, high, taps);
}

bool FastFir::process(COMPLEX *buffer, int length)
{
    return mFir.process(buffer, length, Q_FUNC_INFO);
}

bool FastFir::process(std::vector<COMPLEX> &buffer)
{
    return process(buffer.data(), int(buffer.size()));
}
} // namespace DspCore

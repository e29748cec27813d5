// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/fft/FFT64.h"

#include <QtGlobal>

namespace DspCore
{
bool FFT64::init(int length)
{
    return mFft.init(length, Q_FUNC_INFO);
}

void FFT64::free()
{
    mFft.free();
}

bool FFT64::process(COMPLEX *buffer, int length, FftType type)
{
    return mFft.process(buffer, length, type, Q_FUNC_INFO);
}

bool FFT64::direct(COMPLEX *buffer)
{
    return mFft.direct(buffer, Q_FUNC_INFO);
}

bool FFT64::invers(COMPLEX *buffer)
{
    return mFft.invers(buffer, Q_FUNC_INFO);
}

bool FFT64::direct(const COMPLEX *in, COMPLEX *out)
{
    return mFft.directInto(in, out, Q_FUNC_INFO);
}

bool FFT64::invers(const COMPLEX *in, COMPLEX *out)
{
    return mFft.inversInto(in, out, Q_FUNC_INFO);
}

bool FFT32::init(int length)
{
    return mFft.init(length, Q_FUNC_INFO);
}

void FFT32::free()
{
    mFft.free();
}

bool FFT32::process(COMPLEX32 *buffer, int length, FftType type)
{
    return mFft.process(buffer, length, type, Q_FUNC_INFO);
}

bool FFT32::direct(COMPLEX32 *buffer)
{
    return mFft.direct(buffer, Q_FUNC_INFO);
}

bool FFT32::invers(COMPLEX32 *buffer)
{
    return mFft.invers(buffer, Q_FUNC_INFO);
}

bool FFT32::direct(const COMPLEX32 *in, COMPLEX32 *out)
{
    return mFft.directInto(in, out, Q_FUNC_INFO);
}

bool FFT32::invers(const COMPLEX32 *in, COMPLEX32 *out)
{
    return mFft.inversInto(in, out, Q_FUNC_INFO);
}
} // namespace DspCore

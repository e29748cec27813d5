// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Window64.h"

#include <QtGlobal>

namespace DspCore
{
void Window64::init(int length, Window type)
{
    mWindow.init(length, type);
}

void Window64::calc(double *table, int length, Window type)
{
    BasicWindow<double>::calc(table, length, type);
}

void Window64::process(COMPLEX *buffer, int length)
{
    mWindow.process(buffer, length, Q_FUNC_INFO);
}

void Window32::init(int length, Window type)
{
    mWindow.init(length, type);
}

void Window32::calc(float *table, int length, Window type)
{
    BasicWindow<float>::calc(table, length, type);
}

void Window32::process(COMPLEX32 *buffer, int length)
{
    mWindow.process(buffer, length, Q_FUNC_INFO);
}

void Window32::process(float *buffer, int length)
{
    mWindow.process(buffer, length, Q_FUNC_INFO);
}
} // namespace DspCore

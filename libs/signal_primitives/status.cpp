// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

IppStatus ippInit()
{
    return ippStsNoErr;
}

const char *ippGetStatusString(IppStatus status)
{
    switch (status) {
    case ippStsNoErr:
        return "ippStsNoErr: no error";
    case ippStsBadArgErr:
        return "ippStsBadArgErr: bad argument of the function";
    case ippStsSizeErr:
        return "ippStsSizeErr: wrong value of the data size";
    case ippStsNullPtrErr:
        return "ippStsNullPtrErr: null pointer";
    case ippStsMemAllocErr:
        return "ippStsMemAllocErr: not enough memory";
    case ippStsDivByZeroErr:
        return "ippStsDivByZeroErr: division by zero";
    case ippStsFftOrderErr:
        return "ippStsFftOrderErr: wrong order of the transform";
    case ippStsFftFlagErr:
        return "ippStsFftFlagErr: wrong normalisation flag of the transform";
    case ippStsIIROrderErr:
        return "ippStsIIROrderErr: wrong order of the IIR filter";
    case ippStsTonePhaseErr:
        return "ippStsTonePhaseErr: phase of the tone outside 0 to 2 pi";
    case ippStsToneFreqErr:
        return "ippStsToneFreqErr: relative frequency of the tone outside 0 to 1";
    case ippStsToneMagnErr:
        return "ippStsToneMagnErr: magnitude of the tone not above 0";
    case ippStsFilterFrequencyErr:
        return "ippStsFilterFrequencyErr: cut-off of the filter not between 0 and 0.5";
    case ippStsIIRGenOrderErr:
        return "ippStsIIRGenOrderErr: wrong order of the designed IIR filter";
    }
    return "Unknown status";
}

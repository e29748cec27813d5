// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FmSoft/FilterFM.h"

/// FM detector: the phase step from sample to sample, scaled so that the full deviation gives 1.0.
///
/// The history is one sample. Not thread-safe.
class PhaseDiscriminator
{
public:
    /// Deviation that gives 1.0, in cycles per sample.
    explicit PhaseDiscriminator(double maxFreqDev);

    /// out takes the length of in.
    void process(const IQSampleVector &in, SampleVector &out);

private:
    double mScale; // per radian
    Velmora::complex<float> mPrevious{0.0f, 0.0f};
};

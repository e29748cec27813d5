// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/receiver/ChannelGain.h"
#include "DspCore/types.h"

#include <vector>

namespace DspCore
{
/// What a receiver holds once per tuned frequency: the blocks, and the block of samples that is on
/// its way through them.
struct ReceiverChannel
{
    // Input rate.
    std::vector<COMPLEX> input = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    DownConverter oscillator;
    FastFir preFilter;
    Resampler decimator;

    // Output rate.
    std::vector<COMPLEX> output = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    int length = 0; // samples in `output` that belong to the present block
    DownConverter diglMixer;
    DownConverter diguMixer;
    FastFir bandFilter;
    ChannelGain gain;

    /// Filters the first `count` input samples and brings them to the output rate.
    void decimate(int count)
    {
        preFilter.process(input.data(), count);
        decimator.process(input.data(), count, output.data(), length);
    }

    /// Audio in the real part goes to both ears.
    void copyLeftToRight()
    {
        for (int i = 0; i < length; ++i)
            output[i].im = output[i].re;
    }
};
} // namespace DspCore

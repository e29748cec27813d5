// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/agc/Vm_Agc.h"
#include "DspCore/agc/Vm_Binaural.h"
#include "DspCore/audio/Equalizer18.h"
#include "DspCore/audio/RxMeter.h"
#include "DspCore/audio/Sql.h"
#include "DspCore/audio/SqlCtcss.h"
#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorCW.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "DspCore/demodulators/DemodulatorSAM.h"
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/noise/Apf.h"
#include "DspCore/noise/AutoNotchFilter.h"
#include "DspCore/noise/Dse.h"
#include "DspCore/noise/NoiseReduction.h"
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
    RxMeter meter;
    double level = -120.0; // dBm, as the last block left it
    DemodulatorAM am;
    DemodulatorSAM sam;
    DemodulatorCW cw;
    DemodulatorNFM nfm;
    Apf ssbApf;
    Apf cwApf;
    AutoNotchFilter anf;
    NoiseReduction nr;
    Equalizer18 equalizer;
    Dse dse;
    SqlCtcss sqlCtcss;
    Velmora::CppDsp::Vm_Agc<REAL> agc;
    Sql sql;
    Velmora::CppDsp::Vm_Binaural<REAL> binaural;
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

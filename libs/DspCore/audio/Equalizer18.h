// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/BiquadChain.h"
#include "DspCore/types.h"

#include <QVector>
#include <array>

namespace DspCore
{
/// Graphic equalizer of 18 bands from 31 Hz to 16 kHz: a low shelf, 16 peaks and a high shelf in
/// series.
///
/// Disabled it is a flat chain rather than a bypass, so that switching it does not break the
/// filters' history. Not thread-safe; the owner serialises.
class Equalizer18
{
public:
    static constexpr int kBands = BiquadChain::kSections;

    /// Half an octave apart.
    static constexpr std::array<double, kBands> kCentresHz = {31, 63, 87, 125, 175, 250, 350, 500,
        700, 1000, 1400, 2000, 2800, 4000, 5600, 8000, 11200, 16000};

    Equalizer18();

    void clear();

    /// On a change all bands are designed anew: with the stored gains, or flat.
    void setEnable(bool enable);

    /// Gains in dB, one for each band, lowest band first. False, and nothing changes, unless there
    /// are 18.
    bool init(const QVector<int> &gains);

    /// Hertz. A disabled equalizer keeps its flat design until it is enabled.
    void setSampleRate(double rate);

    /// In place; always true. A null buffer or a length of 0 is reported. Allocates nothing.
    bool process(COMPLEX *buffer, unsigned int length);

private:
    void design();

    bool mEnable = false;
    double mSampleRate = 39062.5;
    std::array<int, kBands> mGains{}; // dB
    BiquadChain mChain;
};
} // namespace DspCore

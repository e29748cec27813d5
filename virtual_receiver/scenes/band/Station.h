// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BandDescription.h"
#include "Modulator.h"
#include "scenes/Mixer.h"
#include "scenes/RateConverter.h"

#include <memory>
#include <vector>

namespace vr
{
/// A transmission on the air: the modulator's signal at kAudioRateHz, brought to the device's rate
/// and moved to where the tuning puts it. The signal is narrow (12 kHz to either side at most), so
/// a short filter keeps all images away. A station whose carrier lies outside the device's band is
/// silent; its programme goes on.
class Station
{
public:
    explicit Station(const StationDescription &description);

    void start(double rateHz, double tunedHz);
    void retune(double tunedHz);

    /// Adds the station's next samples.
    void add(Sample *out, std::size_t count);

private:
    double m_frequencyHz;
    double m_amplitude;
    std::unique_ptr<Modulator> m_modulator; // null: a plain carrier
    double m_rateHz = 0.0;
    bool m_inBand = true;
    RateConverter m_rateConverter;
    Mixer m_mixer;
    std::vector<Sample> m_baseband;
    std::vector<Sample> m_block;
};
} // namespace vr

// SPDX-License-Identifier: GPL-3.0-or-later
#include "road/Tools.h"

#include "Dsp/ZephrinMDSP.h"

namespace
{
constexpr int kEqualizerBands = 18;
constexpr int kEqualizerGain = 3;  // dB
constexpr int kOpenSquelch = -140; // dBm

// Spread over the band so that no two meet, in none of the channels that are listened to.
void setNotches(ZephrinMDSP &engine, double centreHz, double rateHz)
{
    constexpr unsigned long kNotches = 8;
    constexpr double kWidthHz = 200.0;
    engine.setDds(0, centreHz);
    const auto band = static_cast<unsigned long>(engine.currentBand(0));
    for (unsigned long i = 0; i < kNotches; ++i) {
        const double offset = rateHz * (double(i) - 3.5) / 10.0;
        engine.onRnfParam(band, i, true, centreHz + offset, kWidthHz);
    }
    engine.onRnfEnabled(band, true);
}
} // namespace

namespace bench
{
void switchEqualizerOn(ZephrinMDSP &engine)
{
    engine.setEqualizerGains(0, QVector<int>(kEqualizerBands, kEqualizerGain));
    engine.setEqualizerEnable(0, true);
}

void switchToolsOn(ZephrinMDSP &engine, DspCore::Modulation mode, double centreHz, double rateHz)
{
    setNotches(engine, centreHz, rateHz);
    switchEqualizerOn(engine);
    engine.setNb1(0, true);
    engine.setNb2(0, true);
    engine.setNr(0, true);
    engine.setAnf(0, true);
    engine.setApf(0u, true);
    engine.setDse(0u, true);
    engine.setBin(0, mode != DspCore::Modulation::CW);
    for (const unsigned channel : {0u, 1u}) {
        engine.setSqlEnable(0, channel, true);
        engine.setSqlValue(0, channel, kOpenSquelch);
    }
    engine.setEnableCTCSS(0, true);
    engine.vacOpen();
    engine.lineoutOpen();
}
} // namespace bench

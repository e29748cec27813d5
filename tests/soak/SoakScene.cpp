// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoakScene.h"

#include "DspCore/types.h"
#include "support/Signals.h"
#include "virtual_receiver/virtual_receiver.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace soak
{
namespace
{
// At 192 kHz one pass is 171 ms, so what the pass repeats is lines of 5.9 Hz, far enough from the
// carrier for a window of a second to part them.
constexpr int kPass = 32768; // samples
constexpr double kTwoPi = 2.0 * std::numbers::pi;

/// The frequency next to it that fits whole cycles into a pass, in cycles per sample.
double fitting(double hz, double rateHz)
{
    return std::round(hz / rateHz * kPass) / kPass;
}

constexpr double kCarrierHz = 11000.0; // from the middle
constexpr double kCarrierAmplitude = 0.01;
constexpr double kNoiseAmplitude = 1e-5;
constexpr int kPulses = 3; // in a pass, for the blankers
constexpr double kPulseAmplitude = 0.02;

struct Station
{
    double hz; // from the middle
    double amplitude;
    double depth;     // of amplitude modulation
    double deviation; // hertz
    double toneHz;
};

// Voices would need files; tones work the detectors, the loops and the gain control as well. The
// rows are AM, narrow FM, a wide one with the pilot of stereo, and a strong carrier.
constexpr Station kStations[] = {
    {-8000.0, 0.03, 0.8, 0.0, 400.0},
    {-16000.0, 0.01, 0.0, 2500.0, 1000.0},
    {21500.0, 0.005, 0.0, 1900.0, 19000.0},
    {-2000.0, 0.1, 0.0, 0.0, 0.0},
};

void addStation(std::vector<COMPLEX> &pass, const Station &station, double rateHz)
{
    const double carrier = fitting(station.hz, rateHz);
    const double tone = fitting(station.toneHz, rateHz);
    const double index = tone > 0.0 ? station.deviation / (tone * rateHz) : 0.0; // radians
    for (int n = 0; n < kPass; ++n) {
        const double phase = kTwoPi * tone * n;
        const double level = station.amplitude * (1.0 + station.depth * std::cos(phase));
        const double angle = kTwoPi * carrier * n + index * std::sin(phase);
        pass[std::size_t(n)].re += level * std::cos(angle);
        pass[std::size_t(n)].im += level * std::sin(angle);
    }
}
} // namespace

double carrierHz(double rateHz)
{
    return kCentreHz + fitting(kCarrierHz, rateHz) * rateHz;
}

void chooseScene(double rateHz)
{
    std::vector<COMPLEX> pass = test::noise(kPass, /*seed*/ 1);
    for (COMPLEX &x : pass)
        x = {kNoiseAmplitude * x.re, kNoiseAmplitude * x.im};
    test::add(pass, test::tone(kPass, fitting(kCarrierHz, rateHz), kCarrierAmplitude));
    for (const Station &station : kStations)
        addStation(pass, station, rateHz);
    for (int pulse = 0; pulse < kPulses; ++pulse)
        pass[std::size_t(pulse * kPass / kPulses)].re += kPulseAmplitude;
    static_assert(sizeof(COMPLEX) == 2 * sizeof(double));
    if (vr_scene_samples(&pass.front().re, pass.size(), rateHz, kCentreHz, 1) != 0)
        throw std::runtime_error(vr_last_error());
}
} // namespace soak

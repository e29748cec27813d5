// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HostProcess.h"

#include "DspCore/types.h"

#include <vector>

namespace test
{
// Where the scenes of the program's tests are.
constexpr double kCenterHz = 14e6;
constexpr int kSceneRateHz = 192000;
constexpr double kAudioRateHz = 48000.0;

/// Two seconds of a carrier beside the centre.
std::vector<COMPLEX> carrier(double offsetHz, double amplitude);

/// Writes a scene around kCenterHz and receives it at its own rate in a free run, with "a.wav" and
/// "r.json" as results. Fails the test if the program fails.
void receive(HostProcess &host, const std::vector<COMPLEX> &iq, const QString &options);

/// The left channel of the second half, after fade-in and gain control have settled.
std::vector<COMPLEX> settledLeft(const std::vector<COMPLEX> &audio);

/// 1 for a real sine of that frequency and nothing else.
double purity(const std::vector<COMPLEX> &signal, double frequencyHz, double rateHz = kAudioRateHz);

/// Amplitude of one frequency of a real signal.
double levelAt(const std::vector<COMPLEX> &signal, double frequencyHz);
} // namespace test

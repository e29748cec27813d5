// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HostProcess.h"

namespace test
{
constexpr int kSceneRateHz = 192000;
constexpr double kAudioRateHz = 48000.0;
constexpr double kPure = 0.999; // unwanted parts 27 dB down or more

/// Two seconds of a carrier beside the centre.
std::vector<COMPLEX> carrier(double offsetHz, double amplitude);

/// Starts to receive a scene around 14 MHz at its own rate in a free run, with "a.wav" and "r.json"
/// as results.
void startReception(HostProcess &host, const std::vector<COMPLEX> &iq, const QString &options,
    int rateHz = kSceneRateHz);

/// The same to the end. Fails the test if the program fails.
void receive(HostProcess &host, const std::vector<COMPLEX> &iq, const QString &options);

/// The left channel of the second half, after fade-in and gain control have settled.
std::vector<COMPLEX> settledLeft(const std::vector<COMPLEX> &audio);

/// 1 for a real sine of that frequency and nothing else.
double purity(const std::vector<COMPLEX> &signal, double frequencyHz, double rateHz = kAudioRateHz);

/// Amplitude of one frequency of a real signal.
double levelAt(const std::vector<COMPLEX> &signal, double frequencyHz);
} // namespace test

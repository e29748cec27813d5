// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QVector>
#include <array>
#include <optional>

namespace host
{
/// Names of the gain control's modes, by their numbers.
inline constexpr std::array<const char *, 6> kAgcModeNames = {
    "off", "long", "slow", "med", "fast", "user"};

/// Noise reduction or auto notch. What is empty stays as the receiver has it.
struct PredictorSettings
{
    bool on = false;
    std::optional<int> taps;
    std::optional<int> delay; ///< samples
    std::optional<double> rate;
    std::optional<double> leak;
};

/// What follows the band filter and what cleans up the signal. What is empty stays as the receiver
/// has it.
struct ToolSettings
{
    DspCore::AgcMode agcMode = DspCore::AgcMode::Med;
    std::optional<int> agcGainDb;      ///< highest gain, or the fixed one while off
    std::optional<double> agcAttackMs; ///< the times are those of agcMode
    std::optional<double> agcDecayMs;
    std::optional<double> agcHangMs;

    bool nb1 = false;
    bool nb2 = false;
    std::optional<double> nb1Threshold; ///< ratio of amplitudes
    std::optional<double> nb2Threshold;
    PredictorSettings nr;
    PredictorSettings anf;

    bool apf = false;
    bool dse = false;
    bool binaural = false;
    QVector<int> equalizerDb; ///< 18 gains, lowest band first; empty: off

    std::optional<int> squelchDbm; ///< of both channels; empty: open
    std::optional<int> ctcssIndex; ///< into Velmora::CTCSS; empty: open

    std::optional<double> tuneBHz; ///< frequency of channel B; empty: it is not heard
    int volumeDb = 0;              ///< -60..0 of everything, -60 being silence
    int volumeBDb = 0;             ///< the same of channel B
    int balanceDb = 0;             ///< -60..60 of both channels, above 0: right quieter

    std::optional<int> cwToneHz;
    bool mono = false; ///< wide FM

    static constexpr int kEqualizerBands = 18;
};
} // namespace host

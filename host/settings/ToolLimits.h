// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

/// What the receiver's tools can be set to, and in which modes a signal goes through them: for the
/// command line and the window alike.
namespace host::limits
{
constexpr int kLowestAgcGainDb = -20;
constexpr int kHighestAgcGainDb = 120;

// The receiver's own is 120 dB, which brings the noise of every pause up beside the speech. With
// this one a signal of -60 dBFS, which is quiet on any band, is still heard at full level.
constexpr int kComfortableAgcGainDb = 60;

constexpr int kEqualizerBands = 18;
constexpr int kMostEqualizerDb = 40; // up or down
constexpr int kLowestSquelchDbm = -160;
constexpr int kHighestSquelchDbm = 20;
constexpr int kSilenceDb = -60;  // of volume and balance
constexpr int kMostRitHz = 9999; // what the dials of receivers reach

constexpr ModeSet kWithAgc = ModeSet::but({Mode::NFM, Mode::WFM});
constexpr ModeSet kWithPredictors =
    ModeSet::but({Mode::DIGL, Mode::DIGU, Mode::DRM, Mode::WFM}); // noise reduction, notch
constexpr ModeSet kWithEqualizer = ModeSet::but({Mode::DIGL, Mode::DIGU, Mode::DRM});
constexpr ModeSet kWithBinaural = kWithPredictors;
constexpr ModeSet kWithSquelch = ModeSet::but({Mode::WFM});
constexpr ModeSet kWithChannelB = ModeSet::but({Mode::WFM});
constexpr ModeSet kWithPeakFilter = {Mode::LSB, Mode::USB, Mode::CW};
} // namespace host::limits

// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/ReceiverDelay.h"

#include "settings/HostSettings.h"

#include <QSettings>

namespace host
{
namespace
{
constexpr double kAudioRateHz = 48000.0;
constexpr double kPreFilterTaps = 500.0; // at the device's rate
constexpr double kAttacksAhead = 30.0;   // the look-ahead, in attack times

// Measured with band-limited noise at 48 kHz, 192 kHz, 1.536 and 2.56 MHz, where it lies between
// 0.44 and 0.55: the decimator's first output is that of its filter's middle.
constexpr double kDecimatorLeadMs = 0.48;

/// The device has one length of the band filter for each of four kinds of modes.
const char *tapsKey(Mode mode)
{
    switch (mode) {
    case Mode::LSB:
    case Mode::USB:
        return "ZephrinMOptions/fir_taps_ssb";
    case Mode::DIGL:
    case Mode::DIGU:
        return "ZephrinMOptions/fir_taps_dig";
    case Mode::CW:
        return "ZephrinMOptions/fir_taps_cw";
    default:
        return "ZephrinMOptions/fir_taps_am";
    }
}

double lookAheadMs(const HostSettings &settings, const QSettings &stored)
{
    const QString agc = settings.valueOf("agc").toString();
    if (agc == "off" || settings.mode->mode == Mode::NFM)
        return 0.0;
    return kAttacksAhead * stored.value("ZephrinMOptions/agc_" + agc + "_Attack").toDouble();
}
} // namespace

std::optional<double> receiverDelayMs(const HostSettings &settings, const QSettings &stored)
{
    if (settings.mode->mode == Mode::WFM)
        return std::nullopt;
    const double taps = stored.value(tapsKey(settings.mode->mode)).toDouble();
    const double seconds =
        kPreFilterTaps / 2.0 / settings.deviceRateHz + (taps - 1.0) / 2.0 / kAudioRateHz;
    return 1e3 * seconds - kDecimatorLeadMs + lookAheadMs(settings, stored);
}
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/ReceiverDelay.h"

#include "settings/HostSettings.h"

#include <QSettings>

namespace host
{
namespace
{
constexpr double kAudioRateHz = 48000.0;
// At the device's rate. The decimator adds nothing: its first output is that of its filter's
// middle.
constexpr double kPreFilterTaps = 500.0;
constexpr double kAttacksAhead = 30.0; // the look-ahead, in attack times

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
    return 1e3 * seconds + lookAheadMs(settings, stored);
}
} // namespace host

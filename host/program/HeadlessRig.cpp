// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/HeadlessRig.h"

#include "rig/RigPassband.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr unsigned kReceiver = 0;
constexpr unsigned kChannelA = 0;

// Of the rate, to either side of the centre: beyond it the input filter of a receiver rolls off.
constexpr double kUsable = 0.46;

// What the device begins with.
constexpr int kDiglOffsetHz = 2200;
constexpr int kDiguOffsetHz = 1500;
} // namespace

HeadlessRig::HeadlessRig(PluginReceiver &receiver, const HostSettings &settings)
    : m_receiver(receiver), m_rateHz(settings.deviceRateHz), m_centerHz(settings.centerHz),
      m_mode(settings.mode->mode), m_filterLowHz(settings.filterLowHz),
      m_filterHighHz(settings.filterHighHz)
{
    const QSettings &stored = receiver.store().settings();
    m_diglOffsetHz = stored.value("ZephrinMOptions/dsp_digl_offset", kDiglOffsetHz).toDouble();
    m_diguOffsetHz = stored.value("ZephrinMOptions/dsp_digu_offset", kDiguOffsetHz).toDouble();
    m_carrierHz = settings.tuneHz + carrierHz();
}

/// Relative to the frequency that the device is tuned to.
double HeadlessRig::carrierHz() const
{
    return m_mode == Mode::DIGL ? m_diglOffsetHz : m_mode == Mode::DIGU ? -m_diguOffsetHz : 0.0;
}

QString HeadlessRig::deviceName() const
{
    return m_receiver.device().name();
}

RigTarget::Limits HeadlessRig::frequencyLimits() const
{
    Limits limits{0.0, 0.0, 1.0};
    for (const auto &band : m_receiver.device().getAvalibleFunctions()->listBands())
        limits.high = std::max(limits.high, double(band.high));
    return limits;
}

Vfo HeadlessRig::vfo(VfoId) const
{
    return {m_carrierHz, m_mode};
}

RigError HeadlessRig::setFrequency(VfoId id, double hertz)
{
    if (onlyA(id) != RigError::None)
        return onlyA(id);
    m_carrierHz = hertz;
    tuneReceiver();
    return RigError::None;
}

void HeadlessRig::tuneReceiver()
{
    DeviceAbstract &device = m_receiver.device();
    const double frequency = m_carrierHz - carrierHz();
    const double filterReach = std::max(std::abs(m_filterLowHz), std::abs(m_filterHighHz));
    if (std::abs(frequency - m_centerHz) + filterReach > kUsable * m_rateHz) {
        m_centerHz = frequency;
        device.setRxFreq(kReceiver, m_centerHz);
    }
    device.setDspMode(kReceiver, kChannelA, unsigned(m_mode));
    device.setBandFilterIf(kReceiver, kChannelA, m_filterLowHz, m_filterHighHz);
    device.setDownConverter(kReceiver, kChannelA, frequency - m_centerHz);
}

RigError HeadlessRig::setMode(VfoId id, Mode mode)
{
    if (onlyA(id) != RigError::None)
        return onlyA(id);
    if (mode == m_mode)
        return RigError::None;
    m_mode = mode;
    return setPassband(mode, 0.0);
}

double HeadlessRig::passbandHz(Mode) const
{
    return m_filterHighHz - m_filterLowHz;
}

RigError HeadlessRig::setPassband(Mode mode, double hertz)
{
    DeviceFunctionsAbstract &functions = *m_receiver.device().getAvalibleFunctions();
    const auto [low, high] = rigPassband(functions, mode, {m_filterLowHz, m_filterHighHz}, hertz);
    const auto [lowest, highest] = functions.filterLimits(mode);
    if (low < lowest || high > highest)
        return RigError::Invalid;
    m_filterLowHz = low;
    m_filterHighHz = high;
    tuneReceiver();
    return RigError::None;
}

double HeadlessRig::signalDbm(VfoId) const
{
    return m_receiver.meters().channelDbm(kChannelA);
}
} // namespace host

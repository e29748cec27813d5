// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RadioRig.h"

#include "radio/Radio.h"
#include "rig/RigPassband.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

namespace host
{
namespace
{
RigError unlessLocked(bool isDone)
{
    return isDone ? RigError::None : RigError::Rejected;
}
} // namespace

QString RadioRig::deviceName() const
{
    return m_radio.deviceName();
}

RigTarget::Limits RadioRig::frequencyLimits() const
{
    return {m_radio.lowestHz(), m_radio.highestHz(), 1.0};
}

bool RadioRig::isPowered() const
{
    return m_radio.isPowered();
}

RigError RadioRig::setPowered(bool on)
{
    m_radio.setPower(on);
    return RigError::None;
}

VfoId RadioRig::active() const
{
    return m_radio.active();
}

RigError RadioRig::setActive(VfoId id)
{
    m_radio.setActive(id);
    return RigError::None;
}

Vfo RadioRig::vfo(VfoId id) const
{
    Vfo vfo = m_radio.vfo(id);
    vfo.frequencyHz += m_radio.carrierHz(vfo.mode);
    return vfo;
}

RigError RadioRig::setFrequency(VfoId id, double hertz)
{
    return unlessLocked(m_radio.setFrequency(id, hertz - m_radio.carrierHz(m_radio.vfo(id).mode)));
}

RigError RadioRig::setMode(VfoId id, Mode mode)
{
    const double hertz = vfo(id).frequencyHz;
    const double move = m_radio.carrierHz(m_radio.vfo(id).mode) - m_radio.carrierHz(mode);
    if (move != 0.0 && m_radio.isLocked())
        return RigError::Rejected;
    m_radio.setMode(id, mode);
    return move == 0.0 ? RigError::None : setFrequency(id, hertz);
}

double RadioRig::passbandHz(Mode mode) const
{
    const FilterMemory::Edges &edges = m_radio.filters().edges(mode);
    return edges.highHz - edges.lowHz;
}

RigError RadioRig::setPassband(Mode mode, double hertz)
{
    if (mode != m_radio.mode())
        return RigError::None;
    const FilterMemory::Edges edges = m_radio.filterEdges();
    const auto [low, high] =
        rigPassband(m_radio.functions(), mode, {edges.lowHz, edges.highHz}, hertz);
    m_radio.setFilterEdges({low, high});
    return RigError::None;
}

bool RadioRig::isSplit() const
{
    return m_radio.isSplit();
}

RigError RadioRig::setSplit(bool on)
{
    m_radio.setSplit(on);
    return RigError::None;
}

RigError RadioRig::swapVfos()
{
    return unlessLocked(m_radio.swapVfos());
}

RigError RadioRig::copyToOther()
{
    if (m_radio.isLocked())
        return RigError::Rejected;
    m_radio.copyToOther();
    return RigError::None;
}

RigError RadioRig::tune(int steps)
{
    return unlessLocked(m_radio.tune(steps));
}

std::optional<int> RadioRig::stepHz() const
{
    return m_radio.step();
}

RigError RadioRig::setStep(int hertz)
{
    m_radio.setStep(hertz);
    return m_radio.step() == hertz ? RigError::None : RigError::Invalid;
}

double RadioRig::signalDbm(VfoId id) const
{
    const Readings &readings = m_radio.readings();
    return id == m_radio.active() ? readings.signalDbm : readings.signalBDbm;
}

std::optional<bool> RadioRig::isOn(Switch id) const
{
    return m_radio.isOn(id);
}

RigError RadioRig::setOn(Switch id, bool on)
{
    m_radio.setOn(id, on);
    return RigError::None;
}

std::optional<double> RadioRig::value(Dial id) const
{
    return m_radio.value(id);
}

RigTarget::Limits RadioRig::limits(Dial id) const
{
    const auto [low, high, step] = m_radio.rangeOf(id);
    return {low, high, step};
}

RigError RadioRig::setValue(Dial id, double value)
{
    m_radio.setValue(id, value);
    return RigError::None;
}

std::optional<bool> RadioRig::isLocked() const
{
    return m_radio.isLocked();
}

RigError RadioRig::setLocked(bool locked)
{
    m_radio.setLocked(locked);
    return RigError::None;
}

std::optional<int> RadioRig::agcMode() const
{
    return m_radio.agcMode();
}

RigError RadioRig::setAgcMode(int agc)
{
    m_radio.setAgcMode(agc);
    return RigError::None;
}
} // namespace host

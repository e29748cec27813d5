// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "rig/RigTarget.h"

#include <array>
#include <map>

namespace test
{
/// A receiver that keeps what rig control sets.
class FakeRig : public host::RigTarget
{
public:
    using Error = host::RigError;
    using Id = host::VfoId;

    QString deviceName() const override { return "Fake"; }
    Limits frequencyLimits() const override { return {0.0, 800e6, 1.0}; }
    bool isPowered() const override { return powered; }
    Error setPowered(bool on) override { return keep(powered, on); }
    Id active() const override { return activeVfo; }
    Error setActive(Id id) override { return keep(activeVfo, id); }
    host::Vfo vfo(Id id) const override { return vfos[std::size_t(id)]; }
    Error setFrequency(Id id, double hertz) override
    {
        return locked ? Error::Rejected : keep(vfos[std::size_t(id)].frequencyHz, hertz);
    }
    Error setMode(Id id, host::Mode mode) override
    {
        return keep(vfos[std::size_t(id)].mode, mode);
    }
    double passbandHz(host::Mode mode) const override
    {
        const auto width = widths.find(mode);
        return width == widths.end() ? kUsualHz : width->second;
    }
    Error setPassband(host::Mode mode, double hertz) override
    {
        return keep(widths[mode], hertz == 0.0 ? kUsualHz : hertz);
    }
    bool isSplit() const override { return split; }
    Error setSplit(bool on) override { return keep(split, on); }
    Error swapVfos() override
    {
        std::swap(vfos[0], vfos[1]);
        return Error::None;
    }
    Error tune(int steps) override
    {
        vfos[std::size_t(activeVfo)].frequencyHz += 100.0 * steps;
        return Error::None;
    }
    double signalDbm(Id) const override { return dbm; }
    std::optional<bool> isOn(host::Switch id) const override { return switches[std::size_t(id)]; }
    Error setOn(host::Switch id, bool on) override { return keep(switches[std::size_t(id)], on); }
    std::optional<double> value(host::Dial id) const override { return dials[std::size_t(id)]; }
    Limits limits(host::Dial id) const override
    {
        if (id == host::Dial::Rit)
            return {-9999.0, 9999.0, 1.0};
        return id == host::Dial::Preamp ? Limits{-31.5, 6.0, 0.5} : Limits{-60.0, 0.0, 1.0};
    }
    Error setValue(host::Dial id, double value) override
    {
        return keep(dials[std::size_t(id)], value);
    }
    std::optional<bool> isLocked() const override { return locked; }
    Error setLocked(bool on) override { return keep(locked, on); }
    std::optional<int> agcMode() const override { return agc; }
    Error setAgcMode(int mode) override { return keep(agc, mode); }

    static constexpr double kUsualHz = 2400.0;

    bool powered = true;
    bool locked = false;
    bool split = false;
    int agc = 0;
    double dbm = -73.0;
    Id activeVfo = Id::A;
    std::array<host::Vfo, 2> vfos{{{7.105e6, host::Mode::USB}, {7.096e6, host::Mode::LSB}}};
    std::map<host::Mode, double> widths;
    std::array<bool, host::kSwitches> switches{};
    std::array<double, host::kDials> dials{};

private:
    template <typename Value>
    Error keep(Value &where, Value value)
    {
        where = value;
        return Error::None;
    }
};
} // namespace test

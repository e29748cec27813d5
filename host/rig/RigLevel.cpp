// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigLevel.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
// IARU Region 1 Technical Recommendation R.1: S9 in 50 ohms below and above 30 MHz.
constexpr double kS9Dbm = -73.0;
constexpr double kS9VhfDbm = -93.0;
constexpr double kVhfHz = 30e6;

std::optional<double> strength(const RigTarget &target, VfoId id)
{
    const double s9 = target.vfo(id).frequencyHz > kVhfHz ? kS9VhfDbm : kS9Dbm;
    return target.signalDbm(id) - s9;
}

// Dials that clients turn from 0 to 1.

template <Dial dial>
std::optional<double> fraction(const RigTarget &target, VfoId)
{
    const auto value = target.value(dial);
    const auto [low, high, step] = target.limits(dial);
    return value ? std::optional((*value - low) / (high - low)) : std::nullopt;
}

template <Dial dial>
RigError setFraction(RigTarget &target, double fraction)
{
    if (fraction < 0.0 || fraction > 1.0)
        return RigError::Invalid;
    const auto [low, high, step] = target.limits(dial);
    return target.setValue(dial, low + fraction * (high - low));
}

// One dial attenuates below 0 and amplifies above; clients know two levels for it.

template <int sign>
std::optional<double> gain(const RigTarget &target, VfoId)
{
    const auto db = target.value(Dial::Preamp);
    return db ? std::optional(std::max(0.0, sign * *db)) : std::nullopt;
}

template <int sign>
RigError setGain(RigTarget &target, double db)
{
    const auto [low, high, step] = target.limits(Dial::Preamp);
    if (db < 0.0 || sign * db < low || sign * db > high)
        return RigError::Invalid;
    // Taking the preamplifier out leaves an attenuator in, and the other way about.
    if (db == 0.0 && sign * target.value(Dial::Preamp).value_or(0.0) <= 0.0)
        return RigError::None;
    return target.setValue(Dial::Preamp, sign * db);
}

// hamlib's numbers (off, superfast, fast, slow, user, medium, auto, long, on) and the receiver's.
constexpr int kNone = -1;
constexpr std::array<int, 8> kAgcByHamlib = {0, kNone, 4, 2, 5, 3, kNone, 1};

std::optional<double> agc(const RigTarget &target, VfoId)
{
    const auto mode = target.agcMode();
    if (!mode)
        return {};
    const auto at = std::find(kAgcByHamlib.begin(), kAgcByHamlib.end(), *mode);
    return at == kAgcByHamlib.end() ? 0.0 : double(at - kAgcByHamlib.begin());
}

RigError setAgc(RigTarget &target, double number)
{
    if (number < 0.0 || number >= kAgcByHamlib.size() || kAgcByHamlib[std::size_t(number)] == kNone)
        return RigError::Invalid;
    return target.setAgcMode(kAgcByHamlib[std::size_t(number)]);
}
} // namespace

const std::array<RigLevel, 7> &RigLevel::table()
{
    // Bits: RIG_LEVEL_... of hamlib's rig.h.
    static constexpr std::array<RigLevel, 7> kTable{{
        {"PREAMP", 1u << 0, false, gain<1>, setGain<1>},
        {"ATT", 1u << 1, false, gain<-1>, setGain<-1>},
        {"AF", 1u << 3, true, fraction<Dial::Volume>, setFraction<Dial::Volume>},
        {"RF", 1u << 4, true, fraction<Dial::AgcGain>, setFraction<Dial::AgcGain>},
        {"SQL", 1u << 5, true, fraction<Dial::Squelch>, setFraction<Dial::Squelch>},
        {"AGC", 1u << 17, false, agc, setAgc},
        {"STRENGTH", 1u << 30, false, strength, nullptr},
    }};
    return kTable;
}

const RigLevel *RigLevel::find(const QByteArray &name)
{
    const auto isNamed = [&name](const RigLevel &level) { return name == level.name; };
    const auto level = std::find_if(table().begin(), table().end(), isNamed);
    return level == table().end() ? nullptr : &*level;
}

QByteArray RigLevel::text(double value) const
{
    return isFraction ? QByteArray::number(value, 'f', 6)
                      : QByteArray::number(int(std::lround(value)));
}
} // namespace host

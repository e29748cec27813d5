// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigDescription.h"

#include "rig/RigFunction.h"
#include "rig/RigLevel.h"
#include "rig/RigMode.h"

#include <QByteArrayList>

#include <cmath>

namespace host
{
namespace
{
constexpr int kNetRig = 2; // hamlib's number for a rig that is reached by the network
constexpr int kBothVfos = 3;
constexpr int kOneAerial = 1;
constexpr int kAttenuations[] = {10, 20, 30};

// RIG_OP_CPY, XCHG, UP, DOWN and TOGGLE.
constexpr unsigned kVfoOperations = 1u << 0 | 1u << 1 | 1u << 5 | 1u << 6 | 1u << 12;

QByteArray hex(std::uint64_t number)
{
    return "0x" + QByteArray::number(qulonglong(number), 16);
}

QByteArray hertz(double value)
{
    return QByteArray::number(value, 'f', 6);
}

template <typename Has>
std::uint64_t bitsOf(const auto &table, Has has)
{
    std::uint64_t bits = 0;
    for (const auto &row : table)
        if (has(row))
            bits |= row.bit;
    return bits;
}

/// Masks of what the target has.
struct Masks
{
    explicit Masks(const RigTarget &target)
        : functions(bitsOf(RigFunction::table(),
            [&](const RigFunction &row) { return row.get(target).has_value(); })),
          levels(bitsOf(RigLevel::table(),
              [&](const RigLevel &row) { return row.get(target, VfoId::A).has_value(); })),
          settableLevels(bitsOf(RigLevel::table(), [&](const RigLevel &row) {
              return row.set && row.get(target, VfoId::A).has_value();
          }))
    { }

    std::uint64_t functions;
    std::uint64_t levels;
    std::uint64_t settableLevels;
};

int mostRit(const RigTarget &target)
{
    return target.value(Dial::Rit) ? int(target.limits(Dial::Rit).high) : 0;
}

/// The gains, or attenuations, that a client may choose from.
QByteArray gains(const RigTarget &target)
{
    const double most = target.value(Dial::Preamp) ? target.limits(Dial::Preamp).high : 0.0;
    return most >= 1.0 ? QByteArray::number(int(most)) : "0";
}

QByteArray attenuations(const RigTarget &target)
{
    const double most = target.value(Dial::Preamp) ? -target.limits(Dial::Preamp).low : 0.0;
    QByteArrayList list;
    for (const int db : kAttenuations)
        if (db <= most)
            list.append(QByteArray::number(db));
    return list.isEmpty() ? "0" : list.join(' ');
}
} // namespace

QByteArray rigState(const RigTarget &target)
{
    const auto limits = target.frequencyLimits();
    const QByteArray modes = hex(rigmode::allBits());
    const Masks masks(target);
    QByteArrayList lines{
        "1", // version
        QByteArray::number(kNetRig),
        "0", // region of the ITU: any
        // Range, modes, least and greatest power (none), VFOs, aerials; ends with zeros.
        hertz(limits.low) + ' ' + hertz(limits.high) + ' ' + modes + " -1 -1 " + hex(kBothVfos)
            + ' ' + hex(kOneAerial),
        "0 0 0 0 0 0 0",
        "0 0 0 0 0 0 0", // no transmitter
        modes + " 1",    // tuning steps
        "0 0",
    };
    // The first filter of a mode is its usual one, and all widths may be asked for.
    for (const QString &name : modeNames()) {
        const ReceptionMode &mode = *findMode(name);
        if (const std::uint32_t bit = rigmode::bit(mode.mode))
            lines.append(
                hex(bit) + ' ' + QByteArray::number(int(mode.filterHighHz - mode.filterLowHz)));
    }
    lines += {
        modes + " 0",
        "0 0",
        QByteArray::number(mostRit(target)),
        "0", // no offset of a transmitter
        "0", // no shift of an intermediate frequency
        "0", // no announcements
        gains(target),
        attenuations(target),
        hex(masks.functions),
        hex(masks.functions),
        hex(masks.levels),
        hex(masks.settableLevels),
        "0x0", // parameters
        "0x0",
        "vfo_ops=" + hex(kVfoOperations),
        "ptt_type=0x0",
        "targetable_vfo=0x3", // frequency and mode of a VFO that is not the active one
        "has_set_vfo=1",
        "has_get_vfo=1",
        "has_set_freq=1",
        "has_get_freq=1",
        "has_set_conf=0",
        "has_get_conf=0",
        "has_power2mW=0",
        "has_mW2power=0",
        "timeout=0",
        "done",
    };
    return lines.join('\n');
}

QByteArray rigCapabilities(const RigTarget &target)
{
    const auto limits = target.frequencyLimits();
    const Masks masks(target);
    const auto named = [](const auto &table, std::uint64_t bits) {
        QByteArrayList names;
        for (const auto &row : table)
            if (row.bit & bits)
                names.append(row.name);
        return names.isEmpty() ? QByteArray("none") : names.join(' ');
    };
    return QByteArrayList{
        "Caps dump for model: " + QByteArray::number(kNetRig),
        "Model name: " + target.deviceName().toUtf8(),
        "Rig type: Receiver",
        "PTT type: None",
        "Port type: Network link",
        "Frequency range: " + QByteArray::number(limits.low, 'f', 0) + " to "
            + QByteArray::number(limits.high, 'f', 0) + " Hz",
        "Mode list: " + rigmode::names(),
        "Preamp: " + gains(target) + " dB",
        "Attenuator: " + attenuations(target) + " dB",
        "Max RIT: " + QByteArray::number(mostRit(target)) + " Hz",
        "Get functions: " + named(RigFunction::table(), masks.functions),
        "Get level: " + named(RigLevel::table(), masks.levels),
        "Set level: " + named(RigLevel::table(), masks.settableLevels),
    }
        .join('\n');
}
} // namespace host

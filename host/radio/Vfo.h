// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

#include <QMetaType>

namespace host
{
/// The two tuning memories of the receiver.
enum class VfoId { A, B };

constexpr VfoId other(VfoId id)
{
    return id == VfoId::A ? VfoId::B : VfoId::A;
}

/// What a VFO holds.
struct Vfo
{
    double frequencyHz = 7.105e6; ///< carrier, or where it would be; without RIT
    Mode mode = Mode::USB;

    bool operator==(const Vfo &) const = default;
};

/// All that makes a place of the band sound as it did: what band memories and bookmarks keep.
struct Reception
{
    double frequencyHz = 0.0;
    Mode mode = Mode::USB;
    double filterLowHz = 0.0; ///< relative to the carrier
    double filterHighHz = 0.0;

    bool operator==(const Reception &) const = default;
};
} // namespace host

Q_DECLARE_METATYPE(host::VfoId)

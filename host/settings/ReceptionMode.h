// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QString>

namespace host
{
/// A mode that can be asked for, and the band filter that belongs to it. Filter edges are hertz
/// relative to the tuned frequency and keep their sign: a lower side band lies below 0. In DIGL and
/// DIGU the receiver first moves the tuned frequency to an audio pitch (-2200 Hz and 1500 Hz), and
/// the edges are counted from the carrier that this implies.
struct ReceptionMode
{
    const char *name;
    DspCore::Modulation modulation;
    double defaultLowHz;
    double defaultHighHz;
    double lowestHz; ///< the band filter stays within lowestHz..highestHz
    double highestHz;
};

/// The mode of that name in upper or lower case, null for an unknown one.
const ReceptionMode *findMode(const QString &name);

/// "DSB, LSB, ..." for messages.
QString modeNames();
} // namespace host

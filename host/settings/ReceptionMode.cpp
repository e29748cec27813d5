// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ReceptionMode.h"

#include <QStringList>

namespace host
{
namespace
{
using DspCore::Modulation;

// The limits are the receiver's own; within the defaults speech, data signals and broadcasts fit.
constexpr ReceptionMode kModes[] = {
    {"AM", Modulation::AM, -4000, 4000, -18000, 18000},
    {"SAM", Modulation::SAM, -4000, 4000, -18000, 18000},
    {"DSB", Modulation::DSB, -4000, 4000, -18000, 18000},
    {"LSB", Modulation::LSB, -2700, -300, -10000, 0},
    {"USB", Modulation::USB, 300, 2700, 0, 10000},
    {"CW", Modulation::CW, -250, 250, -10000, 10000},
    {"NFM", Modulation::NFM, -6000, 6000, -18000, 18000},
    {"DIGL", Modulation::DIGL, -3000, -70, -15000, 0},
    {"DIGU", Modulation::DIGU, 70, 3000, 0, 15000},
    {"WFM", Modulation::WFM, -90000, 90000, -156000, 156000},
    {"DRM", Modulation::DRM, -5000, 5000, -5000, 5000},
};
} // namespace

const ReceptionMode *findMode(const QString &name)
{
    for (const auto &mode : kModes)
        if (name.compare(mode.name, Qt::CaseInsensitive) == 0)
            return &mode;
    return nullptr;
}

QString modeNames()
{
    QStringList names;
    for (const auto &mode : kModes)
        names += mode.name;
    return names.join(", ");
}
} // namespace host

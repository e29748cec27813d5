// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ReceptionMode.h"

namespace host
{
namespace
{
// Within the filters speech, data signals and broadcasts fit. The built-in band has no station for
// every mode; the voices are there for those that find none.
constexpr ReceptionMode kModes[] = {
    {"AM", Mode::AM, -4000, 4000, 7.112e6},
    {"SAM", Mode::SAM, -4000, 4000, 7.112e6},
    {"DSB", Mode::DSB, -4000, 4000, 7.112e6},
    {"LSB", Mode::LSB, -2700, -300, 7.096e6},
    {"USB", Mode::USB, 300, 2700, 7.105e6},
    {"CW", Mode::CW, -250, 250, 7.085e6},
    {"NFM", Mode::NFM, -6000, 6000, 7.118e6},
    {"DIGL", Mode::DIGL, -3000, -70, 7.096e6},
    {"DIGU", Mode::DIGU, 70, 3000, 7.105e6},
    {"WFM", Mode::WFM, -90000, 90000, 7.105e6},
    {"DRM", Mode::DRM, -5000, 5000, 7.105e6},
};
} // namespace

const ReceptionMode *findMode(const QString &name)
{
    for (const auto &mode : kModes)
        if (name.compare(mode.name, Qt::CaseInsensitive) == 0)
            return &mode;
    return nullptr;
}

const ReceptionMode *findMode(Mode mode)
{
    for (const auto &row : kModes)
        if (row.mode == mode)
            return &row;
    return nullptr;
}

QStringList modeNames()
{
    return ModeSet::every().names().split(", ");
}

QString modeHelp()
{
    QString lines;
    for (const auto &mode : kModes)
        lines +=
            QString("  %1 %2:%3\n").arg(mode.name, -5).arg(mode.filterLowHz).arg(mode.filterHighHz);
    return lines;
}

QString ModeSet::names() const
{
    QStringList names;
    for (const auto &mode : kModes)
        if (has(mode.mode))
            names += mode.name;
    return names.join(", ");
}

QString ModeSet::remark() const
{
    const QString others = but(*this).names();
    if (others.isEmpty())
        return {};
    return others.size() < names().size() ? " Not in " + others + '.' : " Only in " + names() + '.';
}
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/Repairs.h"

#include <algorithm>

Repairs Repairs::all()
{
    Repairs repairs;
    repairs.m_set.set();
    return repairs;
}

Repairs Repairs::named(const QStringList &names, QStringList &unknown)
{
    Repairs repairs;
    for (const QString &name : names) {
        const auto isNamed = [&name](const RepairRow &row) { return name == row.name; };
        const auto row = std::find_if(kRepairTable.begin(), kRepairTable.end(), isNamed);
        if (row == kRepairTable.end())
            unknown += name;
        else
            repairs.m_set.set(std::size_t(row->repair));
    }
    return repairs;
}

QStringList Repairs::names() const
{
    QStringList names;
    for (const RepairRow &row : kRepairTable)
        if (has(row.repair))
            names += row.name;
    return names;
}

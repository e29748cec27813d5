// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Outlets.h"

namespace host
{
bool Outlets::open(const HostSettings &settings, HostBridge &bridge, const StreamLedger &ledger)
{
    m_bridge = &bridge;
    const auto openOne = [&](File &file, auto &outlet, const OutletSettings &asked) {
        if (!asked.isOn())
            return true;
        file.emplace(
            [&outlet](auto &&...block) { return outlet.pull(block...); }, ledger, asked.rateHz);
        if (!file->open(asked.file, settings)) {
            m_error = file->error();
            return false;
        }
        outlet.open(quint64(asked.rateHz));
        return true;
    };
    return openOne(m_vac, bridge.vac(), settings.vac)
        && openOne(m_lineOut, bridge.lineOut(), settings.lineOut);
}

void Outlets::addTo(StreamFeed &feed) const
{
    for (const File *file : {&m_vac, &m_lineOut})
        if (*file)
            feed.keepRoomIn((*file)->ring());
}

void Outlets::start()
{
    for (File *file : {&m_vac, &m_lineOut})
        if (*file)
            (*file)->start();
}

void Outlets::finish()
{
    for (File *file : {&m_vac, &m_lineOut})
        if (*file)
            (*file)->finish();
    m_bridge->vac().close();
    m_bridge->lineOut().close();
}

void Outlets::closeFiles()
{
    for (File *file : {&m_vac, &m_lineOut})
        if (*file)
            (*file)->close();
}

QStringList Outlets::problems() const
{
    QStringList lines;
    for (const File *file : {&m_vac, &m_lineOut})
        if (*file && !(*file)->file().isGood())
            lines += (*file)->error();
    return lines;
}

std::optional<OutputResults::Outlet> Outlets::resultOf(const File &file)
{
    if (!file)
        return std::nullopt;
    return OutputResults::Outlet{file->frames(), file->level().rmsDb(), file->level().peakDb()};
}
} // namespace host
